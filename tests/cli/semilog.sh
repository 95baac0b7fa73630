#!/bin/sh
# zorvekan-cli semilog: the result lines of a line through two points of the example
# buildup, exactly as the semilog screen prints them, and its command-line errors.
cli=$1
src=$2
fail() { echo "FAIL: $*"; exit 1; }

out=$("$cli" semilog "$src/examples/oil-buildup.zvt" --line 10,3950:2,3990 \
      --linear 0.01,3880:0.1,3900 --end-of-transient 20) || fail "semilog exited $?"
expected="Fracture Half-Length = 48. ft.
Permeability = 22.73 md.
Skin Factor = -4.79
Fracture Skin = -4.74
MBH Avg. Pressure = 4007.
Flow Efficiency = 277.82%
Slope = 57.23 psi/cycle.
p* = 4007.23 psia.
P1hr = 3900.59 psia.
Dp Skin = -238.5 psi.
Radius Investigated = 440 ft."
[ "$out" = "$expected" ] || fail "unexpected result lines:
$out"

"$cli" semilog "$src/examples/oil-buildup.zvt" --line 10,3950 >/dev/null 2>&1
[ $? -eq 2 ] || fail "a one-point line must be a usage error"
"$cli" semilog "$src/examples/oil-buildup.zvt" --line 10,3950:2,3990 --kind log >/dev/null 2>&1
[ $? -eq 2 ] || fail "an unknown kind must be a usage error"
"$cli" semilog /nonexistent.zvt --line 10,3950:2,3990 >/dev/null 2>&1
[ $? -eq 1 ] || fail "a missing file must fail with 1"
"$cli" semilog "$src/examples/oil-buildup.zvt" --line 10,3950:10,3990 >/dev/null 2>&1
[ $? -eq 1 ] || fail "a vertical line is a division by zero, exit 1"
echo "semilog command: ok"
