#!/usr/bin/env bash
# Every layout that scripts/cnab-layout makes is one that the command reads, with every position of
# its records described. Not run (status 77) where npm's registry cannot be reached.
# usage: cnab_layout_test.sh CAMPOTIPO SOURCE BUILD
set -euo pipefail
campotipo=$1 source=$2
export CAMPOTIPO_BUILD_ROOT=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

status=0
"$source/scripts/cnab-layout" --all "$work/layouts" || status=$?
if [ "$status" -eq 77 ]; then
  echo "not run: npm's registry cannot be reached"
  exit 77
fi
[ "$status" -eq 0 ] || exit 1

mapfile -t files < <(find "$work/layouts" -name '*.toml' | sort)
[ "${#files[@]}" -eq 138 ] || {
  echo "${#files[@]} layouts, expected 109 of records and 29 of files"
  exit 1
}
# Beside each single record one without values: blanks, and zeros for dates.
python3 - "${files[@]}" << 'END'
import sys, tomllib

for path in sys.argv[1:]:
    with open(path, "rb") as stream:
        fields = tomllib.load(stream).get("field", [])
    text = "".join("0" * len(field["stored"]) if field["type"] == "DATE" else " " * (
        field.get("bytes") or field.get("digits") or len(field["stored"])) for field in fields)
    if text:
        with open(path + ".txt", "w", newline="") as stream:
            stream.write(text + "\r\n")
END
failed=0
for file in "${files[@]}"; do
  if [ ! -f "$file.txt" ]; then
    "$campotipo" layout "$file" > /dev/null 2> "$work/told" && continue
  elif "$campotipo" dump "$file" "$file.txt" --format csv > "$work/table" 2> "$work/told" &&
    "$campotipo" load "$file" "$work/table" -o "$work/back" 2> "$work/told" &&
    cmp "$file.txt" "$work/back"; then
    continue
  fi
  echo "$file: refused, or a record without values does not come back"
  cat "$work/told"
  failed=1
done

if "$source/scripts/cnab-layout" cnab240/104/nothing > /dev/null 2> "$work/told"; then
  echo "a description that does not exist is made all the same"
  failed=1
fi
grep -q 'there is no cnab240/104/nothing' "$work/told" || failed=1
exit "$failed"
