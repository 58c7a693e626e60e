#!/usr/bin/env bash
# Makes a DuckDB extension of a shared library: the library, then the footer by which DuckDB knows
# for which platform and interface it was built. The file is whole or absent.
# usage: append_footer.sh LIBRARY VERSION EXTENSION
set -euo pipefail

library=$1 version=$2 extension=$3

field() { # a text in 32 bytes, filled up with zeros
  printf '%s' "$1"
  head -c $((32 - ${#1})) /dev/zero
}

footer() {
  # The head of a section of WebAssembly with a name of 16 bytes and 512 bytes behind it: DuckDB
  # writes every footer so.
  printf '\x00\x93\x04\x10duckdb_signature\x80\x04'
  field ''
  field ''
  field ''
  field C_STRUCT
  field "$version"
  field v1.2.0
  field linux_amd64
  field 4
  head -c 256 /dev/zero # no signature
}

cat "$library" <(footer) > "$extension.part"
mv "$extension.part" "$extension"
