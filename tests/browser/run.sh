#!/usr/bin/env bash
# Opens the pages of rtrange in Chromium and checks what a user would see and do. Skipped, with exit code 77,
# where Chromium, Node or its modules are not installed.
# usage: run.sh RTRANGE SCREENSHOTS
set -euo pipefail
rtrange=$1
screenshots=$2
cd "$(dirname "$0")"

skip() {
  echo "SKIPPED: $1; scripts/install-packages.sh --with-browser and 'npm ci' in tests/browser install it"
  exit 77
}
command -v chromium >/dev/null || skip "there is no Chromium"
command -v node >/dev/null || skip "there is no Node"
[ -d node_modules/playwright-core ] || skip "there is no playwright-core"

RTRANGE=$rtrange SCREENSHOTS=$screenshots exec node --test --test-concurrency=1 report.test.js key_figures.test.js watch.test.js
