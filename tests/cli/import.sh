#!/bin/sh
# zorvekan-cli import: the pairs kept in hours (minutes / 60) behind row 0 with the
# start pressure, the summary on stderr, the reduction of a long file to 500 points
# with its first and last, a gauge record of dates with its pressure column and start,
# exit 1 naming the line and column of a bad reading, exit 2 for a bad command line.
cli=$1
fail() { echo "FAIL: $*"; exit 1; }
tmp=$(mktemp -d) || exit 1
trap 'rm -rf "$tmp"' EXIT

printf 'Elapsed (min);Pressure (psia)\r\n# gauge 4471\r\n0;3000.04\r\n30;2950\r\n\r\n90;2900.5\r\n' >"$tmp/min.txt"
out=$("$cli" import "$tmp/min.txt" --minutes 2>"$tmp/err") || fail "import exited $?"
expected="i,TestTime,TestPressure
0,0,3000
1,0.5,2950
2,1.5,2900.5"
[ "$out" = "$expected" ] || fail "pairs in hours:
$out"
[ "$(cat "$tmp/err")" = "No. of Test Data Pairs: 2; lines skipped: 3 (1 header, 1 comment, 1 blank); start pressure 3000 psia
Time from column 1 (minutes), pressure from column 2." ] ||
    fail "summary: $(cat "$tmp/err")"

awk 'BEGIN { for (i = 1; i <= 5000; i++) printf "%.4f\t%.2f\n", i / 100, 3000 - i / 10 }' >"$tmp/long.txt"
"$cli" import "$tmp/long.txt" >"$tmp/long.csv" 2>"$tmp/err" || fail "long import exited $?"
[ "$(wc -l <"$tmp/long.csv")" -eq 501 ] || fail "not 500 points: $(wc -l <"$tmp/long.csv")"
sed -n 2p "$tmp/long.csv" | grep -q '^1,0.01,2999.9' || fail "first point: $(sed -n 2p "$tmp/long.csv")"
sed -n '$p' "$tmp/long.csv" | grep -q '^500,50,2500$' || fail "last point: $(sed -n '$p' "$tmp/long.csv")"
grep -q "No. of Test Data Pairs: 5000; Too Many Test Data Pairs:               Resizing to 500" "$tmp/err" ||
    fail "resize summary: $(cat "$tmp/err")"

# A gauge record: the temperature in column 2, the shut-in between two readings
# (12:15), the readings before it skipped, the one at 12:10 giving the start pressure.
printf 'Gauge 4471\nDate Time;T (F);P (psia)\n01/03/2024 12:00:00;180;3000\n01/03/2024 12:10:00;180;3005\n01/03/2024 12:20:00.5;181;3010\n' >"$tmp/gauge.txt"
out=$("$cli" import "$tmp/gauge.txt" --date-order dmy --pressure-column 3 --start "01/03/2024 12:15:00" 2>"$tmp/err") ||
    fail "gauge import exited $?: $(cat "$tmp/err")"
expected="i,TestTime,TestPressure
0,0,3005
1,0.083472222222222225,3010"
[ "$out" = "$expected" ] || fail "gauge points:
$out"
grep -q "Start 01/03/2024 12:15:00: readings before it skipped: 1." "$tmp/err" || fail "start: $(cat "$tmp/err")"
err=$("$cli" import "$tmp/gauge.txt" --pressure-column 3 2>&1 >/dev/null); rc=$?
[ $rc -eq 1 ] || fail "ambiguous gauge exit $rc"
echo "$err" | grep -q 'gauge.txt: line 3: column 1 (date and time): no day above 12' || fail "message: $err"

printf '1,2000\n2,2100,abc\n' >"$tmp/three.txt"
err=$("$cli" import "$tmp/three.txt" --pressure-column 3 2>&1 >/dev/null); rc=$?
[ $rc -eq 1 ] || fail "bad pair exit $rc"
echo "$err" | grep -q 'three.txt: line 1: column 3 (pressure): the line has no column 3' || fail "message: $err"
"$cli" import "$tmp/min.txt" --hours >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "unknown option exit $rc"
"$cli" import "$tmp/min.txt" --date-order ymd >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "bad date order exit $rc"
"$cli" import >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "missing file argument exit $rc"
echo "import command: ok"
