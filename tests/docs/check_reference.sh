#!/usr/bin/env bash
# Doxygen over the headers and pages: a warning is a fault, an argument that is not told among them.
# usage: check_reference.sh SOURCE VERSION
set -euo pipefail
command -v doxygen > /dev/null || { echo "doxygen is not installed"; exit 77; }
source=$(cd "$1" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
sed "s,@PROJECT_SOURCE_DIR@,$source,g; s,@CAMPOTIPO_DOCS_OUTPUT@,$work,; s,@PROJECT_VERSION@,$2," \
  "$source/docs/Doxyfile.in" > "$work/Doxyfile"
doxygen "$work/Doxyfile"
[ -f "$work/html/index.html" ]
