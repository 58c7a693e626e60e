#!/usr/bin/env bash
# Makes the manual pages: a page or a link to one for each exported function, and nothing that the
# readers of pages complain of, as far as they are installed.
# usage: check_man.sh SOURCE
set -euo pipefail
export LC_ALL=C.UTF-8

source=$(cd "$1" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/man3"
perl "$source/docs/generator/make-man" "$source" 1 "$work/man3"
faults=0
fault() { echo "FAULT: $*"; faults=$((faults + 1)); }

cd "$work"
while read -r name; do
  page=man3/$name.3
  [ -f "$page" ] || { fault "no page of $name"; continue; }
  target=$(sed -n 's/^\.so //p' "$page")
  [ -f "$target" ] || { fault "$page leads to $target"; continue; }
done < <(cat "$source"/tests/abi/exports{,-documents,-support,-well-formed}.txt)

mapfile -t pages < <(grep -L '^\.so ' man3/*)
for page in "${pages[@]}"; do
  if command -v mandoc > /dev/null; then
    mandoc -T lint -W warning "$page" || fault "$page"
  fi
  if command -v groff > /dev/null && [ -e /usr/share/groff/current/tmac/an.tmac ]; then
    warnings=$(groff -man -Tutf8 -ww -z "$page" 2>&1)
    [ -z "$warnings" ] || fault "$page: $warnings"
  fi
done
echo "${#pages[@]} pages, $faults faults"
[ "$faults" -eq 0 ]
