#!/usr/bin/env bash
# Compares Wireshark's dissector with the tables of rtrange. Skipped, with exit code 77, where tshark or Python is not
# installed.
# usage: run.sh RTRANGE DISSECTOR CAPTURE...
set -euo pipefail

skip() {
  echo "SKIPPED: there is no $1; scripts/install-packages.sh --with-test-tools installs it"
  exit 77
}
command -v python3 >/dev/null || skip Python
tshark=$(command -v tshark) || skip tshark

PYTHONDONTWRITEBYTECODE=1 exec python3 "$(dirname "$0")/dissector_test.py" "$1" "$2" "$tshark" "${@:3}"
