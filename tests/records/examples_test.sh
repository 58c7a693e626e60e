#!/usr/bin/env bash
# The worked programs of the manual say what the command says of the same files.
# usage: examples_test.sh TOOL FOLDER_OF_THE_PROGRAMS EXAMPLES
set -euo pipefail

tool=$1 programs=$2 examples=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fault() { echo "FAULT: $*"; exit 1; }

cat > "$work/conta.toml" << 'END'
name = "conta"
[[field]]
name = "numero"
type = "BIN3"
[[field]]
name = "aberta"
type = "DATAC"
format = "AAAA-MM-DD"
encoding = "packed"
[[field]]
name = "saldo"
type = "BINQ10"
decimals = 2
END
{
  echo numero,aberta,saldo
  for number in $(seq 1 3000); do
    [ $((number % 3)) -eq 0 ] && day= || day=2024-02-29
    echo "$number,$day,$number.25"
  done
} > "$work/conta.csv"
"$tool" load "$work/conta.toml" "$work/conta.csv" -o "$work/conta.reg"

"$programs/list_layout" "$work/conta.toml" > "$work/listed"
diff - "$work/listed" << 'END'
conta: 16 bytes
     0  numero           BIN3       int32
     3  aberta           DATAC      date32
     6  saldo            BINQ10     decimal128(23, 2)
END
"$programs/sum_column" "$work/conta.toml" "$work/conta.reg" numero > "$work/summed"
sum=$("$tool" dump "$work/conta.toml" "$work/conta.reg" --format csv --fields numero --no-header |
  tr -d '\r' | awk '{ sum += $1 } END { print sum }')
[ "$(cat "$work/summed")" = "3000 values, 0 of them null, sum $sum" ] || fault "$(cat "$work/summed")"
"$programs/hand_stream" "$work/conta.toml" "$work/conta.reg" > "$work/handed"
diff - "$work/handed" << 'END'
3000 rows
_record          l      0 null
numero           i      0 null
aberta           tdD    1000 null
saldo            d:23,2 0 null
END

[ "$("$programs/write_columns" "$work/conta.toml" "$work/written.reg" 3000)" = "3000 records" ] ||
  fault "write_columns"
cmp "$work/conta.reg" "$work/written.reg" || fault "columns give other records than rows"

# A file in order, and one that is not: the program says where, as the command does.
"$programs/check_file" "$work/conta.toml" "$work/conta.reg" > "$work/out" || fault "$(cat "$work/out")"
[ ! -s "$work/out" ] || fault "$(cat "$work/out")"
cp "$work/conta.reg" "$work/spoiled.reg"
printf '\377\377\377' | dd of="$work/spoiled.reg" bs=1 seek=19 conv=notrunc status=none
! "$programs/check_file" "$work/conta.toml" "$work/spoiled.reg" > "$work/out" || fault "no findings"
[ "$(cut -d: -f1-3 "$work/out")" = "record 2, byte 19: conta.aberta: invalid" ] ||
  fault "$(cat "$work/out")"

# A layout that lacks a field, and what is left of the file.
sed 's/"saldo"/"valor"/' "$work/conta.toml" > "$work/other.toml"
! "$programs/write_columns" "$work/other.toml" "$work/refused.reg" 3000 2> "$work/told" ||
  fault "a column without a field is written"
grep -q 'has no field "saldo"' "$work/told" && [ ! -e "$work/refused.reg" ] ||
  fault "$(cat "$work/told")"

# What is wrong is told, with its place, and the status says so.
truncate -s -5 "$work/conta.reg"
! "$programs/hand_stream" "$work/conta.toml" "$work/conta.reg" > "$work/out" 2> "$work/told" ||
  fault "a file cut short is handed over"
grep -q 'record 3000, byte 47984: ' "$work/told" || fault "$(cat "$work/told")"
! "$programs/list_layout" nothing 2> /dev/null || fault "a layout that is not there is listed"
[ "$("$programs/hand_stream" "$examples/bancos.toml" /dev/null | head -n 1)" = "0 rows" ] ||
  fault "an empty file"
