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
failed=0
for file in "${files[@]}"; do
  size=$(sed -n 's/^size = //p' "$file")
  "$campotipo" layout "$file" > "$work/drawn" 2> "$work/told" || {
    cat "$work/told"
    failed=1
    continue
  }
  # A record of blanks, as long as the layout says, is read and comes back.
  if ! grep -q '^\[\[record\]\]' "$file"; then
    printf "%${size}s\r\n" '' > "$work/blank"
    "$campotipo" dump "$file" "$work/blank" --format csv > "$work/blank.csv" &&
      "$campotipo" load "$file" "$work/blank.csv" -o "$work/back" 2> "$work/told" &&
      cmp "$work/blank" "$work/back" || {
      echo "$file: a record of $size blanks does not come back"
      cat "$work/told"
      failed=1
    }
  fi
done

if "$source/scripts/cnab-layout" cnab240/104/nothing > /dev/null 2> "$work/told"; then
  echo "a description that does not exist is made all the same"
  failed=1
fi
grep -q 'there is no cnab240/104/nothing' "$work/told" || failed=1
exit "$failed"
