#!/usr/bin/env bash
# Writes the ABI of a library that was built with debug information: nothing of where it was built,
# and no type that callers do not see.
# usage: write_record.sh SOURCE LIBRARY HEADER_DIRECTORY RECORD
set -euo pipefail

source=$(cd "$1" && pwd)
abidw --headers-dir "$3" --exported-interfaces-only --drop-private-types --no-corpus-path \
  --no-comp-dir-path --no-show-locs --no-elf-needed --no-parameter-names \
  --no-write-default-sizes --type-id-style hash --out-file "$4" "$2"
sed -i "s, path='$source/, path=',; s, language='[^']*',," "$4"
