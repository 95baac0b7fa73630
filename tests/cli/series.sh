#!/bin/sh
# zorvekan-cli series: the CSV layout (two tables, one row per point and per
# derivative point, empty semilog cells past the semilog series), the options, and
# exit 1 with file, line and field for a broken test file, exit 2 for a bad command line.
cli=$1
src=$2
fail() { echo "FAIL: $*"; exit 1; }
tmp=$(mktemp -d) || exit 1
trap 'rm -rf "$tmp"' EXIT

"$cli" series "$src/examples/oil-buildup.zvt" >"$tmp/bu.csv" || fail "series exited $?"
[ "$(sed -n 1p "$tmp/bu.csv")" = "i,TimeFunction,DeltaP,LogTime,LogDeltaP,SemilogX,SemilogY" ] ||
    fail "first header: $(sed -n 1p "$tmp/bu.csv")"
[ "$(sed -n 102p "$tmp/bu.csv")" = "" ] || fail "no blank line after the 100 points"
[ "$(sed -n 103p "$tmp/bu.csv")" = "k,DerivativeLogTime,LogDerivative" ] ||
    fail "second header: $(sed -n 103p "$tmp/bu.csv")"
# Equivalent time of the first shut-in point: 72 * 0.001 / 72.001 h, to 17 digits.
sed -n 2p "$tmp/bu.csv" | grep -q '^1,0.00099998611130400965,' || fail "row 1: $(sed -n 2p "$tmp/bu.csv")"
sed -n '2,101p' "$tmp/bu.csv" | awk -F, 'NF != 7 || $6 == "" { exit 1 }' ||
    fail "every buildup point has seven fields and a semilog value"
sed -n '104,$p' "$tmp/bu.csv" | awk -F, 'NF != 3 { exit 1 } END { if (NR < 50) exit 1 }' ||
    fail "derivative rows"

# A wider derivative spacing leaves fewer derivative points at the end of the data.
"$cli" series "$src/examples/oil-buildup.zvt" --span 0.5 >"$tmp/wide.csv" || fail "--span"
[ "$(wc -l <"$tmp/wide.csv")" -lt "$(wc -l <"$tmp/bu.csv")" ] || fail "--span 0.5 changed nothing"

# Two rates open as superposition: a first-step point is normalised by its own rate,
# x = log t and y = (3500 - 3497.05)/300; --kind semilog plots the multi-rate
# equivalent time itself, which differs from the summation in the second step.
"$cli" series "$src/examples/two-rate-drawdown.zvt" | sed -n 2p |
    grep -q ',-2.9999999999999996,0.0098333333333327274$' ||
    fail "two rates are not drawn as superposition by default"
"$cli" series "$src/examples/two-rate-drawdown.zvt" | sed -n 100p | awk -F, '$6 == $4 { exit 1 }' ||
    fail "a second-step superposition x equals the equivalent time"
"$cli" series "$src/examples/two-rate-drawdown.zvt" --kind semilog | sed -n 100p |
    awk -F, '$6 != $4 { exit 1 }' || fail "--kind semilog"

# A point 1E-6 h after the rate change has no summation term: the semilog series is
# one shorter and the last row's semilog cells are empty.
cat >"$tmp/step.zvt" <<'TEST'
"Point on a rate change",0,0,1,0,0,0,0,0
2,1,1.2,50,4.248,0.18,12,3500,640
300,12
500,60
1,3400
12.000001,3300
24,3200
TEST
"$cli" series "$tmp/step.zvt" >"$tmp/step.csv" || fail "series on a two-rate file"
sed -n 4p "$tmp/step.csv" | grep -q '^3,.*,,$' || fail "empty semilog cells: $(sed -n 4p "$tmp/step.csv")"

err=$("$cli" series "$src/tests/data/input/broken/text_for_number.zvt" 2>&1 >/dev/null); rc=$?
[ $rc -eq 1 ] || fail "broken file exit $rc"
echo "$err" | grep -q 'text_for_number.zvt: line 2: record 3a, WellboreRadius (in.): "abc" is not a number' ||
    fail "broken file message: $err"
"$cli" series "$tmp/no-such-file.zvt" >/dev/null 2>&1; rc=$?
[ $rc -eq 1 ] || fail "missing file exit $rc"
"$cli" series "$src/examples/oil-buildup.zvt" --kind horner >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "bad --kind exit $rc"
"$cli" series >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "missing file argument exit $rc"
"$cli" series --help | grep -q "empty in rows past its end" || fail "--help does not explain empty cells"
echo "series command: ok"
