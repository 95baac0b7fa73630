#!/bin/sh
# zorvekan-cli skin: the skin screen's lines for every component (the worked case of
# the core tests), a zero radius as a run-time error with exit 1, and bad command
# lines with exit 2.
cli=$1
fail() { echo "FAIL: $*"; exit 1; }

out=$("$cli" skin --total 15 --fracture -1.5 --rw 4 --kvkh 0.1 --slant 30 --h 100 \
      --penetrated 40 --completed 50 --perforated 4,12,0.2,90) || fail "skin exited $?"
expected="Total Skin Factor = 15.
Fracture Skin Factor = -1.5
Slant Hole Skin Factor = -0.1
Partial Penetration Skin Factor = 7.93
Partial Completion Skin Factor = 3.87
Perforation Skin Factor = 0.6
   Components:
    Horizontal Skin Factor = -1.07
    Wellbore Skin Factor = 0.01
    Vertical Skin Factor = 1.66
Actual Skin Factor = 4.2"
[ "$out" = "$expected" ] || fail "unexpected skin lines:
$out"

err=$("$cli" skin --total 5 --kvkh 0.1 --slant 30 --h 100 2>&1 >/dev/null); rc=$?
[ $rc -eq 1 ] || fail "zero radius exit $rc"
[ "$err" = "zorvekan-cli skin: Division by zero: the wellbore radius is 0" ] ||
    fail "zero radius message: $err"

"$cli" skin --total 5 --perforated 4,12,0.2,30 >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "a 30-degree phasing exit $rc"
"$cli" skin --total 5 --perforated 4,12 >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "a short perforation list exit $rc"
"$cli" skin --rw 4 >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "missing --total exit $rc"
echo "skin command: ok"
