#!/usr/bin/env bash
# Checks that the C headers compile alone in every language version that hosts use, and that they
# refuse a build in which the host's records would not match those of the plug-in.
# usage: headers_test.sh INCLUDE_FOLDER C_COMPILER CXX_COMPILER
set -euo pipefail
include=$1
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
failed=0
warnings=(-Werror -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wundef -Wcast-align -Wwrite-strings)

mapfile -t headers < <(cd "$include" && ls zel/*.h)
for header in "${headers[@]}"; do echo "#include \"$header\""; done >"$folder/all"

compile() { # language, source file, compiler and options
  "${@:3}" -I "$include" "${warnings[@]}" -fsyntax-only -x "$1" "$2" >"$folder/output" 2>&1
}

expect_success() { # language, source file, compiler and options
  compile "$@" && return
  printf 'FAILED: %s\n%s\n%s\n' "${*:3}" "$(cat "$2")" "$(cat "$folder/output")"
  failed=1
}

expect_refusal() { # message, language, source file, compiler and options
  if compile "${@:2}" || ! grep -q "$1" "$folder/output"; then
    printf 'FAILED: not refused with "%s": %s\n%s\n%s\n' "$1" "${*:4}" "$(cat "$3")" \
      "$(cat "$folder/output")"
    failed=1
  fi
}

# Every header needs nothing to be included before it.
check_alone() { # C compiler, C++ compiler
  for header in "${headers[@]}"; do
    printf '#include "%s"\nextern int something;\n' "$header" >"$folder/alone"
    expect_success c "$folder/alone" "$1" -std=c11
    expect_success c++ "$folder/alone" "$2" -std=c++11
  done
}

check() { # C compiler, C++ compiler
  for version in 11 17; do expect_success c "$folder/all" "$1" -std=c$version; done
  for version in 11 14 17 20; do expect_success c++ "$folder/all" "$2" -std=c++$version; done
  # The records of these headers are not packed by themselves.
  for header in allocator log service_locator formatter; do
    printf '#pragma pack(1)\n#include "zel/%s.h"\n' $header >"$folder/packed"
    expect_refusal "inside #pragma pack" c "$folder/packed" "$1" -std=c11
    expect_refusal "inside #pragma pack" c++ "$folder/packed" "$2" -std=c++11
  done
  # Without a C library, which is often there for one size only.
  expect_refusal "pointers of 64 bits" c "$folder/all" "$1" -std=c11 -m32 -ffreestanding
  expect_refusal "pointers of 64 bits" c++ "$folder/all" "$2" -std=c++11 -m32 -ffreestanding
}

check_alone "$2" "$3"
check "$2" "$3"
for compilers in "gcc g++" "clang clang++" "x86_64-w64-mingw32-gcc x86_64-w64-mingw32-g++"; do
  read -r c cxx <<<"$compilers"
  if command -v "$c" >/dev/null && command -v "$cxx" >/dev/null &&
    [ ! "$(command -v "$c")" -ef "$2" ]; then
    check "$c" "$cxx"
  fi
done
exit $failed
