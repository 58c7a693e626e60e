#!/usr/bin/env bash
# Size of the installed libraries and the time to load them, as tab-separated rows.
# usage: footprint.sh LIBRARY_DIRECTORY
set -euo pipefail
export LC_ALL=C

printf 'library\ttext\tdata\tbss\trelocations\tneeded\n'
find "$1" -name '*.so.*.*.*' | sort | while read -r library; do
  read -r text data bss _ < <(size "$library" | tail -n 1)
  relocations=$(readelf -rW "$library" | grep -c ' R_X86_64_' || true)
  needed=$(readelf -d "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | tr '\n' ' ')
  printf '%s\t%s\t%s\t%s\t%s\t%s\n' "${library#"$1"/}" "$text" "$data" "$bss" "$relocations" "$needed"
done

# Loading: processor cycles that the loader itself counts, of a program that needs the two libraries
# and of one that needs none, the least of many starts.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
echo 'int main(void) { return 0; }' > "$work/main.c"
cc -O2 "$work/main.c" -o "$work/without"
cc -O2 "$work/main.c" -o "$work/with" -L"$1" -Wl,--no-as-needed,-rpath,"$1" -lcampotipo -lcampotipo-support
least() {
  for _ in $(seq 300); do
    LD_DEBUG=statistics "$1" 2>&1 | sed -n 's/.*total startup time in dynamic loader: \([0-9]*\) .*/\1/p'
  done | sort -n | head -n 1
}
printf 'load\t%s\t%s\n' "$(least "$work/with")" "$(least "$work/without")"
