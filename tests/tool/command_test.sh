#!/bin/bash
# The command as people call it: exit status, messages, files that appear whole or not at all.
set -uo pipefail

tool=$1
examples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
failed=0

complain() {
  echo "line ${BASH_LINENO[1]}: $1" >&2
  sed 's/^/    /' out err >&2
  failed=1
}

# expect STATUS "PART OF A MESSAGE" COMMAND...: the part has to stand in either output.
expect() {
  local status=$1 part=$2 got=0
  shift 2
  "$tool" "$@" > out 2> err < "${input:-/dev/null}" || got=$?
  [[ $got -eq $status ]] || complain "status $got, expected $status: $*"
  [[ -z $part ]] || grep -qF -- "$part" out err || complain "nothing says \"$part\": $*"
}
same() { cmp -s "$1" "$2" || complain "$1 and $2 differ"; }
is_utf8() { iconv -f UTF-8 -t UTF-8 "$1" 2> /dev/null | cmp -s - "$1"; }
absent() { [[ -z $(compgen -G "$1*") ]] || complain "$1 is there"; }

cat > pair.toml <<'TOML'
name = "par"
[[field]]
name = "n"
type = "BIN2"
[[field]]
name = "nome"
type = "CODSTR"
bytes = 6
TOML
sed 's/^name = "par"/header = 2\ntrailer = 1\n&/' pair.toml > margins.toml
cat > kinds.toml <<'TOML'
name = "kinds"
length = { bytes = 1 }
[[record]]
name = "long*/"
when = { t = "1" }
[[record.field]]
name = "t"
type = "BIN1"
[[record.field]]
name = "text*/"
type = "CODSTR"
bytes = 300
[[record]]
name = "bits"
[[record.field]]
name = "t"
type = "BIN1"
[[record.field]]
name = "b"
type = "ZBTFIELD"
bits = [3, 5]
TOML
printf 'n,nome\r\n1,abc\r\n2,"x,""y"\r\n65535,\r\n' > good.csv
printf 'n,nome\n1,abc\n70000,abcdefgh\n3,x\n' > lossy.csv

# One value, a layout, the list of types.
expect 0 "CODALF40" types
expect 0 "31/12/2024" show DATAC 9FD18F
expect 0 "12.50%" show PORC2 E204
expect 0 "not well formed" show CODALF05 30D98303
expect 1 "invalid packed code" show CODALF05 30D98303 --strict
expect 2 "expected 3" show DATAC 9FD1
expect 2 "hexadecimal" show DATAC 9FD18
expect 2 "hexadecimal" show DATAC 9FZ18F
expect 0 "aaaaaaaaaaaaaaaa" show CODSTR "$(printf '61%.0s' {1..16})"
expect 0 "08208224" make CODALF05 7 --set 'options=["zeros"]'
expect 0 "BF00000000000000" make BIN8 191 --set 'check="CNPJ"'
expect 0 "E2040000" make BIN4 12.50 --set decimals=2
expect 1 "nothing is written (--lossy" make BIN1 256
[[ ! -s out ]] || complain "bytes of a value that does not fit"
expect 0 "too large" make BIN1 256 --lossy
grep -qx 00 out || complain "a wrapped number"
expect 2 "--strict is gone" make BIN1 255 --strict
expect 0 "1EFBFFFFFFFFFFFF" make QUANTIA -12.50
expect 0 "B390" make ZBTFIELD "5 19 9" --set 'bits=[3,5,4]' --set 'order="big"'
expect 0 "31/12/2024" show DATAC "9F:D1 8F"
expect 0 "AB-1" show CODALFA 30D98300 --set positions=5
expect 0 "AB" show CODSTR 41420000
expect 0 "AB" show CODSTR 414200 --set bytes=3
expect 0 "30D98300" make CODALF05 AB-1
expect 0 "30D98300" make CODALF05 ab-1 --lossy
expect 0 "30D983" make CODALFA AB-1
expect 2 "expected 3 numbers" make ZBTFIELD "5 19" --set 'bits=[3,5,4]'
expect 0 "b: spare" show ZBTFIELD 20 --set 'bits=[3,{name="b",bits=2}]'
expect 1 "CNPJ fail" make CODALF14 11222333000180 --set 'check="CNPJ"'
expect 0 "12.ABC.345/01DE-35" document 12ABC34501DE35
expect 0 "CPF       hold    123.456.789-09  CPF, person" document 123.456.789-09
expect 1 "CNPJ" document 11222333000180 --strict
expect 0 "no document has its length" document xyz
expect 0 "2      6  nome" layout pair.toml
expect 0 'CREATE TABLE "par"' layout pair.toml --sql
expect 0 "<svg" layout pair.toml --svg
expect 0 "1 bytes with its length in front of each record" layout kinds.toml
expect 0 "Record long+/ */" layout kinds.toml --header
expect 2 "expected --kind NAME" layout kinds.toml --svg
expect 2 "--record is now called --kind" layout kinds.toml --svg --record bits
expect 0 ">b: bytes 1 to 1" layout kinds.toml --svg --kind bits
expect 0 "bits: 2 bytes" layout kinds.toml --kind bits
! grep -q "long" out || complain "another kind is drawn"
expect 2 "excludes" layout kinds.toml --kind bits --sql
expect 2 "no kind of record is called \"bit\", expected one of long*/, bits" layout kinds.toml --svg --kind bit
expect 2 "expected a layout" layout --svg
expect 0 '"inicio_pix" TIMESTAMP' layout "$examples/bancos.toml" --sql
expect 0 "" layout pair.toml --header -o par.h
printf '#include "par.h"\nint main(void) { return sizeof(par) - PAR_BYTES; }\n' > par.c
if ! "${CC:-cc}" -std=c99 -pedantic -Wall -Wextra -Werror par.c -o par || ! ./par; then
  complain "the header made of a layout does not compile"
fi

# Fields and records named like the words of C and C++.
words="alignas alignof and and_eq asm auto bitand bitor bool break case catch char char16_t char32_t
  char8_t class co_await co_return co_yield compl concept const const_cast consteval constexpr
  constinit continue decltype default delete do double dynamic_cast else enum errno explicit export
  extern false float for friend goto if inline int linux long mutable namespace new noexcept not
  not_eq NULL nullptr operator or or_eq private protected public register reinterpret_cast requires
  restrict return short signed sizeof static static_assert static_cast struct switch template this
  thread_local throw true try typedef typeid typename typeof union unix unsigned using virtual void
  volatile wchar_t while xor xor_eq 1 x_ x-y x+y X-Y"
echo 'name = "/*/ words"' > words.toml
count=0
for word in $words; do
  printf '[[record]]\nname = "%s"\n' "$word"
  [[ $word == X-Y ]] || printf 'when = { t = "%d" }\n' $((++count))
  printf '[[record.field]]\nname = "t"\ntype = "BIN1"\n'
  for name in $words; do printf '[[record.field]]\nname = "%s"\ntype = "BIN1"\n' "$name"; done
done >> words.toml
expect 0 "" layout words.toml --header -o words.h
printf '#include <errno.h>\n#include <stddef.h>\n#include "words.h"\n' > words.c
for how in "${CC:-cc} -std=c99 -pedantic" "${CC:-cc} -std=gnu17" "${CC:-cc} -std=gnu2x" \
  "${CXX:-c++} -x c++ -std=c++11 -pedantic" "${CXX:-c++} -x c++ -std=gnu++20"; do
  $how -Wall -Wextra -Werror -fsyntax-only words.c 2> err || complain "no header for $how"
done

# There and back, by files and by pipes, on one processor and on several.
expect 0 "" load pair.toml good.csv -o good.dat
expect 0 "" dump pair.toml good.dat --format csv -o again.csv
same good.csv again.csv
"$tool" dump pair.toml --format csv < good.dat | "$tool" load pair.toml --jobs 3 > piped.dat
same good.dat piped.dat
expect 0 '{"n":2,"nome":"x,\"y"}' dump pair.toml good.dat --format ndjson --from 2 --count 1
expect 0 "    2  x,\"y" dump pair.toml good.dat
expect 0 "FFFF" dump pair.toml good.dat --hex --fields n
expect 2 "no field or column is called \"m\"" dump pair.toml good.dat --fields m
for bad in 0 -1 x 99999999999999999999; do
  expect 2 "--from: expected 1 or more, found \"$bad\"" dump pair.toml good.dat "--from=$bad"
done
expect 2 '--count: expected 0 or more, found "-1"' dump pair.toml good.dat --count=-1
expect 2 '--jobs: expected 1 to 256, found "257"' dump pair.toml good.dat --jobs 257
expect 2 '--jobs: expected 1 to 256, found "0"' load pair.toml good.csv --jobs 0
expect 0 '{"n":65535,"nome":""}' dump pair.toml good.dat --format ndjson --from 0003
"$tool" dump pair.toml good.dat --format csv --hex | "$tool" load pair.toml > hex.dat
same good.dat hex.dat
{ printf 'HD'; cat good.dat; printf T; } > margins.dat
"$tool" dump margins.toml margins.dat --format csv | "$tool" load margins.toml --like margins.dat > m.dat
same margins.dat m.dat

# A value that cannot be stored whole: nothing is written, unless that is asked for.
for jobs in 1 4; do
  expect 1 "lossy.csv:3: record 2: field n: \"70000\" too large for the field" \
    load pair.toml lossy.csv --jobs "$jobs" -o refused.dat
  grep -qF "2 values incomplete, nothing is written" err || complain "no sum of what is refused"
  absent refused.dat
done
"$tool" load pair.toml lossy.csv > refused.dat 2> err
[[ $? -eq 1 && ! -s refused.dat ]] || complain "bytes of a refused file in a pipe"
rm refused.dat
expect 0 "lossy.csv:3: record 2: field nome: \"abcdefgh\" too long" \
  load pair.toml lossy.csv --lossy -o lossy.dat
grep -qF "3 records stored, 2 values incomplete" err || complain "no sum of the losses"
printf '\1\0abc\0\0\0\0\0abcdef\3\0x\0\0\0\0\0' | cmp -s - lossy.dat || complain "what is left is another"
expect 2 "--strict is gone" load pair.toml good.csv --strict -o strict.dat
absent strict.dat
{ printf 'n,nome\n'; for i in {1..20}; do printf '%s,"\nabcdef"\n' "$i"; done; } > many.csv
expect 1 "many.csv: field nome: 15 more, too long" load pair.toml many.csv -o many.dat
[[ $(grep -c "^campotipo: many.csv:[0-9]*: record" err) -eq 5 ]] || complain "not the first five"
expect 1 "many.csv:40: record 20: field nome" load pair.toml many.csv --all -o many.dat
[[ $(grep -c "^campotipo: many.csv:[0-9]*: record" err) -eq 20 ]] || complain "not every place"

# The file that is read is not written.
for in in good.csv ./good.csv link-to-good.csv; do
  ln -sf good.csv link-to-good.csv
  expect 2 "is a file that is read" load pair.toml good.csv -o "$in"
done
expect 2 "is a file that is read" load pair.toml good.csv -o pair.toml
expect 2 "is a file that is read" load pair.toml good.csv --like pair.toml -o ./pair.toml
expect 2 "is a file that is read" dump pair.toml good.dat -o good.dat
expect 2 "is a file that is read" dump pair.toml good.dat -o pair.toml
expect 2 "is a file that is read" report pair.toml good.dat -o good.dat
expect 2 "is a file that is read" layout pair.toml --header -o pair.toml
"$tool" load pair.toml good.csv >> good.csv 2> err
[[ $? -eq 2 ]] || complain "a file grows by what it holds"

# Findings.
head -c 20 good.dat > cut.dat
cut="cut.dat: record 3, byte 16: incomplete record: the file ends 4 bytes into it"
expect 0 "every value valid" check pair.toml good.dat
expect 1 "record 3, byte 16" check pair.toml cut.dat
expect 1 '"record":3,"byte":16' check pair.toml cut.dat --json
printf 'ab\0\0\0\0xyz\1\2ab\0x\0\0' > spoilt.dat
expect 1 "bytes behind the end of the text" check pair.toml spoilt.dat
expect 0 "distinct" stats pair.toml good.dat
expect 0 '{"field":"n","type":"BIN2","values":3,"empty":0,"distinct":3,"exact":true,"least":"1","greatest":"65535"},' \
  stats pair.toml good.dat --json
expect 0 '"field":"bits.b_parte1","type":"ZBTFIELD","values":2,"empty":1,"distinct":2' \
  stats kinds.toml <(printf '\2\0\5\2\0\0') --json
printf '\1\0<b>&"\0' > marked.dat
expect 0 "&lt;b&gt;&amp;&quot;" report pair.toml marked.dat
# A report reads twice: it waits for nobody.
mkfifo fifo
expect 2 "fifo: is a pipe or device, expected a regular file" report pair.toml fifo
expect 2 "is a pipe or device" report pair.toml <(cat marked.dat)

# A file that ends inside a record: what stands in front of that is not lost.
head -n 3 good.csv > two.csv
expect 1 "$cut" dump pair.toml cut.dat --format csv -o partial.csv
same partial.csv two.csv
for jobs in 1 3; do
  expect 1 "$cut" dump pair.toml cut.dat --format csv --jobs "$jobs"
  same out two.csv
done
expect 1 "$cut" dump pair.toml cut.dat
grep -qF '2  x,"y' out || complain "a good record is not in the table"
expect 1 "$cut" dump pair.toml cut.dat --format ndjson
[[ $(wc -l < out) -eq 2 ]] || complain "a good record is no line of JSON"
expect 1 "$cut" stats pair.toml cut.dat --json
grep -qF '"values":2' out || complain "a good record is not counted"
expect 1 "$cut" report pair.toml cut.dat -o cut.html
grep -qF "<b>2</b>records" cut.html || complain "a good record is not in the report"
expect 0 "" dump pair.toml cut.dat --count 2
# A fault that comes again and again is told a few times, then counted; check can show each.
for ((i = 0; i < 30; i++)); do printf '\1z'; done > short.dat
sed '1a length = { bytes = 1 }' pair.toml > lengths.toml
expect 1 "25 more of these: a record of 1 bytes, expected 8" dump lengths.toml short.dat
[[ $(wc -l < err) -eq 6 ]] || complain "the faults are not told as they should"
expect 1 "25 more (--all shows each)" check lengths.toml short.dat
expect 1 "short.dat: 0 records of par, 30 findings" check lengths.toml short.dat --all
[[ $(grep -cE '^ +[0-9]+ +[0-9]+ +\(record\) +a record of 1 bytes' out) -eq 30 ]] ||
  complain "not every finding is shown"
expect 1 '{"_file":"short.dat","_record":30,"line":null,"byte":58,"kind":null,"field":null,"what":"line_length","value":""}' \
  check lengths.toml short.dat --all --json
[[ $(wc -l < out) -eq 30 ]] || complain "not every finding is a line of JSON"
expect 1 '"kind":"par","field":"nome","what":"invalid","value":' \
  check pair.toml spoilt.dat --all --json

# One kind of several is a table of its own, which is loaded back.
printf 't,b_parte1,b_parte2\r\n0,5,0\r\n0,0,0\r\n' > bits.csv
sed 's/bytes = 300/bytes = 43/' kinds.toml > kinds43.toml
{ printf '\2\0\5\54\1abc'; head -c 40 /dev/zero; printf '\2\0\0'; } > kinds.dat
expect 0 "" dump kinds43.toml kinds.dat --format csv --kind bits -o one.csv
same one.csv bits.csv
expect 0 '{"t":0,"b":{"parte1":"5","parte2":"0"}}' dump kinds43.toml kinds.dat --format ndjson --kind bits --count 1
expect 0 "0         5         0" dump kinds43.toml kinds.dat --kind bits
expect 2 'no field or column is called "text*/"' dump kinds43.toml kinds.dat --kind bits --fields 'text*/'
expect 0 "" load kinds43.toml bits.csv --kind bits -o one.dat
printf '\2\0\5\2\0\0' | cmp -s - one.dat || complain "rows of one kind are other records"
expect 2 'no column "record"' load kinds43.toml <(printf 'record,t\nbits,0\n') --kind bits -o none.dat

# Lines of text, of kinds that the layout knows and others.
cat > lines.toml <<'TOML'
name = "lines"
size = 5
line_end = "crlf"
[[record]]
name = "d"
when = { t = "D" }
field = [
  { at = 1, name = "t", type = "CODSTR", bytes = 1 },
  { at = 2, name = "x", type = "CODSTR", bytes = 4 },
]
[[record]]
name = "z"
last = true
when = { t = "Z" }
field = [
  { at = 1, name = "t", type = "CODSTR", bytes = 1 },
  { at = 2, name = "n", type = "BIN4", counts = "*" },
]
TOML
printf 'Daaaa\nXxxxx\nDbbbb\nDcccc\n' > lines.txt
expect 0 "lines that end in CR LF" layout lines.toml
expect 0 "d: 5 bytes, t = D" layout lines.toml
expect 1 "lines.txt: record 2, byte 6: a record of no kind" dump lines.toml lines.txt --kind d
expect 0 "lines.txt: 1 record of no kind passed over" dump lines.toml lines.txt --kind d --skip-unknown
expect 0 "1 record of no kind passed over" stats lines.toml lines.txt --skip-unknown
expect 0 "1 record of no kind passed over" report lines.toml lines.txt --skip-unknown
expect 1 "lines.txt: 3 records of lines, 1 of no kind passed over, 1 finding" \
  check lines.toml lines.txt --skip-unknown
expect 1 "the file does not end with a record" check lines.toml lines.txt --skip-unknown
expect 1 '"_record":2,"line":2,"byte":6,"kind":null,"field":null,"what":"unknown_kind","value":""}' \
  check lines.toml lines.txt --all --json
printf 'record,x\nd,aa\nd,bb\nz,\n' > lines.csv
expect 0 "" load lines.toml lines.csv -o lines.dat
printf 'Daa\0\0\r\nDbb\0\0\r\nZ\3\0\0\0\r\n' | cmp -s - lines.dat || complain "other lines"
expect 1 'record 1: field x: "a' load lines.toml <(printf 'record,x\nd,"a\nb"\n') -o none.dat
grep -qF "holds the end of a line" err || complain "nobody tells of a line that is broken in two"
absent none.dat

# A total that stands in front of what it counts, in a file and in a pipe.
sed 's/^last = true//' lines.toml > ahead.toml
printf 'record,x\nz,\nd,aa\nd,bb\n' > ahead.csv
expect 0 "" load ahead.toml ahead.csv -o ahead.dat
printf 'Z\3\0\0\0\r\nDaa\0\0\r\nDbb\0\0\r\n' | cmp -s - ahead.dat || complain "another total in front"
for lossy in "" --lossy; do
  # shellcheck disable=SC2086
  "$tool" load ahead.toml ahead.csv $lossy 2> err | cmp -s - ahead.dat || complain "another in a pipe"
done

# Layouts that are built in.
expect 0 "b3/cotahist" layout
expect 0 "line_end" layout b3/cotahist --toml
expect 2 'no ready layout has this name' layout pair.toml --toml
expect 2 'expected "b3/cotahist"?' layout b3/cotahis

# What cannot be used, and what must not be left behind.
expect 2 "is a directory" dump pair.toml .
expect 2 "is a directory" load pair.toml good.csv -o .
expect 2 "is a directory" check . good.dat
expect 2 "cannot be opened" dump pair.toml nowhere.dat
expect 2 "cannot be opened" dump nowhere.toml good.dat
expect 2 "good.dat:1:" dump good.dat pair.toml
expect 2 "cannot be written: No space left on device" dump pair.toml good.dat -o /dev/full
"$tool" dump pair.toml good.dat > /dev/full 2> err
[[ $? -eq 2 ]] || complain "a full disk goes unnoticed"
expect 2 "cannot be written: No such file" dump pair.toml good.dat -o nowhere/good.csv
expect 2 "cannot be read: Input/output error" dump pair.toml /proc/self/mem
for jobs in 1 3; do
  "$tool" dump pair.toml /proc/self/mem --jobs "$jobs" > out 2> err
  [[ $? -eq 2 ]] || complain "a file that cannot be read goes unnoticed"
done
expect 2 "a file with a header and trailer of 3 bytes" \
  load margins.toml good.csv --like <(printf x) -o empty.dat
expect 2 "two columns are called \"n\"" load pair.toml <(printf 'n,n\n1,2\n') -o empty.dat
expect 2 "expected a column \"record\"" load kinds.toml <(printf 't\n1\n') -o empty.dat
expect 2 "enough bytes for records of 301 bytes" \
  load kinds.toml <(printf 'record,t,text*/,b_parte1,b_parte2\nlong*/,1,x,,\n') -o empty.dat
expect 2 "is empty" load pair.toml /dev/null -o empty.dat
expect 2 "the layout has no column \"nomes\", expected \"nome\"?" \
  load pair.toml <(printf 'n,nomes\n1,x\n') -o empty.dat
expect 0 "" load pair.toml <(printf 'n,nam,nome\n1,x,y\n') --ignore nam -o ignored.dat
expect 2 ":2: record 1: a quote that is not closed" load pair.toml <(printf 'n,nome\n"1,x\n') -o empty.dat
expect 2 "a row without end, or a quote that is not closed" \
  load pair.toml <(printf 'n,nome\n1,"' && head -c 140000000 /dev/zero | tr '\0' x) -o empty.dat
expect 2 ":3: record 2: 1 cells, expected 2" \
  load pair.toml <(printf 'n,nome\n1,x\n2\n') -o empty.dat
absent empty.dat
expect 2 "" dump
expect 2 "" no-such-command

# Whatever the bytes are, JSON is UTF-8 and JSON, and CSV has its columns.
printf 'name = "r"\nencoding = "UTF-8"\n[[field]]\nname = "a"\ntype = "CODSTR"\nbytes = 7\n[[field]]\nname = "b"\ntype = "CODSTR"\nbytes = 5\n' > utf8.toml
{ printf 'a\xc3\xa7\xff\xed\xa0\x80\xf0\x9f\x98",'; cat "$tool"; } | head -c 120000 > any.dat
expect 0 "" dump utf8.toml any.dat --format ndjson
is_utf8 out || complain "JSON is no UTF-8"
perl -MJSON::PP -ne 'BEGIN { $json = JSON::PP->new->utf8 } die unless 2 == keys %{$json->decode($_)};
  END { die unless $. == 10000 }' out 2> err || complain "no lines of JSON"
grep -q $'^{"a":"a\xc3\xa7\xef\xbf\xbd\xef\xbf\xbd' out || complain "no mark in the place of a bad byte"
expect 0 'C3A7FFEDA080' dump utf8.toml any.dat --format ndjson --hex
expect 0 "" dump utf8.toml any.dat --format csv
is_utf8 out || complain "CSV is no UTF-8"
"$tool" load utf8.toml out --lossy -o again.dat 2> err
[[ $(stat -c %s again.dat) -eq 120000 ]] || complain "CSV has other rows or columns"

# A name in a picture is cut by letters.
printf 'name = "r"\n[[field]]\nname = "a%s"\ntype = "BIN8"\n[[field]]\nname = "b"\ntype = "CODSTR"\nbytes = 24\n' \
  "$(printf '\xc3\xa7%.0s' {1..60})" > letters.toml
expect 0 "" layout letters.toml --svg
LC_ALL=C grep -qP '>a(\xc3\xa7){20,}\xe2\x80\xa6<' out || complain "a name is cut too short"
is_utf8 out || complain "a name is cut inside a letter"

# The completion and the manual page know the commands and the options of each, and no others.
# shellcheck source=/dev/null
source "$examples/../tool/campotipo.bash-completion"
sed 's/\\f[A-Z]//g; s/\\//g' "$examples/../tool/campotipo.1" > manual
completed() { # word...: what can stand for the last of the words
  COMP_WORDS=(campotipo "$@") COMP_CWORD=$#
  _campotipo
  printf '%s\n' "${COMPREPLY[@]}" | sort
}
commands=$("$tool" --help | sed -n '/^subcommands/I,$s/^  \([a-z]*\) .*/\1/p')
completed "" | grep -v '^--' | cmp -s - <(sort <<< "$commands") || complain "other commands are completed"
for command in $commands; do
  expect 0 "Example" "$command" --help
  grep -oE -- '--[a-z-]+' out | sort -u > options
  completed "$command" -- | cmp -s - options || complain "other options of $command are completed"
  while read -r option; do
    grep -qF -- "$option" manual || complain "the manual page has no $option"
  done < options
done

# What is replaced keeps its mode, and a link leads to it as before.
printf old > kept.csv
chmod 640 kept.csv
ln -s kept.csv link.csv
expect 0 "" dump pair.toml good.dat --format csv -o link.csv
same kept.csv good.csv
[[ -L link.csv && $(stat -c %a kept.csv) == 640 ]] || complain "the link or the mode is another"

# A link that leads to nothing yet leads to the new file.
mkdir folder
ln -s folder/new.csv one && ln -s one two
expect 0 "" dump pair.toml good.dat --format csv -o two
same folder/new.csv good.csv
[[ -L two && -L one ]] || complain "a link is replaced"
ln -s nowhere/new.csv lost
expect 2 "lost: cannot be written: No such file" dump pair.toml good.dat -o lost
ln -s circle circle
expect 2 "circle: cannot be written: Too many levels" dump pair.toml good.dat -o circle

# A table longer than what is gathered before it is written.
head -c 4000000 /dev/zero > zeros.dat
[[ $("$tool" dump pair.toml zeros.dat --count 100000 | wc -l) -eq 100001 ]] ||
  complain "a long table is not whole"

# A pipe that is closed by a reader that has enough: the end is that of every command, in silence.
for jobs in 1 2; do
  "$tool" dump pair.toml zeros.dat --format csv --jobs "$jobs" 2> err | head -n 1 > out
  [[ ${PIPESTATUS[0]} -eq 141 && ! -s err ]] || complain "a closed pipe is not taken in silence"
done
(trap '' PIPE; "$tool" dump pair.toml zeros.dat --format csv 2> err; echo $? > status) | head -n 1 > out
grep -qF "the reader has closed the pipe" err || complain "a closed pipe goes unnoticed"
[[ $(< status) -eq 2 ]] || complain "a closed pipe is well"

# Memory does not grow with the file: far less than the file has to do.
if [[ -z ${SANITIZED:-} ]]; then
  (ulimit -v 60000; head -c 120000000 /dev/zero | "$tool" dump pair.toml --format csv |
    "$tool" load pair.toml | cmp -n 120000000 - /dev/zero) > out 2> err ||
    complain "a long stream takes too much memory"
fi

# A bar and colours only for a terminal.
if [[ -x $(command -v script) ]]; then
  on_terminal() { TERM=xterm script -qec "$*" /dev/null < /dev/null > out; }
  on_terminal "$tool check pair.toml spoilt.dat"
  grep -q $'\e\[31m' out || complain "no colour on a terminal"
  NO_COLOR=1 on_terminal "$tool check pair.toml spoilt.dat"
  ! grep -q $'\e\[' out || complain "colour where NO_COLOR is set"
  # Names and values that would steer it; C1 controls and marks of direction too.
  steering=$'[\x01-\x08\x0b\x0c\x0e-\x1f\x7f]|\xc2[\x80-\x9f]|\xe2\x80[\xaa-\xae]|\xe2\x81[\xa6-\xa9]'
  bad=$'\e]0;x\a\x7f\xc2\x9b1m\xe2\x80\xae\xe2\x81\xa7'
  # shellcheck disable=SC2059
  printf 'name = "\\u009bpar\\u202e"\nencoding = "UTF-8"\n[[field]]\nname = "n\\u009b\\u202e"\n%s' \
    $'column = "c\\u001b[1m\\u202e"\ntype = "BIN2"\n[[field]]\nname = "s"\ntype = "CODSTR"\nbytes = 40\n' > bad.toml
  { printf '\1\0%s' "$bad"; head -c 60 /dev/zero; } | head -c 42 > "$bad.dat"
  { printf '\1\0abc'; head -c 60 /dev/zero | tr '\0' z; } >> "$bad.dat"
  printf 'n%s,nome\n1,2\n' "$bad" > names.csv
  printf 'n,nome\n1%s,2\n' "$bad" > cells.csv
  printf '%s = 1\n' "$bad" > "$bad.toml"
  for command in "dump bad.toml" "dump bad.toml --format csv" "dump bad.toml --format ndjson" \
    "dump bad.toml --hex" "check bad.toml" "check bad.toml --all" "check bad.toml --json" \
    "check bad.toml --all --json" "stats bad.toml" "stats bad.toml --json" "report bad.toml"; do
    NO_COLOR=1 on_terminal "$tool $command '$bad.dat'"
    [[ -s out ]] || complain "nothing written: $command"
    ! LC_ALL=C grep -qP "$steering" out || complain "a terminal is steered by $command"
  done
  for command in "layout bad.toml" "layout bad.toml --sql" "layout bad.toml --svg" \
    "layout bad.toml --header" "layout '$bad.toml'" "load pair.toml names.csv -o x.dat" \
    "load pair.toml cells.csv -o x.dat" "load pair.toml good.csv --ignore '$bad' --jobs '$bad'" \
    "show CODSTR 411b5b" "make BIN1 '$bad'" "document '$bad'" "'$bad'"; do
    NO_COLOR=1 on_terminal "$tool $command"
    [[ -s out ]] || complain "nothing written: $command"
    ! LC_ALL=C grep -qP "$steering" out || complain "a terminal is steered by $command"
  done
  on_terminal "(sleep 1; cat zeros.dat) | $tool dump pair.toml --format csv -o /dev/null"
  grep -q "records  " out || complain "no bar on a terminal"
  on_terminal "$tool dump pair.toml zeros.dat --format csv | (sleep 1; cat > /dev/null)"
  grep -q "records  " out && grep -qF "[#" out || complain "no bar of a known size on a terminal"
fi
"$tool" check pair.toml spoilt.dat > out 2> err
! grep -q $'\e' out err || complain "an escape in a file"

# The layout that comes with the examples.
expect 1 "64 values incomplete, nothing is written" \
  load "$examples/bancos.toml" "$examples/data/bancos.csv" -o bancos.dat
absent bancos.dat
expect 0 "513 records stored, 64 values incomplete" \
  load "$examples/bancos.toml" "$examples/data/bancos.csv" --lossy -o bancos.dat
if grep -qv "field nome_reduzido\|records stored" err; then complain "another field is lossy"; fi
expect 0 "every value valid" check "$examples/bancos.toml" bancos.dat
"$tool" dump "$examples/bancos.toml" bancos.dat --format csv |
  "$tool" load "$examples/bancos.toml" | cmp - bancos.dat || complain "bancos does not come back"
columns=compe,ispb,cnpj,nome,tipo,inicio_operacao,inicio_pix
"$tool" dump "$examples/bancos.toml" bancos.dat --format csv --lf --fields "$columns" > dumped.csv
expect 0 'has no column "nome_reduzido"' load "$examples/bancos.toml" dumped.csv -o part.dat
expect 0 "every value valid" check "$examples/bancos.toml" part.dat
cmp -s -n 170 part.dat bancos.dat || complain "the columns that are there are not all stored"

exit $failed
