#!/bin/sh
# zorvekan-cli cartesian: the drainage radius of a pseudosteady-state line through two
# points of a synthetic oil drawdown from a closed 40-acre area (q 500 STB/d, B 1.2,
# ct 10 microsips, h 30 ft, porosity 0.2): dp/dt = 0.23395 q B/(ct phi h A) = 1.342688
# psi/hr, so re = sqrt(A/pi) = 744.7 ft, 746 ft with the program's 0.0418.
cli=$1
fail() { echo "FAIL: $*"; exit 1; }
tmp=$(mktemp -d) || exit 1
trap 'rm -rf "$tmp"' EXIT
cat >"$tmp/pss.zvt" <<'ZVT'
"PSS drawdown, 40 acres",0,0,1,0,0,0,0,0
1,1,1.2,30,4,0.2,10,4000,40
500,40
10,3906.57
20,3893.15
30,3879.72
40,3866.29
ZVT

out=$("$cli" cartesian "$tmp/pss.zvt" --pss 40,3866.29248:10,3906.57312 --end-of-transient 12.5 \
      --start-pss 3900) || fail "cartesian exited $?"
expected="Drainage radius = 746. ft.
EndOfTransientTime = 12.5
StartPssValue = 3900"
[ "$out" = "$expected" ] || fail "unexpected output:
$out"

"$cli" cartesian "$tmp/pss.zvt" >/dev/null 2>&1
[ $? -eq 2 ] || fail "a missing --pss must be a usage error"
"$cli" cartesian "$tmp/pss.zvt" --pss 10,3900 >/dev/null 2>&1
[ $? -eq 2 ] || fail "a one-point line must be a usage error"
"$cli" cartesian "$tmp/pss.zvt" --pss 10,3900:20,3900 >/dev/null 2>&1
[ $? -eq 1 ] || fail "a horizontal line is a division by zero, exit 1"
echo "cartesian command: ok"
