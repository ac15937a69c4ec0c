#!/usr/bin/env bash
# Sets everything up, builds and runs all tests: the DLL and the Windows package under Wine; natively with
# ThreadSanitizer, with AddressSanitizer and UndefinedBehaviorSanitizer, with Clang, and as released.
# Opens reports in Chromium, checks the sources with clang-tidy, and fuzzes for half a minute per target.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh --with-windows --with-clang --with-browser
scripts/build-windows-libraries.sh
npm ci --prefix tests/browser

presets=(windows threads sanitize clang linux)
for preset in "${presets[@]}"; do
  echo "== Building ($preset)"
  cmake --preset "$preset" --log-level=WARNING
  cmake --build --preset "$preset"
done

echo "== Checking with clang-tidy"
find extensibility host simulation tools zel_rt_range_formatter -name '*.cpp' ! -name '*_windows.cpp' -print0 |
  xargs -0 -P "$(nproc)" -n 4 clang-tidy -p build/clang --quiet 2> >(grep -v 'warnings generated' >&2)

scripts/fuzz.sh 30

for preset in "${presets[@]}"; do
  echo "== Testing ($preset)"
  ctest --preset "$preset"
done
