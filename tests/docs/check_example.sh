#!/usr/bin/env bash
# usage: check_example.sh SOURCE PROGRAM
set -euo pipefail
output=$(mktemp)
trap 'rm -f "$output"' EXIT
"$2" > "$output"
perl "$(dirname "${BASH_SOURCE[0]}")/check_output.pl" "$1" "$output"
