#!/usr/bin/env bash
# What the two libraries need: the C library alone, and the services by name across the boundary.
# usage: check_needs.sh MAIN_LIBRARY SUPPORT_LIBRARY
set -euo pipefail
export LC_ALL=C

main=$1 support=$2
faults=0
fault() { echo "FAULT: $*"; faults=$((faults + 1)); }
needed() { readelf -d "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | sort | tr '\n' ' '; }
exports() { nm -D --defined-only "$1" | awk '{ sub(/@.*/, "", $3); print $3 }' | sort -u; }

[ "$(needed "$support")" = "libc.so.6 " ] || fault "the services need $(needed "$support")"
[ "$(needed "$main")" = "libc.so.6 libcampotipo-support.so.1 " ] || fault "the library needs $(needed "$main")"
readelf -d "$main" | grep -q 'SONAME.*\[libcampotipo\.so\.1\]' || fault "SONAME of the library"
readelf -d "$support" | grep -q 'SONAME.*\[libcampotipo-support\.so\.1\]' || fault "SONAME of the services"

# A service that the library calls is undefined in it; what is undefined besides is the C library's.
undefined=$(nm -D --undefined-only "$main" | awk '$1 == "U" && $2 !~ /@GLIBC_/ { sub(/@.*/, "", $2); print $2 }' | sort -u)
unknown=$(comm -23 <(echo "$undefined") <(exports "$support"))
[ -z "$unknown" ] || fault "undefined and no service:" $unknown
defined=$(comm -12 <(nm "$main" 2> /dev/null | awk '$2 ~ /[TtDdBbRr]/ && $3 != "" { print $3 }' | sort -u) <(exports "$support"))
defined=$(comm -23 <(echo "$defined") <(echo "$undefined"))
[ -z "$defined" ] || fault "services copied into the library:" $defined
for service in _ato8 _8btoa _8toafixo BIN8_compara _QUANTIA_porc_mul PARCELA_porc_mul CRONOBASE_zuliano \
    CRONOBASE_ano_com_quatro _3ulong _3to8 LINHAFLEX_printf _8byte_mul_byte PARCELA_fixo; do
  grep -qx "$service" <<< "$undefined" || fault "$service is not called by name"
done

echo "$(wc -w <<< "$undefined") services called by name, $faults faults"
[ "$faults" -eq 0 ]
