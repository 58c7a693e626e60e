#!/usr/bin/env bash
# How a release library is hardened, read from the ELF file.
# usage: check_hardening.sh LIBRARY...
set -euo pipefail
export LC_ALL=C

faults=0
for library in "$@"; do
  fault() { echo "FAULT: $library: $*"; faults=$((faults + 1)); }
  headers=$(readelf -Wl "$library") dynamic=$(readelf -Wd "$library") notes=$(readelf -Wn "$library")
  grep -q GNU_RELRO <<< "$headers" || fault "no RELRO segment"
  grep -q 'BIND_NOW' <<< "$dynamic" || fault "binding is not immediate"
  grep -q 'GNU_STACK.* RW ' <<< "$headers" || fault "the stack is executable"
  ! grep -q 'LOAD.* RWE' <<< "$headers" || fault "a segment is writable and executable"
  ! grep -q TEXTREL <<< "$dynamic" || fault "relocations in the text"
  grep -q 'IBT' <<< "$notes" && grep -q 'SHSTK' <<< "$notes" || fault "no control-flow protection"
  ! grep -qE '\((INIT|INIT_ARRAY|FINI|FINI_ARRAY)\)' <<< "$dynamic" || fault "code that runs at load"
done
grep -q __stack_chk_fail <(nm -D "$1") || { echo "FAULT: $1: no stack protector"; faults=$((faults + 1)); }
echo "$# libraries, $faults faults"
[ "$faults" -eq 0 ]
