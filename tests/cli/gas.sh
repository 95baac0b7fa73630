#!/bin/sh
# zorvekan-cli gas: exact result lines, the failure messages with exit 1, and a
# bad command line with exit 2.
cli=$1
fail() { echo "FAIL: $*"; exit 1; }

out=$("$cli" gas --gravity 0.7 --temperature 200 --pressure 3000) || fail "gas exited $?"
expected="Gas Z-Factor = .882
Gas FVF = .977 RB/MCF
Gas Compressibility = 300.1 microsips
Gas Viscosity = .02 cp
Gas Density = 9.71 lb/cu ft"
[ "$out" = "$expected" ] || fail "unexpected gas lines:
$out"

# A heavy gas in a cold reservoir: the iteration passes beyond a density of 1 and
# settles at z = 0.4535.
out=$("$cli" gas --gravity 1.05 --temperature 60 --pressure 2000 --dry) || fail "heavy gas exited $?"
[ "$(echo "$out" | head -1)" = "Gas Z-Factor = .454" ] || fail "heavy gas: $out"

err=$("$cli" gas --gravity 0.7 --temperature -300 --pressure 1000 2>&1 >/dev/null); rc=$?
[ $rc -eq 1 ] || fail "Tpr<1 exit $rc"
[ "$err" = "pTr<1: z-factor Routine FAILS" ] || fail "Tpr<1 message: $err"

err=$("$cli" gas --gravity 0.7 --temperature 200 --pressure 20000 2>&1 >/dev/null); rc=$?
[ $rc -eq 1 ] || fail "Ppr>20.5 exit $rc"
[ "$err" = "pPr>20.5: z-factor Routine FAILS" ] || fail "Ppr>20.5 message: $err"

"$cli" gas --gravity abc --temperature 200 --pressure 3000 >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "bad number exit $rc"
"$cli" gas --gravity 0.7 --pressure 3000 >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "missing option exit $rc"
"$cli" nosuchcommand >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "unknown command exit $rc"
"$cli" --help | grep -q "gas" || fail "--help does not list gas"
echo "gas command: ok"
