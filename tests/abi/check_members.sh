#!/usr/bin/env bash
# A member of a family is named where CONTRIBUTING.md says and nowhere else: one member in the middle
# of each family is looked for, since those at the ends stand in examples.
# usage: check_members.sh SOURCE_DIRECTORY MEMBER...
set -euo pipefail

cd "$1"
shift
faults=0
for member in "$@"; do
  places=$(grep -rlE "(^|[^A-Za-z0-9])_?${member}([^A-Za-z0-9]|\$)" library records tool tests fuzz bench examples \
    --include='*.[ch]*' --include='*.txt' | sort)
  for expected in 'include/.*\.h' 'library/[a-z]*/exports_.*\|library/support/numbers\.cpp' \
    'tests/abi/exports.*\.txt' 'tests/members/.*'; do
    grep -q "$expected" <<< "$places" || { echo "FAULT: $member is not in $expected"; faults=$((faults + 1)); }
  done
  others=$(grep -vE '^library/|^tests/(abi|members)/|^records/kinds/table\.cpp$' <<< "$places" || true)
  [ -z "$others" ] || { echo "FAULT: $member is named in $others"; faults=$((faults + 1)); }
done
echo "$# members, $faults faults"
[ "$faults" -eq 0 ]
