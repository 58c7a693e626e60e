#!/usr/bin/env bash
# How a release library is hardened, read from the ELF file.
# usage: check_hardening.sh FORTIFIED LIBRARY...     FORTIFIED is 1 for an optimised build
set -euo pipefail
export LC_ALL=C

fortified=$1 faults=0
shift
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
  calls=$(nm -D --undefined-only "$library")
  grep -q __stack_chk_fail <<< "$calls" || fault "no stack protector"
  # Calls whose sizes are known stay plain; of these none ever is.
  [ "$fortified" -eq 0 ] || ! grep -qE ' (vsnprintf|snprintf|sprintf|strcpy|strcat)@' <<< "$calls" ||
    fault "calls that are not fortified"
done
echo "$# libraries, $faults faults"
[ "$faults" -eq 0 ]
