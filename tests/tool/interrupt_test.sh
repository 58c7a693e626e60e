#!/bin/bash
# The command is ended by a signal at every moment of its work with files, or one call of that work
# fails: what stood there before is whole, or what it makes is, and nothing lies beside.
set -uo pipefail

tool=$1
examples=$2
interrupt=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1

bancos=("$examples/bancos.toml" bancos.dat)
"$tool" load "$examples/bancos.toml" "$examples/data/bancos.csv" --lossy -o one.dat 2> err || exit 1
for _ in 1 2 3 4; do cat one.dat; done > bancos.dat
"$tool" dump "${bancos[@]}" --format csv > bancos.csv || exit 1
printf 'what stood there before' > old
failed=0

# ended SIGNAL BEFORE(old | none) COMMAND...: the command, ended at each moment until it is not.
# SIGNAL 0: a call fails at that moment, which the command tells unless it does without.
ended() {
  local signal=$1 before=$2 moment=0 status whole=0 calls=0 number=0
  [[ $signal == 0 ]] || number=$(kill -l "$signal")
  shift 2
  "$tool" "$@" -o new 2> err || exit 1
  while [[ $whole -lt 12 ]]; do
    rm -rf there
    mkdir there
    [[ $before == none ]] || cp old there/out
    LD_PRELOAD=$interrupt KILL_AT=$((++moment)) KILL_WITH=$number \
      "$tool" "$@" -o there/out > out 2> err
    status=$?
    if [[ $status -eq 0 ]]; then
      cmp -s there/out new || return 1
      # A signal that does not come: there are no more moments. A call may fail without harm.
      [[ $signal == 0 ]] || break
      whole=$((whole + 1))
      continue
    fi
    calls=$((calls + 1)) whole=0
    [[ $signal == 0 ]] || [[ $status -eq $((128 + number)) ]] || return 1
    [[ $signal != 0 ]] || { [[ $status -eq 2 ]] && grep -q "^campotipo: .*: Input/output error" err; } ||
      return 1
    if [[ -e there/out ]]; then
      cmp -s there/out new || { [[ $before == old ]] && cmp -s there/out old; } || return 1
    else
      [[ $before == none ]] || return 1
    fi
    # What nobody can hold back leaves a name behind if it comes while a file is being replaced, or
    # where the file system has no files without one.
    [[ $signal == KILL && $before$named != none ]] ||
      [[ -z $(find there -mindepth 1 ! -name out) ]] || return 1
  done
  [[ $calls -gt 6 ]]
}

dumped=(dump "${bancos[@]}" --format csv)
loaded=(load "$examples/bancos.toml" bancos.csv --lossy)
reported=(report "${bancos[@]}")
try() {
  ended "$@" 2> noise && return
  echo "failed: $* $named" >&2
  find there >&2
  cat err >&2
  failed=1
}

for named in "" files descriptors; do
  [[ -z $named ]] || export NAMED=$named
  for before in none old; do
    for signal in 0 TERM; do try $signal $before "${dumped[@]}"; done
    [[ $named != descriptors ]] || continue
    for signal in HUP INT KILL; do try $signal $before "${dumped[@]}"; done
    try TERM $before "${loaded[@]}"
    try TERM $before "${reported[@]}"
    try TERM $before "${dumped[@]}" --jobs 3
  done
done
exit $failed
