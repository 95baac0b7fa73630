#!/bin/sh
# zorvekan-cli skin: every option reaches its component (the worked case of the core
# tests, whose exact lines are checked there), a zero radius is a run-time error with
# exit 1, and bad command lines exit 2.
cli=$1
fail() { echo "FAIL: $*"; exit 1; }

out=$("$cli" skin --total 15 --fracture -1.5 --rw 4 --kvkh 0.1 --slant 30 --h 100 \
      --penetrated 40 --completed 50 --perforated 4,12,0.2,90) || fail "skin exited $?"
[ "$(echo "$out" | wc -l)" -eq 11 ] || fail "expected 11 lines:
$out"
[ "$(echo "$out" | sed -n 7p)" = "   Components:" ] || fail "components caption: $out"
[ "$(echo "$out" | tail -n 1)" = "Actual Skin Factor = 4.2" ] || fail "actual skin: $out"

err=$("$cli" skin --total 5 --kvkh 0.1 --slant 30 --h 100 2>&1 >/dev/null); rc=$?
[ $rc -eq 1 ] || fail "zero radius exit $rc"
[ "$err" = "zorvekan-cli skin: Division by zero: the wellbore radius is 0" ] ||
    fail "zero radius message: $err"

"$cli" skin --total 5 --perforated 4,12,0.2,30 >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "a 30-degree phasing exit $rc"
echo "skin command: ok"
