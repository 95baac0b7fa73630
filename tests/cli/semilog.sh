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

# On the semilog plot of the two-rate drawdown (300 STB/day for 12 h, then 500) the
# end of the transient at the test point of 47.76 h stands at its equivalent time
# te = (47.76 - 12) * (47.76/12)^1.5 = 283.9 h: r = 0.032*sqrt(k*te/(phi*mu*ct)) with
# phi 0.18, mu 1 cp, ct 12 microsips.
out=$("$cli" semilog "$src/examples/two-rate-drawdown.zvt" --kind semilog \
      --line 84.417,0.68645:211.692,0.7125 --end-of-transient 47.76) || fail "two-rate exited $?"
k=$(echo "$out" | sed -n 's/^Permeability = \(.*\) md\.$/\1/p')
r=$(echo "$out" | sed -n 's/^Radius Investigated = \(.*\) ft\.$/\1/p')
awk -v k="$k" -v r="$r" 'BEGIN {
    te = (47.76 - 12) * (47.76 / 12) ^ 1.5
    d = r - 0.032 * sqrt(k * te / (0.18 * 1.0 * 12e-6)); exit !(k > 0 && d < 1 && d > -1) }' ||
    fail "radius at the equivalent time: $out"

"$cli" semilog "$src/examples/oil-buildup.zvt" --line 10,3950 >/dev/null 2>&1
[ $? -eq 2 ] || fail "a one-point line must be a usage error"
"$cli" semilog "$src/examples/oil-buildup.zvt" --line 10,3950:2,3990 --kind log >/dev/null 2>&1
[ $? -eq 2 ] || fail "an unknown kind must be a usage error"
echo "semilog command: ok"
