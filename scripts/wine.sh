#!/usr/bin/env bash
# Runs a Windows program with Wine, in the folder that prepare-wine.sh makes: scripts/wine.sh PROGRAM [ARGUMENT...]
set -euo pipefail

export WINEDEBUG=-all WINEPREFIX
WINEPREFIX=$(dirname "$(dirname "$(realpath "$0")")")/build/windows/wine
PATH=$PATH:/usr/lib/wine
wine=$(command -v wine64 || command -v wine) || {
  echo "wine.sh: there is no Wine; scripts/install-packages.sh --with-windows installs it" >&2
  exit 1
}
# Debian's Wine needs a fixed address. If the system places the heap at random, it covers this address in one of several
# thousand starts, and Wine fails. Containers may forbid switching off random placement.
fixed_addresses=()
setarch -R true 2>/dev/null && fixed_addresses=(setarch -R)
exec "${fixed_addresses[@]}" "$wine" "$@"
