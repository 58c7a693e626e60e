#!/usr/bin/env bash
# usage: check_install.sh SOURCE BUILD WORK LIBDIR WAY
#   prefix        installs the build to a prefix and moves it
#   package       the moved prefix, by find_package
#   pkgconfig     the moved prefix, by pkg-config
#   system        the build installed below a root of its own as the system's: short flags, and each
#                 file in a Debian package
#   uninstall     an installation taken away again, and nothing else
#   subdirectory  the sources inside a parent project, with both sets of libraries
#   absolute      that build, installed to absolute directories
#   hwcaps        which set the loader takes from there
#   services      the steps by which a site puts its own services into a copy of it
set -euo pipefail
export LC_ALL=C

source=$1 build=$2 work=$3 libdir=$4 way=$5
here=$(dirname "${BASH_SOURCE[0]}")
prefix=$work/moved/prefix
absolute=$work/absolute
quietly() { "$@" > "$work/$way.log" 2>&1 || { cat "$work/$way.log"; exit 1; }; }
fault() { echo "FAULT: $*"; exit 1; }
unset CFLAGS CXXFLAGS LDFLAGS LD_LIBRARY_PATH PKG_CONFIG_PATH CMAKE_PREFIX_PATH

consume() {  # folder, options...: configures and builds the consumer project, and runs what it made
  local folder=$work/$1
  shift
  rm -rf "$folder"
  quietly cmake -S "$here/consumer" -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Debug "$@"
  quietly cmake --build "$folder"
  run "$folder"/consumer_*
}
run() {
  local program count=0
  for program in "$@"; do
    [ -x "$program" ] && [ -f "$program" ] || continue
    "$program" || fault "$program"
    count=$((count + 1))
  done
  [ "$count" -eq 4 ] || fault "$count programs run, not 4"
}
pkg() {  # directory of the .pc files: compiles by hand with what pkg-config says, and runs
  local folder=$work/programs-$way directory flags
  rm -rf "$folder"
  mkdir -p "$folder"
  export PKG_CONFIG_PATH=$1
  flags=$(pkg-config --cflags --libs campotipo)
  directory=$(pkg-config --variable=libdir campotipo)
  # The prefix has no blanks in it: the flags are meant to be split.
  # shellcheck disable=SC2086
  for language in c:c99 c++:c++11 c++:c++20; do
    gcc -x "${language%:*}" -std="${language#*:}" -pedantic -Wall -Werror \
      "$here/consumer/consumer.c" -x none -o "$folder/${language#*:}" $flags
  done
  # shellcheck disable=SC2046
  gcc "$here/consumer/services.c" -o "$folder/services" $(pkg-config --cflags --libs campotipo-support)
  LD_LIBRARY_PATH=$directory run "$folder"/*
  [ "$(pkg-config --modversion campotipo)" = "$(pkg-config --modversion campotipo-support)" ] ||
    fault "the two .pc files tell different versions"
}
chosen() {  # name, loader arguments...: which file the loader takes for a library
  local name=$1
  shift
  env LD_DEBUG=libs "$@" 2>&1 |
    awk -v "name=find library=$name.so.1 " 'index($0 " ", name) { on = 1; next } /find library/ { on = 0 }
         on && /trying file=/ { sub(/.*trying file=/, ""); file = $0 } END { print file }' |
    xargs realpath
}
replace_services() {  # language: a copy of the installation, by the steps of the manual
  local site=$work/site-$1
  rm -rf "$site"
  cp -a "$absolute" "$site"
  mkdir "$site/made"
  cp -a "$source/library" "$site/made"
  cp "$source/tests/site/money.c" "$site/made"
  {
    echo "cc() { if [ \$1 = -O2 ]; then gcc -x $1 \"\$@\"; else gcc \"\$@\"; fi; }"
    steps "$source/docs/own-services.md"
  } > "$site/made/steps.sh"
  (cd "$site/made" && lib=$site/libraries include=$site/headers quietly bash -euo pipefail steps.sh)
}
steps() { sed -n '/^```sh$/,/^```$/p' "$1" | grep -v '^```'; }

mkdir -p "$work"
case $way in
  prefix)
    rm -rf "$work/first" "$work/moved"
    quietly cmake --install "$build" --prefix "$work/first"
    mkdir "$work/moved"
    mv "$work/first" "$prefix"
    if grep -rIl "$work/first" "$prefix"; then fault "these files name the prefix they came from"; fi
    ;;
  package) consume package -DWAY=package -DCMAKE_PREFIX_PATH="$prefix" ;;
  pkgconfig) pkg "$prefix/$libdir/pkgconfig" ;;
  system)
    rm -rf "$work/system"
    for at in /usr /usr/local; do
      DESTDIR=$work/system quietly cmake --install "$build" --prefix $at
      export PKG_CONFIG_LIBDIR=$work/system$at/$libdir/pkgconfig
      flags=$(pkg-config --cflags --libs campotipo | sed 's/ *$//')
      told="-I$at/include -L$at/$libdir -lcampotipo -lcampotipo-support"
      [ $at = /usr/local ] || told="-lcampotipo -lcampotipo-support"
      [ "$flags" = "$told" ] || fault "in $at pkg-config tells \"$flags\""
    done
    cd "$work/system"
    find usr -path usr/local -prune -o ! -type d -print | sort > ../files
    cut -d ' ' -f 1 "$source"/packaging/debian/*.install | sed "s,usr/lib/\*,usr/$libdir," |
      while read -r pattern; do
        # shellcheck disable=SC2086
        find $pattern ! -type d 2> /dev/null || true
      done | sort -u > ../packed
    left=$(comm -23 ../files ../packed)
    [ -z "$left" ] || fault "in no package: $left"
    ;;
  uninstall)
    rm -rf "$work/removed"
    quietly cmake --install "$build" --prefix "$work/removed/own"
    cp "$build/install_manifest.txt" "$work/removed/list"
    remove() { quietly cmake -DMANIFEST="$work/removed/list" -DPREFIX="$1" \
      -P "$source/cmake/CampotipoUninstall.cmake"; }
    echo mine > "$work/removed/own/include/campotipo/mine.h"
    remove "$work/removed/own"
    [ "$(cd "$work/removed/own" && find . ! -type d)" = ./include/campotipo/mine.h ] ||
      fault "left: $(find "$work/removed/own")"
    rm "$work/removed/own/include/campotipo/mine.h"
    remove "$work/removed/own"
    rm -rf "$work/removed/own"
    quietly cmake --install "$build" --prefix "$work/removed/own"
    remove "$work/removed/own"
    [ ! -e "$work/removed/own" ] || fault "left: $(find "$work/removed/own")"
    export DESTDIR=$work/removed/system
    mkdir -p "$DESTDIR/usr/local/include"
    quietly cmake --install "$build" --prefix /usr/local
    cp "$build/install_manifest.txt" "$work/removed/list"
    remove /usr/local
    [ -d "$DESTDIR/usr/local/include" ] || fault "a folder of the system's own is gone"
    left=$(find "$DESTDIR" ! -type d -o -name '*campotipo*')
    [ -z "$left" ] || fault "left: $left"
    ;;
  subdirectory)
    consume parent -DWAY=subdirectory -DSOURCE="$source" -DCAMPOTIPO_HWCAPS=ON \
      -DCAMPOTIPO_INSTALL=ON -DCMAKE_INSTALL_PREFIX="$absolute/prefix" \
      -DCMAKE_INSTALL_LIBDIR="$absolute/libraries" -DCMAKE_INSTALL_INCLUDEDIR="$absolute/headers"
    rm -rf "$absolute"
    quietly cmake --install "$work/parent"
    ;;
  absolute)
    pkg "$absolute/libraries/pkgconfig"
    consume absolute-package -DWAY=package \
      -Dcampotipo_DIR="$absolute/libraries/cmake/campotipo"
    ;;
  hwcaps)
    second=$absolute/libraries/glibc-hwcaps/x86-64-v3
    for name in campotipo campotipo-support; do
      [ -e "$second/lib$name.so.1" ] || fault "$second has no lib$name.so.1"
      [ ! -e "$second/lib$name.so" ] || fault "$second has a link for the linker"
    done
    loader=/lib64/ld-linux-x86-64.so.2
    "$loader" --help | grep -q 'x86-64-v3 (supported, searched)' || {
      echo "this processor is older than x86-64-v3"
      exit 77
    }
    program=$work/parent-program
    gcc -x c -std=c99 "$here/consumer/consumer.c" -x none -o "$program" -I"$absolute/headers" \
      -L"$absolute/libraries" -Wl,-rpath,"$absolute/libraries" -lcampotipo -lcampotipo-support
    file=$(chosen libcampotipo "$program")
    [ "$file" = "$(realpath "$second/libcampotipo.so.1")" ] || fault "the loader takes $file"
    file=$(chosen libcampotipo "$loader" --glibc-hwcaps-mask none "$program")
    [ "$file" = "$(realpath "$absolute/libraries/libcampotipo.so.1")" ] || fault "masked, the loader takes $file"
    ;;
  services)
    diff <(steps "$source/docs/own-services.md") <(steps "$source/README.md") ||
      fault "README.md tells other steps"
    for language in c c++; do
      replace_services $language
      site=$work/site-$language program=$work/program-$language
      gcc -x $language "$here/consumer/own_services.c" -x none -o "$program" -I"$site/headers" \
        -L"$site/libraries" -Wl,-rpath,"$site/libraries" -lcampotipo -lcampotipo-support
      said=$("$program" 2>&1) || fault "the program over a site's services in $language: $said"
      [ -z "$said" ] || fault "the loader says: $said"
      file=$(chosen libcampotipo-support "$program")
      [ "$file" = "$site/libraries/libcampotipo-support.so.1" ] || fault "the loader takes $file"
      case $(chosen libcampotipo "$program") in
        */glibc-hwcaps/*) ;;
        *) ! "${loader:-/lib64/ld-linux-x86-64.so.2}" --help | grep -q 'x86-64-v3 (supported' ||
          fault "the second set is not taken" ;;
      esac
    done
    ;;
esac
