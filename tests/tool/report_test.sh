#!/bin/bash
# The page of a report: complete, fetching nothing, and without a fault in a browser's console.
set -uo pipefail

tool=$1
examples=$2
browser=$(command -v chromium || command -v chromium-browser || command -v google-chrome) || exit 77
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

complain() {
  echo "$1" >&2
  exit 1
}

"$tool" load "$examples/bancos.toml" "$examples/data/bancos.csv" --lossy -o "$work/bancos.dat" 2> /dev/null
# A date that does not exist, bytes behind a text, a spoilt check digit, and an end inside a record.
for patch in '1422 \xdf' '1900 x' '2040 \x00' '3000 <'; do
  printf '%b' "${patch#* }" | dd of="$work/bancos.dat" bs=1 seek="${patch%% *}" conv=notrunc status=none
done
printf 'rest' >> "$work/bancos.dat"
"$tool" report "$examples/bancos.toml" "$work/bancos.dat" -o "$work/page.html" 2> "$work/err"
[[ $? -eq 1 ]] || complain "no report of a file with an incomplete record"

grep -qE '(src|href)="?(https?:|//)|@import|<script' "$work/page.html" &&
  complain "the page fetches something"

open_page() {
  timeout 120 "$browser" --headless --no-sandbox --disable-gpu --disable-quic --no-first-run \
    --disable-background-networking --disable-component-update --disable-sync \
    --user-data-dir="$(mktemp -d -p "$work")" --enable-logging=stderr "$@" \
    "file://$work/page.html"
}
open_page --dump-dom > "$work/dom" 2> "$work/console" || complain "the browser failed"
if grep -E 'CONSOLE|ERR_' "$work/console"; then complain "the console tells a fault"; fi
for part in "Findings" "incomplete record: the file ends" "Layout" "Fields" "First records" \
  "inicio_operacao" "<rect" "</html>"; do
  grep -qF "$part" "$work/dom" || complain "the page has no \"$part\""
done
