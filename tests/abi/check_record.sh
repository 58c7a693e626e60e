#!/usr/bin/env bash
# Holds a built library to its recorded ABI: names, arguments, results and the layout of records.
# usage: check_record.sh SOURCE LIBRARY HEADER_DIRECTORY RECORD
set -euo pipefail
export LC_ALL=C

source=$1 library=$2 headers=$3 record=$4
command -v abidiff > /dev/null || { echo "abidiff (abigail-tools) is not installed"; exit 77; }
readelf -SW "$library" | grep -q '\.debug_info' || { echo "no debug information in $library"; exit 77; }

soname() { sed -n "s/.*soname='\([^']*\)'.*/\1/p" "$1" | head -n 1; }
fresh=$(mktemp)
trap 'rm -f "$fresh"' EXIT
bash "$(dirname "${BASH_SOURCE[0]}")/write_record.sh" "$source" "$library" "$headers" "$fresh"

if [ "$(soname "$record")" != "$(soname "$fresh")" ]; then
  echo "FAULT: the number was raised from $(soname "$record") to $(soname "$fresh"):" \
    "scripts/record-abi records it anew"
  exit 1
fi
if ! abidiff --harmless "$record" "$fresh"; then
  if abidiff --no-added-syms "$record" "$fresh" > /dev/null; then
    echo "FAULT: names were added: scripts/record-abi records them"
  else
    echo "FAULT: programs built against $(soname "$record") would break: take the change back, or" \
      "raise CAMPOTIPO_ABI in version.h"
  fi
  exit 1
fi
