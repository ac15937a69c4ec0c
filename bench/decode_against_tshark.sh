#!/usr/bin/env bash
# Compares the throughput of `rtrange decode` to CSV with tshark extracting four fields from the same
# five-minute capture, each on one core. Needs tshark (apt-get install tshark).
set -euo pipefail
cd "$(dirname "$0")/.."
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
rtrange=build/linux/bin/rtrange

"$rtrange" simulate "$folder/run.pcap" --duration 300 --targets 2 >"$folder/simulated"
frames=$(awk '/frames in/ {print $1}' "$folder/simulated")

seconds_of() { # best of three runs
  for _ in 1 2 3; do
    local start=$EPOCHREALTIME
    taskset -c 0 "$@" >/dev/null 2>&1
    awk -v from="$start" -v to="$EPOCHREALTIME" 'BEGIN {print to - from}'
  done | sort -n | head -1
}

decoding=$(seconds_of "$rtrange" decode "$folder/run.pcap" --output "$folder/decoded" --overwrite)
dissecting=$(seconds_of tshark -r "$folder/run.pcap" -T fields \
  -e frame.time_epoch -e ip.src -e udp.dstport -e udp.length)
awk -v n="$frames" -v a="$decoding" -v b="$dissecting" 'BEGIN {
  printf "rtrange decode  %8.0f frames/s\ntshark          %8.0f frames/s\nratio           %8.1f\n",
    n / a, n / b, b / a }'
