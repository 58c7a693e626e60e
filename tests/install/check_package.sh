#!/usr/bin/env bash
# What the Debian packages hold, and whether programs can be built and run against them.
# usage: check_package.sh SOURCE SCRATCH_ROOT VERSION
set -euo pipefail
export LC_ALL=C

source=$1 scratch=$(cd "$2" && pwd) version=$3
libraries=$scratch/usr/lib/x86_64-linux-gnu
faults=0
fault() { echo "FAULT: $*"; faults=$((faults + 1)); }

for library in libcampotipo libcampotipo-support; do
  for file in "$libraries/$library.so.1" "$libraries/glibc-hwcaps/x86-64-v3/$library.so.1"; do
    [ "$(basename "$(readlink -f "$file")")" = "$library.so.$version" ] || fault "no $file"
    ! readelf -d "$file" | grep -qE 'RPATH|RUNPATH' || fault "$file has a path in it"
  done
done
while read -r name; do
  [ -e "$scratch/usr/share/man/man3/$name.3.gz" ] || fault "no manual page of $name"
done < <(cat "$source"/tests/abi/exports*.txt)
[ -f "$scratch/usr/share/doc/libcampotipo-dev/html/index.html" ] || fault "no reference"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export PKG_CONFIG_PATH=$libraries/pkgconfig
[ "$(pkg-config --modversion campotipo)" = "$version" ] || fault "pkg-config tells another version"
count=0
for example in "$scratch"/usr/share/doc/libcampotipo-dev/examples/manual/*.c; do
  # shellcheck disable=SC2046
  gcc -std=c99 "$example" -o "$work/example" $(pkg-config --cflags --libs campotipo campotipo-support)
  LD_LIBRARY_PATH=$libraries "$work/example" > "$work/output" || fault "$example fails"
  perl "$source/tests/docs/check_output.pl" "$example" "$work/output" || fault "$example"
  count=$((count + 1))
done
[ "$count" -gt 5 ] || fault "only $count examples"
if [ -x "$scratch/usr/bin/campotipo" ]; then
  LD_LIBRARY_PATH=$libraries "$scratch/usr/bin/campotipo" --version > "$work/output" ||
    fault "the command does not run"
  grep -q "$version" "$work/output" || fault "the command tells another version"
fi
echo "$count examples built against the packages, $faults faults"
[ "$faults" -eq 0 ]
