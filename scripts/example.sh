#!/usr/bin/env bash
# Sets everything up, builds, simulates a run, decodes it into tables and draws it, in the folder example/.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh

echo "== Building"
cmake --preset linux --log-level=WARNING
cmake --build --preset linux

echo "== Simulating a run"
mkdir -p example
build/linux/bin/rtrange simulate example/run.pcap --duration 40 --targets 2

echo "== Decoding it"
build/linux/bin/rtrange decode example/run.pcap --output example

echo "== Drawing it"
build/linux/bin/rtrange report example/run.pcap --output example/report.html
