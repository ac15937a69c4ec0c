#!/usr/bin/env bash
# Builds the plug-in twice, from one commit in two folders and two time zones, and compares the files.
# usage: reproducible_test.sh SOURCE_FOLDER PLUGIN_NAME [OPTION_OF_CMAKE...]
set -euo pipefail
source=$1
plugin=$2
options=("${@:3}")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
# Each build compiles, and the date comes from the commit.
export CCACHE_DISABLE=1
unset SOURCE_DATE_EPOCH

first="$scratch/first"
second="$scratch/a second folder/with a longer name"
mkdir -p "$first" "$second"
# As they stand, committed or not.
git -C "$source" ls-files -z --cached --others --exclude-standard |
  (cd "$source" && xargs -0 sh -c 'for file; do [ ! -f "$file" ] || printf "%s\0" "$file"; done' sh |
    tar -cf - --null --files-from=-) | tar -xf - -C "$first"
git -C "$first" init -q
git -C "$first" add .
GIT_COMMITTER_DATE='2025-03-04T23:30:00-0500' git -C "$first" \
  -c user.name=test -c user.email=test@example.org commit -q -m 'Sources'
git clone -q "$first" "$second"

build() { # source folder, build folder, time zone
  TZ=$3 cmake -S "$1" -B "$2" -G Ninja "${options[@]}" --log-level=WARNING >"$scratch/log" 2>&1 &&
    TZ=$3 cmake --build "$2" --target zel_rt_range_formatter >>"$scratch/log" 2>&1 ||
    { cat "$scratch/log"; exit 1; }
}
build "$first" "$first/build" Pacific/Kiritimati
build "$second" "$scratch/elsewhere" Pacific/Pago_Pago

cmp "$first/build/bin/$plugin" "$scratch/elsewhere/bin/$plugin"
strings -a "$first/build/bin/$plugin" >"$scratch/strings"
# In UTC, in the form of __DATE__.
grep -qx 'build-date=Mar  5 2025' "$scratch/strings" || {
  echo "FAILED: the build date is not the commit's: $(grep '^build-date=' "$scratch/strings")"
  exit 1
}
if grep -F "$scratch" "$scratch/strings"; then
  echo "FAILED: the plug-in contains the folder that it was built in"
  exit 1
fi
