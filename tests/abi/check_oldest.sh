#!/usr/bin/env bash
# Files that run on systems older than this one: no version of the C library above the one told, and
# no C++ library beside them.
# usage: check_oldest.sh VERSION FILE...
set -euo pipefail
export LC_ALL=C

most=$1
faults=0
fault() { echo "FAULT: $*"; faults=$((faults + 1)); }

for file in "${@:2}"; do
  versions=$(nm -D --undefined-only "$file" | grep -o 'GLIBC_[0-9.]*' | sort -uV)
  [ -n "$versions" ] || fault "$file: asks for no version of the C library: not read?"
  newest=$(tail -n 1 <<< "$versions")
  [ "$(printf '%s\n' "GLIBC_$most" "$newest" | sort -V | tail -n 1)" = "GLIBC_$most" ] ||
    fault "$file: $(nm -D --undefined-only "$file" | grep -F "@$newest" | awk '{ print $NF }' | tr '\n' ' ')"
  readelf -d "$file" | grep NEEDED | grep -E 'libstdc|libgcc' && fault "$file: needs a C++ library"
done
echo "$(($# - 1)) files, $faults faults"
[ "$faults" -eq 0 ]
