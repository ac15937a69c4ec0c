#!/usr/bin/env bash
# Sets everything up, builds, and decodes a capture into tables in the folder example/.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages.sh

echo "== Building"
cmake --preset linux --log-level=WARNING
cmake --build --preset linux

echo "== Decoding an example"
build/linux/bin/rtrange decode captures/following.pcap --output example
