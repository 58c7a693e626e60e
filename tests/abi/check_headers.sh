#!/usr/bin/env bash
# Every public header compiles alone, as C and as C++, with each compiler that is there.
# usage: check_headers.sh SOURCE_DIRECTORY
set -euo pipefail

cd "$1"
count=0 faults=0
# Nothing but the header and one declaration, which C asks of every source.
try() {  # language, standard, compiler, header
  local folders=(-Ilibrary/support/include)
  # The services need nothing that stands above them.
  [[ $4 = campotipo-support/* ]] || folders+=(-Ilibrary/include -Irecords/include)
  printf '#include <%s>\ntypedef int alone;\n' "$4" |
    "$3" -x "$1" -std="$2" "${folders[@]}" -Wall -Wextra -pedantic -Werror \
      -fsyntax-only - || {
    echo "FAULT: $4 as $2 with $3"
    faults=$((faults + 1))
  }
  count=$((count + 1))
}
for header in library/include/campotipo/*.h library/support/include/campotipo-support/*.h \
  records/include/campotipo-records/*.h; do
  name=${header##*include/}
  for compiler in gcc clang; do
    command -v "$compiler" > /dev/null || continue
    for standard in c99 c17; do try c $standard $compiler "$name"; done
    for standard in c++11 c++20; do try c++ $standard $compiler "$name"; done
  done
done
echo "$count compilations, $faults faults"
[ "$count" -gt 0 ] && [ "$faults" -eq 0 ]
