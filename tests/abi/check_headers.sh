#!/usr/bin/env bash
# Every public header compiles alone, as C and as C++, with each compiler that is there.
# usage: check_headers.sh SOURCE_DIRECTORY
set -euo pipefail

cd "$1"
count=0 faults=0
try() {
  "$@" -Iinclude -Isupport/include -Wall -Wextra -pedantic -Werror -fsyntax-only || {
    echo "FAULT: $*"
    faults=$((faults + 1))
  }
  count=$((count + 1))
}
for header in include/campotipo/*.h support/include/campotipo-support/*.h; do
  for compiler in gcc clang; do
    command -v "$compiler" > /dev/null || continue
    for standard in c99 c17; do try "$compiler" -std=$standard -x c "$header"; done
    for standard in c++11 c++20; do try "$compiler" -std=$standard -x c++ "$header"; done
  done
done
echo "$count compilations, $faults faults"
[ "$count" -gt 0 ] && [ "$faults" -eq 0 ]
