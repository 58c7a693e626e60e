#!/usr/bin/env bash
# Doxygen over the headers and pages: a warning is a fault, an argument that is not told among them.
# Every sample of the reference, the manual pages and the two READMEs compiles as it stands.
# usage: check_reference.sh SOURCE VERSION LIBRARY_FOLDER[:LIBRARY_FOLDER]
set -euo pipefail
for program in doxygen mandoc; do
  command -v "$program" > /dev/null || { echo "$program is not installed"; exit 77; }
done
source=$(cd "$1" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
sed "s,@PROJECT_SOURCE_DIR@,$source,g; s,@CAMPOTIPO_DOCS_OUTPUT@,$work,; s,@PROJECT_VERSION@,$2," \
  "$source/docs/Doxyfile.in" > "$work/Doxyfile"
doxygen "$work/Doxyfile"
mkdir "$work/man3"
perl "$source/docs/generator/make-man" "$source" "$2" "$work/man3"
mapfile -t pages < <(grep -lE 'class="fragment"|^\.TH ' "$work"/html/*.html "$work"/man3/*)
perl "$(dirname "${BASH_SOURCE[0]}")/compile_samples.pl" "$source" "$work" "$3" \
  "$source"/README*.md "${pages[@]}"
