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
done < <(cat "$source"/tests/abi/exports{,-documents,-support,-well-formed}.txt)
for header in "$source"/library/include/campotipo/*.h "$source"/library/support/include/campotipo-support/*.h; do
  cmp -s "$header" "$scratch/usr/${header#"${header%include/*}"}" || fault "no $header"
done
for file in bin/campotipo share/man/man1/campotipo.1.gz \
  share/bash-completion/completions/campotipo share/doc/libcampotipo-dev/html/index.html \
  share/doc/libcampotipo-dev/README.md.gz share/doc/libcampotipo-dev/SECURITY.md \
  share/doc/{campotipo,libcampotipo1,libcampotipo-support1,libcampotipo-dev}/{copyright,changelog.gz}; do
  [ -f "$scratch/usr/$file" ] || fault "no $file"
done
zgrep -q 'ABI: ' "$scratch/usr/share/doc/libcampotipo1/changelog.gz" || fault "no line of the ABI"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export PKG_CONFIG_PATH=$libraries/pkgconfig
[ "$(pkg-config --cflags --libs campotipo | sed 's/ *$//')" = "-lcampotipo -lcampotipo-support" ] ||
  fault "pkg-config names folders of the system"
export PKG_CONFIG_SYSROOT_DIR=$scratch PKG_CONFIG_ALLOW_SYSTEM_CFLAGS=1 PKG_CONFIG_ALLOW_SYSTEM_LIBS=1
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

# The example with a file of its own as a CMake project, and the command over the same records.
examples=$scratch/usr/share/doc/libcampotipo-dev/examples command=$scratch/usr/bin/campotipo
export LD_LIBRARY_PATH=$libraries
if cmake -S "$examples" -B "$work/bancos" -DCMAKE_PREFIX_PATH="$scratch/usr" > "$work/output" 2>&1 &&
  cmake --build "$work/bancos" >> "$work/output" 2>&1; then
  "$work/bancos/bancos" "$examples/data/bancos.csv" "$work/bancos.bin" > "$work/output" ||
    fault "the example with a file fails"
else
  cat "$work/output"
  fault "the example with a file does not build"
fi
! readelf -d "$command" | grep -qE 'RPATH|RUNPATH' || fault "the command has a path in it"
readelf -d "$command" | grep -q 'NEEDED.*libcampotipo.so.1' || fault "the command has a library in it"
"$command" --version | grep -q "$version" || fault "the command tells another version"
"$command" load "$examples/bancos.toml" "$examples/data/bancos.csv" --lossy -o "$work/bancos.reg" \
  2> "$work/output" || grep -q '513 records stored' "$work/output" || fault "the command does not load"
"$command" check "$examples/bancos.toml" "$work/bancos.reg" > "$work/output" ||
  fault "the command finds faults in what it stored"
echo "$count examples built against the packages, $faults faults"
[ "$faults" -eq 0 ]
