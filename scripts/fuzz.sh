#!/usr/bin/env bash
# Builds the fuzz targets with Clang and runs each of them.
# usage: fuzz.sh [SECONDS], half a minute each by default. New inputs go to build/fuzz/corpus, a
# finding to build/fuzz/findings; keep a finding as a file in fuzz/corpus/TARGET.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-30}

scripts/install-packages.sh --with-clang

echo "== Building (fuzz)"
cmake --preset fuzz --log-level=WARNING
cmake --build --preset fuzz

mkdir -p build/fuzz/findings
for target in fuzz_recorder_frames fuzz_ethernet_frames fuzz_host_failures fuzz_link_layer; do
  echo "== Fuzzing $target for $seconds s"
  mkdir -p "build/fuzz/corpus/$target"
  log=build/fuzz/$target.log
  if ! build/fuzz/tests/$target -max_total_time="$seconds" -max_len=16384 \
    -dict=fuzz/dictionary -artifact_prefix=build/fuzz/findings/ -print_final_stats=1 \
    "build/fuzz/corpus/$target" "fuzz/corpus/$target" >"$log" 2>&1; then
    tail -40 "$log"
    echo "A finding: see build/fuzz/findings and $log"
    exit 1
  fi
  awk '/number_of_executed_units/ {print $2, "runs without a finding"}' "$log"
done
