#!/usr/bin/env bash
# Holds each subsystem's #include lines to the arrows that its CMakeLists.txt declares.
# usage: check_arrows.sh SOURCE_DIRECTORY "subsystem: arrow arrow"...
set -euo pipefail

cd "$1"
shift
faults=0
fault() { echo "FAULT: $*"; faults=$((faults + 1)); }
for line in "$@"; do
  subsystem=${line%%:*} arrows=${line#*:}
  while IFS=: read -r file included; do
    case " base $subsystem ${arrows//;/ } " in *" $included "*) ;; *) fault "$file includes $included/" ;; esac
  done < <(grep -oE '#include "[a-z]+/' "$subsystem"/*.cpp "$subsystem"/*.hpp | sed 's/#include "//; s,/$,,')
done
# Nothing internal in what is installed; base/ stands on nothing.
bad=$(grep -nE '#include "' include/campotipo/*.h support/include/campotipo-support/*.h || true)
[ -z "$bad" ] || fault "a public header includes a private one: $bad"
bad=$(grep -nE '#include ("([^b]|b[^a])|<campotipo)' base/*.hpp || true)
[ -z "$bad" ] || fault "base/ includes something above it: $bad"
echo "$# subsystems, $faults faults"
[ "$faults" -eq 0 ]
