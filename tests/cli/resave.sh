#!/bin/sh
# zorvekan-cli resave: a file Save wrote comes back byte for byte (the examples and a
# test of many digits), an older file is written in today's form, a damaged file is
# refused with its line and field and exit 1, OUT is untouched when it cannot be
# written, and a bad command line exits 2.
cli=$1
src=$2
fail() { echo "FAIL: $*"; exit 1; }
tmp=$(mktemp -d) || exit 1
trap 'rm -rf "$tmp"' EXIT

for f in "$src"/examples/*.zvt "$src"/tests/data/input/*.zvt; do
    "$cli" resave "$f" "$tmp/out.zvt" || fail "resave $f exited $?"
    cmp -s "$f" "$tmp/out.zvt" || fail "$f changed on resave: $(diff "$f" "$tmp/out.zvt")"
done

# A byte-order mark, CRLF, a Latin-1 title, a D exponent, blanks and a blank line.
printf '\357\273\277"Pr\374fung" , 0 ,1,1,0,0,1,0,0\r\n1,.8,1.25,3D1,4.248,.2,1.5E+01,2000,40\r\n500,3\r\n\r\n1,2050.5\r\n' >"$tmp/old.zvt"
"$cli" resave "$tmp/old.zvt" "$tmp/old.zvt" || fail "resave in place exited $?"
expected='"Prüfung",0,1,1,0,0,1,0,0
1,0.8,1.25,30,4.248,0.2,15,2000,40
500,3
1,2050.5'
[ "$(cat "$tmp/old.zvt")" = "$expected" ] || fail "old file written as:
$(cat "$tmp/old.zvt")"

printf '"Well",0,1,1,0,1,1,0,0\n1,0.8,1.25,30,4.248,0.2,15,2000,40\n400,3,7,8\n1,2050.5\n' >"$tmp/bad.zvt"
cp "$src/examples/oil-buildup.zvt" "$tmp/keep.zvt"
err=$("$cli" resave "$tmp/bad.zvt" "$tmp/keep.zvt" 2>&1); rc=$?
[ $rc -eq 1 ] || fail "damaged file exit $rc"
[ "$err" = "$tmp/bad.zvt: line 3: record 4, rate 1: the line holds 4 fields where the record has 2 fields: Rate, duration (days)" ] ||
    fail "damaged file message: $err"
cmp -s "$src/examples/oil-buildup.zvt" "$tmp/keep.zvt" || fail "OUT changed by a refused file"

err=$("$cli" resave "$src/examples/oil-buildup.zvt" "$tmp/missing/out.zvt" 2>&1); rc=$?
[ $rc -eq 1 ] || fail "unwritable OUT exit $rc"
echo "$err" | grep -q "^$tmp/missing/out.zvt: cannot be written" || fail "unwritable OUT message: $err"

"$cli" resave "$src/examples/oil-buildup.zvt" >/dev/null 2>&1; rc=$?
[ $rc -eq 2 ] || fail "one file exit $rc"
echo "resave command: ok"
