#!/usr/bin/env bash
# Builds the fuzz targets with Clang and runs them; fuzz/README.md describes them.
# usage: fuzz.sh [SECONDS [TARGET...]], by default half a minute each, and all of them. New inputs go to
# build/fuzz/corpus, a finding to build/fuzz/findings.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-30}
targets=("${@:2}")
if [ ${#targets[@]} -eq 0 ]; then
  targets=(fuzz/corpus/*)
fi
targets=("${targets[@]##*/}")
for target in "${targets[@]}"; do
  if [ -z "$target" ] || [ ! -d "fuzz/corpus/$target" ]; then
    echo "fuzz.sh: there is no target '$target'; give the name of a folder in fuzz/corpus" >&2
    exit 2
  fi
done

options_for() { # target
  case $1 in
  fuzz_times) echo -max_len=256 ;;
  fuzz_selection) echo -max_len=512 ;;
  fuzz_watch_request) echo -max_len=2048 -dict=fuzz/requests.dictionary ;;
  fuzz_link_layer) echo -max_len=512 -dict=fuzz/frames.dictionary ;;
  *) # Enough for a run of all units: smaller inputs are faster, but reach less in the same time.
    echo -max_len=16384 -dict=fuzz/frames.dictionary
    ;;
  esac
}

scripts/install-packages.sh --with-clang

echo "== Building (fuzz)"
cmake --preset fuzz --log-level=WARNING
cmake --build --preset fuzz

mkdir -p build/fuzz/findings
for target in "${targets[@]}"; do
  echo "== Fuzzing $target for $seconds s"
  mkdir -p "build/fuzz/corpus/$target"
  log=build/fuzz/$target.log
  read -r -a options < <(options_for "$target")
  if ! "build/fuzz/tests/$target" "${options[@]}" -max_total_time="$seconds" \
    -artifact_prefix=build/fuzz/findings/ -print_final_stats=1 \
    "build/fuzz/corpus/$target" "fuzz/corpus/$target" >"$log" 2>&1; then
    tail -40 "$log"
    echo "A finding: see build/fuzz/findings and $log"
    exit 1
  fi
  awk '/number_of_executed_units/ {print $2, "runs without a finding"}' "$log"
done
