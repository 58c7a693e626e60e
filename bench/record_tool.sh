#!/bin/bash
# Times campotipo dump and load beside the same work in plain C, in one run, on one processor.
#
#   bench/record_tool.sh CAMPOTIPO [RECORDS]
#
# CAMPOTIPO is the command to time. Every pair of outputs is compared before anything is timed; the
# times are processor times, the least of nine interleaved repetitions.
set -euo pipefail

tool=$(realpath "${1:?usage: record_tool.sh CAMPOTIPO [RECORDS]}")
records=${2:-1000000}
here=$(cd "$(dirname "$0")" && pwd)
layout=$here/record_tool.toml
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

plain=$work/plain
"${CC:-cc}" -O2 -std=c11 -o "$plain" "$here/record_tool_bench.c"
"$plain" make "$records" > "$work/records"

"$tool" dump "$layout" "$work/records" --format csv -o "$work/csv"
"$plain" dump < "$work/records" | cmp - "$work/csv"
"$tool" load "$layout" "$work/csv" -o "$work/again"
cmp "$work/records" "$work/again"
for way in sscanf strtoull; do "$plain" "$way" < "$work/csv" | cmp - "$work/records"; done

# Processor milliseconds of a command, its output thrown away.
TIMEFORMAT='%U %S'
milliseconds() {
  local spent
  spent=$({ time "$@" > /dev/null; } 2>&1)
  awk '{ printf "%d", ($1 + $2) * 1000 + 0.5 }' <<< "$spent"
}
plain_with() { "$plain" "$1" < "$2"; }

declare -A least
keep() {
  local name=$1 spent
  shift
  spent=$(milliseconds "$@")
  if [[ -z ${least[$name]:-} || $spent -lt ${least[$name]} ]]; then least[$name]=$spent; fi
}

# With --lossy nothing is held back until the end, as plain C holds nothing back.
for _ in 1 2 3 4 5 6 7 8 9; do
  keep dump "$tool" dump "$layout" "$work/records" --format csv
  keep snprintf plain_with dump "$work/records"
  keep load "$tool" load "$layout" "$work/csv" --lossy
  keep sscanf plain_with sscanf "$work/csv"
  keep strtoull plain_with strtoull "$work/csv"
done

row() {
  awk -v name="$1" -v ms="$2" -v tool="$3" -v records="$records" 'BEGIN {
    printf "%-28s %7d ms %8.2f million records/s %7.0f MB/s %6.1f ns/field %6.1f x\n", name, ms,
      records / ms / 1000, records * 63 / ms / 1000, ms * 1e6 / records / 5, ms / tool }'
}
echo "$records records of 63 bytes in 5 fields, one processor"
row "campotipo dump (CSV)" "${least[dump]}" "${least[dump]}"
row "plain C, snprintf a field" "${least[snprintf]}" "${least[dump]}"
row "campotipo load (CSV)" "${least[load]}" "${least[load]}"
row "plain C, sscanf a row" "${least[sscanf]}" "${least[load]}"
row "plain C, strtoull a number" "${least[strtoull]}" "${least[load]}"
