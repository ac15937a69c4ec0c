#!/usr/bin/env bash
# Sets everything up, builds and runs all tests: the DLL under Wine, then natively under
# AddressSanitizer and UndefinedBehaviorSanitizer, then natively as released.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh --with-windows

for preset in windows sanitize linux; do
  echo "== Building ($preset)"
  cmake --preset "$preset" --log-level=WARNING
  cmake --build --preset "$preset"
done
for preset in windows sanitize linux; do
  echo "== Testing ($preset)"
  ctest --preset "$preset"
done
