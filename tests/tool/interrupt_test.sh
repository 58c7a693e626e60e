#!/bin/bash
# The command is ended by a signal at every moment of its work with files: what stood there before
# is whole, or what it makes is, and nothing lies beside.
set -uo pipefail

tool=$1
examples=$2
interrupt=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1

bancos=("$examples/bancos.toml" bancos.dat)
"$tool" load "$examples/bancos.toml" "$examples/data/bancos.csv" -o one.dat 2> err || exit 1
for _ in 1 2 3 4; do cat one.dat; done > bancos.dat
"$tool" dump "${bancos[@]}" --format csv > bancos.csv || exit 1
printf 'what stood there before' > old
failed=0

# ended SIGNAL BEFORE(old | none) COMMAND...: the command, ended at each moment until it is not.
ended() {
  local signal=$1 before=$2 moments=0 status
  shift 2
  "$tool" "$@" -o new 2> err || exit 1
  while :; do
    rm -rf there
    mkdir there
    [[ $before == none ]] || cp old there/out
    moments=$((moments + 1))
    LD_PRELOAD=$interrupt KILL_AT=$moments KILL_WITH=$(kill -l "$signal") \
      "$tool" "$@" -o there/out > out 2> err
    status=$?
    if [[ $status -eq 0 ]]; then
      cmp -s there/out new || return 1
      break
    fi
    [[ $status -eq $((128 + $(kill -l "$signal"))) ]] || return 1
    if [[ -e there/out ]]; then
      cmp -s there/out new || { [[ $before == old ]] && cmp -s there/out old; } || return 1
    else
      [[ $before == none ]] || return 1
    fi
    # What nobody can hold back leaves a name behind if it comes while a file is being replaced, or
    # where the file system has no files without one.
    [[ $signal == KILL && $before$named != none ]] || [[ -z $(find there -mindepth 1 ! -name out) ]] || return 1
  done
  [[ $moments -gt 12 ]]
}

for named in "" named; do
  [[ -z $named ]] || export NAMED=1
  for before in none old; do
    for signal in HUP INT TERM KILL; do
      ended "$signal" "$before" dump "${bancos[@]}" --format csv 2> noise ||
        { echo "dump, $signal, $before, $named" >&2; ls -A there; cat err; failed=1; }
    done
    for command in "load $examples/bancos.toml bancos.csv" "report ${bancos[*]}" \
      "dump ${bancos[*]} --format ndjson --jobs 3"; do
      # shellcheck disable=SC2086
      ended TERM "$before" $command 2> noise ||
        { echo "$command, $before, $named" >&2; ls -A there; cat err; failed=1; }
    done
  done
done
exit $failed
