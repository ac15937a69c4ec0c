#!/usr/bin/env bash
# Installs what the build needs, on Debian. Does nothing when all of it is there.
# usage: install-packages.sh [--with-windows] [--with-clang] [--with-browser] [--with-test-tools]
set -euo pipefail

packages=(
  g++ cmake ninja-build git pkg-config ca-certificates
  libpcap-dev libcli11-dev libfmt-dev libhdf5-dev libdeflate-dev nlohmann-json3-dev libcpp-httplib-dev
  libgtest-dev googletest libbenchmark-dev libmatio-dev dpkg-dev file help2man
)
for option in "$@"; do
  case $option in
  --with-windows)
    packages+=(g++-mingw-w64-x86-64-posix wine64 libz-mingw-w64-dev zip flex bison)
    ;;
  --with-clang) packages+=(clang libclang-rt-dev clang-tidy llvm) ;;
  --with-browser)
    packages+=(chromium)
    # Whoever has npm from elsewhere has Node with it.
    command -v npm >/dev/null || packages+=(nodejs npm)
    ;;
  --with-test-tools)
    packages+=(bash-completion bzip2 lintian man-db parallel python3 tshark xz-utils zstd)
    ;;
  *) echo "install-packages.sh: unknown option $option" >&2 && exit 2 ;;
  esac
done

command -v apt-get >/dev/null || {
  echo "install-packages.sh: there is no apt-get; install what Debian calls ${packages[*]}" >&2
  exit 1
}

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' ||
    missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "== Installing ${missing[*]}"
as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "run this as root, or install sudo" >&2; exit 1; }
  as_root=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
