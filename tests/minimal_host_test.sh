#!/usr/bin/env bash
# Runs the example of a host on the capture that ships with the project.
# usage: minimal_host_test.sh PLUGIN CAPTURE [EMULATOR] MINIMAL_HOST
set -euo pipefail
plugin=$1
capture=$2
host=("${@:3}")
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
failed=0

expect() { # what, expected text, actual text
  if [ "$2" != "$3" ]; then
    printf 'FAILED: %s\nexpected:\n%s\nactual:\n%s\n' "$1" "$2" "$3"
    failed=1
  fi
}

run() { # arguments of the host; leaves exit_code, output, log
  exit_code=0
  "${host[@]}" "$@" >"$folder/output" 2>"$folder/log" || exit_code=$?
  output=$(tr -d '\r' <"$folder/output")
  log=$(tr -d '\r' <"$folder/log")
}

run "$plugin" "$capture"
expect "exit code" 0 $exit_code
expect "type of the library" zel-library-type=formatter "$(grep zel-library-type <<<"$output")"
expect "formatters" $'formatter zel.rtrange\nformatter zel.eth.rtrange' \
  "$(grep '^formatter' <<<"$output")"
# 148 NCOM packets, the wrapped ones included, make four batches of thirty samples. The thirtieth,
# sixtieth and so on of them all come from target 1.
expect "packages by tag" $'00100000 50\n00200000 134\n00300000 219\n00400000 99' \
  "$(awk '/^00/ {++count[$1]} END {for (tag in count) print tag, count[tag]}' <<<"$output" | sort)"
# Read off the bytes of the capture's first and last frames.
expect "first values" $'00100000 velocity north 17.8761\n00200000 range 18.8160' \
  "$(grep '^00' <<<"$output" | head -n 2)"
expect "last velocity of the hunter" '00100000 velocity north 18.6411' \
  "$(grep '^00100000' <<<"$output" | tail -n 1)"
expect "last range" '00200000 range 40.6120' "$(grep '^00200000' <<<"$output" | tail -n 1)"
expect "log" "\
log 400: Successfully identified IP for hunter(195.0.0.10).
log 400: Successfully identified IP for target 1 (195.0.0.21).
log 400: Successfully identified IP for target 2 (195.0.0.22).
log 200: RT-Range: Received an Ethernet frame which does not have IPv4 data. Discarding the package.
log 200: RT-Range: Not NCOM or RCOM port data." \
  "$(grep '^log' <<<"$log" | sed 's/ Reference timestamp.*//')"

expect_refusal() { # last line on standard error, arguments
  run "${@:2}"
  expect "exit code of '$1'" 1 $exit_code
  expect "refusal" "minimal_host: cannot $1" "$(tail -n 1 <<<"$log")"
}
head -c 2000 "$capture" >"$folder/cut.pcap"
# The same file with the versions 1.N and 0.N7 in its metadata, in place of 0.N.
version=$(grep -oE 'zel-sdk-version=0\.[0-9]+\.' <<<"$output")
other=$folder/other.${plugin##*.}
for changed in "${version/=0./=1.}" "${version%.}7"; do
  LC_ALL=C sed "s/$version/$changed/" "$plugin" >"$other"
  expect_refusal "use a plug-in with another interface version: no reason" "$other" "$capture"
done
expect_refusal "start without PLUGIN and CAPTURE: no reason" "$plugin"
expect_refusal "open both files: no reason" "$folder/missing.so" "$capture"
expect_refusal "open both files: no reason" "$plugin" "$0"
expect_refusal "read a frame: no reason" "$plugin" "$folder/cut.pcap"
exit $failed
