#!/usr/bin/env bash
# Holds a built library to its recorded ABI: names, arguments, results and the layout of records.
# usage: check_record.sh LIBRARY HEADER_DIRECTORY RECORD
set -euo pipefail
export LC_ALL=C

library=$1 headers=$2 record=$3
command -v abidiff > /dev/null || { echo "abidiff (abigail-tools) is not installed"; exit 77; }
readelf -SW "$library" | grep -q '\.debug_info' || { echo "no debug information in $library"; exit 77; }

soname() { sed -n "s/.*soname='\([^']*\)'.*/\1/p" "$1" | head -n 1; }
built=$(readelf -dW "$library" | sed -n 's/.*SONAME.*\[\(.*\)\]/\1/p')
if [ "$(soname "$record")" != "$built" ]; then
  echo "FAULT: the number was raised: the record is of $(soname "$record"), the library is $built;" \
    "scripts/record-abi records it anew"
  exit 1
fi
if ! abidiff --harmless --headers-dir1 "$headers" --headers-dir2 "$headers" "$record" "$library"; then
  if abidiff --no-added-syms --headers-dir2 "$headers" "$record" "$library" > /dev/null; then
    echo "FAULT: names were added: scripts/record-abi records them"
  else
    echo "FAULT: programs built against $built would break: take the change back, or raise" \
      "CAMPOTIPO_ABI in version.h"
  fi
  exit 1
fi
