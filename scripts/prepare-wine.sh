#!/usr/bin/env bash
# Makes Wine's folder, build/windows/wine, and proves that Wine runs a program in it. A folder in which
# it does not, as an interrupted set-up leaves it, is made anew. Then keeps Wine's server running.
set -euo pipefail
cd "$(dirname "$0")/.."

export WINEPREFIX=$PWD/build/windows/wine
PATH=$PATH:/usr/lib/wine
server=$(command -v wineserver64 || command -v wineserver) || {
  echo "prepare-wine.sh: there is no Wine; scripts/install-packages.sh --with-windows installs it" >&2
  exit 1
}
log=build/windows/wine.log
mkdir -p build/windows
# One at a time: two set-ups of one folder spoil it.
exec 9>build/windows/wine.lock
flock 9

# By default, Debian's server ends with the last program. A program that starts while the server ends can fail, and one
# that starts later has to wait for a new server. With this option, the server ends after ten minutes without a program.
keep_server() {
  "$server" -p600 >/dev/null 2>&1 9>&- || true # one is running already
}

# Output goes to a file, because Wine leaves processes behind that would keep a pipe open.
runs_programs() {
  keep_server
  timeout 120 scripts/wine.sh cmd /c 'echo a program ran' >"$log" 2>&1 9>&- &&
    grep -q 'a program ran' "$log"
}

make_folder() {
  "$server" -k >/dev/null 2>&1 || true
  rm -rf "$WINEPREFIX"
  # The set-up has ended when its server has: only then are all files in place.
  timeout 300 scripts/wine.sh wineboot --init >"$log" 2>&1 9>&- || true
  timeout 300 "$server" -w || true
}

complete=$WINEPREFIX/complete
[ -f "$complete" ] && runs_programs && exit 0
for _ in 1 2 3; do
  echo "== Setting up Wine"
  make_folder
  if runs_programs; then
    touch "$complete"
    exit 0
  fi
done
echo "prepare-wine.sh: Wine runs no program; build/windows/wine.log tells more. Once the reason is" \
  "gone, run scripts/prepare-wine.sh again." >&2
exit 1
