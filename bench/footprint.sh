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

# Loading: the difference between a program that needs the two libraries and one that needs none,
# the least of many starts.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
echo 'int main(void) { return 0; }' > "$work/main.c"
cc -O2 "$work/main.c" -o "$work/without"
cc -O2 "$work/main.c" -o "$work/with" -L"$1" -Wl,--no-as-needed,-rpath,"$1" -lcampotipo -lcampotipo-support
least() {
  local best=999999999 before after
  for _ in $(seq 300); do
    before=$(date +%s%N)
    "$1"
    after=$(date +%s%N)
    [ $((after - before)) -ge "$best" ] || best=$((after - before))
  done
  echo "$best"
}
without=$(least "$work/without")
with=$(least "$work/with")
printf 'load\t%s\n' $(((with - without) / 1000))
