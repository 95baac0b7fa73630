#!/bin/sh
# zorvekan-cli import: the pairs kept in hours (minutes / 60), the summary on
# stderr, the reduction of a long file to 500 points with its first and last, and
# exit 1 naming the line of a bad pair, exit 2 for a bad command line.
cli=$1
fail() { echo "FAIL: $*"; exit 1; }
tmp=$(mktemp -d) || exit 1
trap 'rm -rf "$tmp"' EXIT

printf 'Elapsed (min);Pressure (psia)\r\n# gauge 4471\r\n0;3000.04\r\n30;2950\r\n\r\n90;2900.5\r\n' >"$tmp/min.txt"
out=$("$cli" import "$tmp/min.txt" --minutes 2>"$tmp/err") || fail "import exited $?"
expected="i,TestTime,TestPressure
1,0.5,2950
2,1.5,2900.5"
[ "$out" = "$expected" ] || fail "pairs in hours:
$out"
[ "$(cat "$tmp/err")" = "No. of Test Data Pairs: 2; lines skipped: 3 (1 header, 1 comment, 1 blank); start pressure 3000 psia" ] ||
    fail "summary: $(cat "$tmp/err")"

awk 'BEGIN { for (i = 1; i <= 5000; i++) printf "%.4f\t%.2f\n", i / 100, 3000 - i / 10 }' >"$tmp/long.txt"
"$cli" import "$tmp/long.txt" >"$tmp/long.csv" 2>"$tmp/err" || fail "long import exited $?"
[ "$(wc -l <"$tmp/long.csv")" -eq 501 ] || fail "not 500 points: $(wc -l <"$tmp/long.csv")"
sed -n 2p "$tmp/long.csv" | grep -q '^1,0.01,2999.9' || fail "first point: $(sed -n 2p "$tmp/long.csv")"
sed -n '$p' "$tmp/long.csv" | grep -q '^500,50,2500$' || fail "last point: $(sed -n '$p' "$tmp/long.csv")"
grep -q "No. of Test Data Pairs: 5000; Too Many Test Data Pairs:               Resizing to 500" "$tmp/err" ||
    fail "resize summary: $(cat "$tmp/err")"

printf '1,2000\n2,2100,15.5\n' >"$tmp/three.txt"
err=$("$cli" import "$tmp/three.txt" 2>&1 >/dev/null); rc=$?
[ $rc -eq 1 ] || fail "bad pair exit $rc"
echo "$err" | grep -q 'three.txt: line 2: "2,2100,15.5" has more than a time and a pressure' || fail "message: $err"
"$cli" import "$tmp/min.txt" --hours >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "unknown option exit $rc"
"$cli" import >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "missing file argument exit $rc"
echo "import command: ok"
