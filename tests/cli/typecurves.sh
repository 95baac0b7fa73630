#!/bin/sh
# zorvekan-cli typecurves: the delivered library is found beside the program and listed
# curve by curve; a library in the working directory comes first, and a damaged one is
# reported with exit 1; a bad command line exits with 2.
cli=$1
fail() { echo "FAIL: $*"; exit 1; }
work=$(mktemp -d) || fail "no scratch directory"
trap 'rm -rf "$work"' EXIT
cd "$work" || fail "cannot enter $work"

out=$("$cli" typecurves --model fracture) || fail "fracture listing exited $?"
echo "$out" | head -n 1 | grep -q "^FRCTYPE: 9 curves, read from .*/FRCTYPE$" ||
    fail "fracture header: $(echo "$out" | head -n 1)"
echo "$out" | grep -qx "    1  xe/xf = 1\.         -3\.000 to 3\.000     -3\.000 to 3\.000" ||
    fail "fracture curve 1 line missing:
$out"
echo "$out" | grep -qx "    9  xe/xf = Infinite   -3\.000 to 3\.000     -3\.000 to 3\.000" ||
    fail "fracture curve 9 line missing"

out=$("$cli" typecurves --model dual) || fail "dual listing exited $?"
[ "$(echo "$out" | grep -c "CDe2s = ")" -eq 16 ] || fail "dual: not 16 CDe2s curves"
[ "$(echo "$out" | grep -c "Le-2s = ")" -eq 12 ] || fail "dual: not 12 Le-2s curves"
echo "$out" | grep -qx "   13  P1 = 3\.0E-04       2\.222 to 4\.000" || fail "dual: curve 13 line"
echo "$out" | grep -qx "   25  P2 = 1\.0E-01       -0\.699 to 1\.477" || fail "dual: curve 25 line"

[ "$("$cli" typecurves | grep -c "curves, read from")" -eq 3 ] || fail "default lists 3 files"

# The working directory is searched first: a damaged copy there is read, and refused.
printf '1\n61\n' > ONETYPE
err=$("$cli" typecurves --model single 2>&1 >/dev/null); rc=$?
[ $rc -eq 1 ] || fail "damaged library exit $rc"
echo "$err" | grep -q "Subscript out of range: .*ONETYPE: block 1 of 2" ||
    fail "damaged library message: $err"

"$cli" typecurves --model triple >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "unknown model exit $rc"
err=$("$cli" typecurves --model triple 2>&1)
[ "$(echo "$err" | wc -l)" -eq 1 ] || fail "usage error is not one line: $err"
"$cli" typecurves extra >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "stray argument exit $rc"
"$cli" typecurves --model >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "missing model exit $rc"
echo "typecurves command: ok"
