#!/usr/bin/env bash
# Sets everything up, builds and runs all tests: the DLL and the Windows package under Wine; natively with
# ThreadSanitizer, with AddressSanitizer and UndefinedBehaviorSanitizer, with Clang, and as released.
# Opens the pages of rtrange in Chromium, compares the dissector with the tables, checks the sources with clang-tidy, and
# fuzzes for half a minute per target.
set -euo pipefail
cd "$(dirname "$0")/.."

# A test that skips itself fails, unless its reason is one that no set-up could remove.
permitted_reasons='^(this system does|sanitizers do|Windows has|Windows permits) no'

refuse_skips() { # preset
  local reasons
  # GoogleTest writes the reason below "Skipped", a script behind "SKIPPED:".
  reasons=$(awk '/: Skipped$/ {getline; print} sub(/^SKIPPED: /, "")' \
    "build/$1/Testing/Temporary/LastTest.log" | sort -u)
  [ -z "$reasons" ] && return
  echo "Skipped: $reasons"
  if grep -qvE "$permitted_reasons" <<<"$reasons"; then
    echo "test.sh: a test of the preset $1 was skipped, so that not everything is tested" >&2
    exit 1
  fi
}

scripts/install-packages.sh --with-windows --with-clang --with-browser --with-test-tools
scripts/build-windows-libraries.sh
scripts/prepare-wine.sh
echo "== Installing what the browser's tests need, in tests/browser/node_modules"
npm ci --prefix tests/browser --no-fund --no-audit

presets=(windows threads sanitize clang linux)
for preset in "${presets[@]}"; do
  echo "== Building ($preset)"
  cmake --preset "$preset" -D ZEL_WARNINGS_AS_ERRORS=ON --log-level=WARNING
  cmake --build --preset "$preset"
done

echo "== Checking with clang-tidy"
find extensibility host simulation tools zel_rt_range_formatter -name '*.cpp' ! -name '*_windows.cpp' -print0 |
  xargs -0 -P "$(nproc)" -n 4 clang-tidy -p build/clang --quiet 2> >(grep -v 'warnings generated' >&2)

scripts/fuzz.sh 30

for preset in "${presets[@]}"; do
  echo "== Testing ($preset)"
  ctest --preset "$preset"
  refuse_skips "$preset"
done
