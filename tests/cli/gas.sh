#!/bin/sh
# zorvekan-cli gas: exact result lines, a z-factor failure with exit 1, and a bad
# command line (a bad number, a missing option, an unknown command) with exit 2, the
# checks of the option parsing every command shares.
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

err=$("$cli" gas --gravity 0.7 --temperature 200 --pressure 20000 2>&1 >/dev/null); rc=$?
[ $rc -eq 1 ] || fail "Ppr>20.5 exit $rc"
[ "$err" = "pPr>20.5: z-factor Routine FAILS" ] || fail "Ppr>20.5 message: $err"

"$cli" gas --gravity abc --temperature 200 --pressure 3000 >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "bad number exit $rc"
"$cli" gas --gravity 0.7 --pressure 3000 >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "missing option exit $rc"
"$cli" nosuchcommand >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "unknown command exit $rc"
echo "gas command: ok"
