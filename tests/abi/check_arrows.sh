#!/usr/bin/env bash
# Holds the #include lines of each folder to the arrows that its CMakeLists.txt declares.
# usage: check_arrows.sh SOURCE_DIRECTORY "folder: arrow arrow"...
set -euo pipefail

cd "$1"
shift
faults=0
fault() { echo "FAULT: $*"; faults=$((faults + 1)); }
for line in "$@"; do
  folder=${line%%:*} arrows=${line#*:}
  while IFS=: read -r file included; do
    case " $arrows " in *" $included "*) ;; *) fault "$file includes $included/" ;; esac
  done < <(find "$folder" -name '*.[ch]pp' -exec grep -HoE '#include "[a-z]+/' {} + |
    sed 's/#include "//; s,/$,,')
done
# A folder that declares nothing would be held to nothing.
while read -r folder; do
  case " $* " in *" $folder: "*) ;; *) fault "$folder declares no arrows" ;; esac
done < <(find library records tool -name '*.[ch]pp' -printf '%h\n' | sort -u |
  grep -vE '^(library/base|tool)$|/include/|/x86$')
# Nothing internal in what is installed; base/ stands on nothing.
bad=$(grep -nE '#include "' library/include/campotipo/*.h \
  library/support/include/campotipo-support/*.h || true)
[ -z "$bad" ] || fault "a public header includes a private one: $bad"
bad=$(grep -nE '#include ("([^b]|b[^a])|<campotipo)' library/base/*.hpp || true)
[ -z "$bad" ] || fault "base/ includes something above it: $bad"
echo "$# folders, $faults faults"
[ "$faults" -eq 0 ]
