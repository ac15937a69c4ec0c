#!/usr/bin/env bash
# Compares the throughput of `rtrange` with tshark extracting four fields from the same five-minute capture.
# Needs tshark (apt-get install tshark).
set -euo pipefail
cd "$(dirname "$0")/.."
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
rtrange=build/linux/bin/rtrange
capture=$folder/run.pcap

"$rtrange" simulate "$capture" --duration 300 --targets 2 >"$folder/simulated"
frames=$(awk '/frames in/ {print $1}' "$folder/simulated")

measure() { # name, processors, command: appends the wall time to the list of that name
  local start=$EPOCHREALTIME
  taskset -c "$2" "${@:3}" >/dev/null 2>"$folder/errors" || {
    echo "$1 failed:" >&2
    cat "$folder/errors" >&2
    exit 1
  }
  awk -v name="$1" -v from="$start" -v to="$EPOCHREALTIME" 'BEGIN {print name "\t" to - from}' >>"$folder/times"
  # Replacing these results would also measure how the file system deletes them.
  rm -rf "$folder/run" "$folder/run.h5" "$folder/run.html"
}

# Alternately, because the speed of a machine may change within a minute.
for _ in 1 2 3 4 5; do
  measure "tshark, one core" 0 tshark -r "$capture" -T fields -e frame.time_epoch -e ip.src -e udp.dstport -e udp.length
  measure "decode to CSV, one core" 0 "$rtrange" decode "$capture" -o "$folder/run"
  measure "decode to CSV, two cores" 0,1 "$rtrange" decode "$capture" -o "$folder/run"
  measure "decode to HDF5, one core" 0 "$rtrange" decode "$capture" --as hdf5 -o "$folder/run.h5"
  measure "decode to HDF5, two cores" 0,1 "$rtrange" decode "$capture" --as hdf5 -o "$folder/run.h5"
  measure "report, one core" 0 "$rtrange" report "$capture" -o "$folder/run.html"
done

echo "$frames frames, best of five runs:"
sort -t "$(printf '\t')" -k 2n "$folder/times" | awk -F '\t' -v frames="$frames" '
  !($1 in best) {best[$1] = $2; names[++count] = $1}
  END {
    for (i = count; i > 0; --i)
      printf "%-26s %6.2f s %9.0f frames/s %6.1f times tshark\n", names[i], best[names[i]], frames / best[names[i]],
        best["tshark, one core"] / best[names[i]]
  }'
