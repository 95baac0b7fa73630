#!/bin/sh
# zorvekan without a window: --help needs no display, and --export never waits on a
# dialog: a test file it cannot open ends the run with its message and exit 1.
app=$1
src=$2
fail() { echo "FAIL: $*"; exit 1; }
tmp=$(mktemp -d) || exit 1
trap 'rm -rf "$tmp"' EXIT

out=$(env -u DISPLAY -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb timeout 60 "$app" --help) ||
    fail "--help without a display exited $?"
echo "$out" | grep -q '^usage: zorvekan \[FILE\]' || fail "--help printed: $out"

mkfifo "$tmp/pipe.zvt" || exit 1
for file in "$tmp/pipe.zvt" /dev/zero "$src/tests/data/input/broken/utf16le.zvt"; do
    err=$(timeout 60 "$app" --export "inp=$tmp/page.png" "$file" 2>&1); rc=$?
    [ $rc -eq 1 ] || fail "export with $file exited $rc: $err"
    echo "$err" | grep -q "^zorvekan: $file: " || fail "export with $file said: $err"
done
[ ! -e "$tmp/page.png" ] || fail "a page was written for a file that was refused"

timeout 60 "$app" --export "inp=$tmp/page.png" "$src/examples/oil-buildup.zvt" 2>/dev/null ||
    fail "export of an example exited $?"
[ -s "$tmp/page.png" ] || fail "no page written"
echo "headless runs: ok"
