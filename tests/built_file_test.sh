#!/usr/bin/env bash
# Checks what the built plug-in file exports, imports and contains.
# usage: built_file_test.sh OBJDUMP PLUGIN
set -euo pipefail
objdump=$1
plugin=$2
failed=0

expect() { # what, expected lines, actual lines
  if [ "$2" != "$3" ]; then
    printf 'FAILED: %s\nexpected:\n%s\nactual:\n%s\n' "$1" "$2" "$3"
    failed=1
  fi
}

section_size() { "$objdump" -h "$plugin" | awk -v name="$1" '$2 == name {print $3}'; }

exports=$'zel_enum_formatter_dispatch_table\nzel_runtime_query_metadata'
case $plugin in
*.so)
  expect exports "$exports" \
    "$("$objdump" -T "$plugin" | awk '/ g / && !/\*UND\*/ {print $NF}' | sort)"
  expect imports $'libc.so.6\nlibgcc_s.so.1\nlibm.so.6\nlibstdc++.so.6\nlibzelc.so' \
    "$("$objdump" -p "$plugin" | awk '$1 == "NEEDED" {print $2}' | grep -v -e asan -e ubsan | sort)"
  # 70 slots of 8 bytes, of which the 35th and the 37th are filled in by the loader.
  expect "size of .tirel" 00000230 "$(section_size .tirel)"
  start=$((16#$("$objdump" -h "$plugin" | awk '$2 == ".tirel" {print $4}')))
  slots=$("$objdump" -R "$plugin" | grep -oE '^[0-9a-f]{16}' | while read -r address; do
    offset=$((16#$address - start))
    if [ $offset -ge 0 ] && [ $offset -lt $((70 * 8)) ]; then echo $((offset / 8)); fi
  done | sort -n)
  expect "registration slots" $'34\n36' "$slots"
  ;;
*.dll)
  expect exports "$exports" \
    "$("$objdump" -p "$plugin" | awk '/Ordinal\/Name Pointer/ {on=1; next} /^$/ {on=0} on && $1 ~ /^\[/ {print $NF}' | sort)"
  expect imports $'KERNEL32.dll\nmsvcrt.dll\nzelc.dll' \
    "$("$objdump" -p "$plugin" | awk '/DLL Name/ {print $NF}' | sort)"
  # Padded to the file's alignment of 32 bytes.
  expect "size of .tirel" 00000240 "$(section_size .tirel)"
  expect "hardening" $'DYNAMIC_BASE\nHIGH_ENTROPY_VA\nNX_COMPAT' \
    "$("$objdump" -p "$plugin" | grep -oE 'HIGH_ENTROPY_VA|DYNAMIC_BASE|NX_COMPAT' | sort)"
  expect "version resource" yes "$(strings -el "$plugin" | grep -q VS_VERSION_INFO && echo yes)"
  ;;
esac
[ -n "$(section_size .zelrt)" ] || { echo "FAILED: there is no section .zelrt"; failed=1; }
exit $failed
