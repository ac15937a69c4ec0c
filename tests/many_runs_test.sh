#!/usr/bin/env bash
# A dozen captures and a broken one, decoded by four workers that are killed at several moments and
# resumed, against a plain loop.
# usage: many_runs_test.sh RTRANGE FOLDER
set -euo pipefail

rtrange=$1
folder=$2
fail() { echo "many_runs_test.sh: $*" >&2 && exit 1; }

# The command of docs/many-runs.md.
# shellcheck disable=SC2016
decode_all='parallel --will-cite --joblog runs.log --resume-failed --jobs 4 --termseq TERM,10000,KILL,25 \
  "$0" decode {} --output runs/{/.} --summary runs/{/.}.json --overwrite --quiet ::: ../captures/*.pcap'

# The live processes of a session. A process is described by its number, its name in parentheses,
# its state, its parent, its group and its session.
processes_of() {
  { cat /proc/[0-9]*/stat 2>/dev/null || true; } | # some end while they are listed
    sed -nE "s/^([0-9]+) \(.*\) [^Z] [0-9]+ [0-9]+ $1 .*/\1/p"
}

# Workers and all, and nothing of them may come to an end of its own.
kill_session() {
  local pids
  while pids=$(processes_of "$1") && [ -n "$pids" ]; do
    # shellcheck disable=SC2086
    kill -KILL $pids 2>/dev/null || true
  done
}

# What a user can take for a result must be one.
compare() { # files
  local file
  for file in "$@"; do
    cmp "$folder/loop/$file" "$folder/parallel/$file" || fail "$file differs from that of the loop"
  done
}
compare_results() {
  local run
  for run in "$folder"/parallel/runs/*; do
    run=$(basename "$run")
    case $run in
    *.partial-*) ;;
    *.json) compare "runs/$run" ;;
    *)
      (cd "$folder/loop/runs/$run" && ls) |
        diff - <(cd "$folder/parallel/runs/$run" && ls -I 'rtrange.partial-*') ||
        fail "$run is not whole"
      # shellcheck disable=SC2046
      compare $(cd "$folder/loop" && ls "runs/$run"/*.csv)
      ;;
    esac
  done
}

rm -rf "$folder"
mkdir -p "$folder"/captures "$folder"/loop/runs "$folder"/parallel/runs
# Of various lengths, so that the workers are at different points when they are killed.
for seed in {1..12}; do
  "$rtrange" simulate "$folder/captures/run$seed.pcap" --seed "$seed" --duration $((10 * seed)) --rate 100 >/dev/null
done
head -c 100000 "$folder/captures/run1.pcap" >"$folder/captures/broken.pcap"

cd "$folder/loop"
for capture in ../captures/*.pcap; do
  name=$(basename "${capture%.pcap}")
  code=0
  "$rtrange" decode "$capture" --output "runs/$name" --summary "runs/$name.json" --quiet \
    2>>errors.txt || code=$?
  [ $code -eq "$([ "$name" = broken ] && echo 1 || echo 0)" ] || fail "$name ended with $code"
done
[ "$(wc -l <errors.txt)" -eq 1 ] || fail "the loop is not quiet: $(cat errors.txt)"

cd "$folder/parallel"
has_ended_one() { [ -n "$(find runs -name '*.json' -newer started)" ]; }
kills=0
for _ in {1..20}; do
  touch started
  setsid bash -c "$decode_all" "$rtrange" >/dev/null 2>&1 &
  session=$!
  # One job has ended, others are at work.
  until has_ended_one || [ -z "$(jobs -r)" ]; do
    sleep 0.01
  done
  kill_session $session
  wait $session 2>/dev/null || true
  compare_results
  if [ -z "$(find runs -maxdepth 1 -name '*.partial-*')" ]; then
    rm -rf runs runs.log # the kill came too late
    mkdir runs
  elif [ $((++kills)) -eq 3 ]; then
    break
  fi
done
[ $kills -gt 0 ] || fail "no job was killed in the middle"

for attempt in 1 2; do
  code=0
  bash -c "$decode_all" "$rtrange" >output.txt 2>&1 || code=$?
  [ $code -eq 1 ] || fail "attempt $attempt: $code jobs failed instead of 1: $(cat output.txt)"
done
grep -q "broken.pcap' is broken after frame" output.txt || fail "$(cat output.txt)"
[ "$(wc -l <output.txt)" -eq 1 ] || fail "more than one line: $(cat output.txt)"
find runs -name '*.partial-*' -prune -exec rm -r {} +
diff <(ls runs) <(ls ../loop/runs) || fail "there are not the same results"
compare_results
grep -q '"outcome": "incomplete"' runs/broken.json || fail "broken.pcap is called whole"
rm -r "$folder"
