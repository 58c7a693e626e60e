#!/usr/bin/env bash
# usage: check_families.sh SOURCE
set -euo pipefail
perl "$1/docs/generator/make-families" "$1" | diff "$1/docs/families.md" - || {
  echo "FAULT: docs/families.md is not what docs/generator/make-families makes of the lists"
  exit 1
}
