#!/usr/bin/env bash
# Holds a shared library, its list of exports and its headers together in all directions.
# usage: check_symbols.sh LIBRARY HEADER_DIRECTORY LIST...
set -euo pipefail
export LC_ALL=C

library=$1 headers=$2
shift 2
faults=0
fault() { echo "FAULT: $*"; faults=$((faults + 1)); }
compare() {  # what the first has alone, what the second has alone
  local only
  only=$(comm -23 "$3" "$4") && [ -z "$only" ] || fault "in the $1, not in the $2:" $only
  only=$(comm -13 "$3" "$4") && [ -z "$only" ] || fault "in the $2, not in the $1:" $only
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for list in "$@"; do sort -cu "$list" || fault "$list is not sorted or names something twice"; done
sort -u "$@" > "$work/list"
nm -D --defined-only "$library" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }' | sort -u > "$work/library"
cat "$headers"/*.h | perl -0777 -ne '
  s{/\*.*?\*/}{}gs;
  while (/CAMPOTIPO_(?:RECORDS_)?API\s+([^;{]*?)(?:;|\s__attribute__)/g) {
    my $declaration = $1;
    if ($declaration =~ /^extern\b[^(]*?(\w+)\s*(?:\[[^\]]*\])?$/) { print "$1\n" }
    elsif ($declaration =~ /(\w+)\s*\(/) { print "$1\n" }
    else { print "unreadable: $declaration\n" }
  }' | sort -u > "$work/headers"

compare list "built library" "$work/list" "$work/library"
compare list headers "$work/list" "$work/headers"
versions=$(nm -D --defined-only "$library" | awk '$2 != "A" && $3 !~ /@@CAMPOTIPO_(RECORDS_)?[0-9]+$/')
[ -z "$versions" ] || fault "exported without a symbol version: $versions"

echo "$(basename "$library"): $(wc -l < "$work/library") names, $faults faults"
[ "$faults" -eq 0 ]
