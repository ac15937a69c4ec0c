#!/usr/bin/env bash
# Builds the libraries of rtrange.exe with MinGW-w64, from the distribution's source packages, into
# build/windows-libraries. Does nothing when all of them are there.
set -euo pipefail
cd "$(dirname "$0")/.."

prefix=$PWD/build/windows-libraries
toolchain=$PWD/cmake/mingw-w64.cmake
mkdir -p "$prefix"/{include,lib,licenses,share/cmake,versions}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# apt with the sources of the machine's own package sites, and the machine's settings left alone.
apt() {
  apt-get -qq -o Dir::Etc::SourceList="$work/apt/sources.list" -o Dir::Etc::SourceParts="$work/apt/parts" \
    -o Dir::State::Lists="$work/apt/lists" -o Dir::Cache="$work/apt/cache" -o APT::Sandbox::User= "$@"
}

look_up_sources() {
  mkdir -p "$work"/apt/{parts,lists/partial,cache/archives/partial}
  : >"$work/apt/sources.list"
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -f "$file" ] && sed -n 's/^deb /deb-src /p' "$file" >>"$work/apt/sources.list"
  done
  for file in /etc/apt/sources.list.d/*.sources; do
    [ -f "$file" ] && sed 's/^Types:.*/Types: deb-src/' "$file" >"$work/apt/parts/${file##*/}"
  done
  apt update
}

unpack() { # package: into the folder source, of which apt names the only one inside
  [ -d "$work/apt" ] || look_up_sources
  mkdir "$work/$1"
  (cd "$work/$1" && apt source "$1" && mv -- */ source) >"$work/$1.log" 2>&1
}

build() { # package, target, options of cmake
  # From inside the build folder, where HDF5 looks for what its trial programs wrote.
  mkdir "$work/$1/build"
  (cd "$work/$1/build" &&
    cmake -G Ninja -Wno-dev --toolchain "$toolchain" -DCMAKE_BUILD_TYPE=Release \
      -DCMAKE_C_FLAGS="-ffile-prefix-map=$work=." -DCMAKE_CXX_FLAGS="-ffile-prefix-map=$work=." \
      -DCMAKE_INSTALL_PREFIX="$prefix" "${@:3}" ../source &&
    cmake --build . --target "$2" -j "$(nproc)")
}

fmtlib() {
  build fmtlib install -DFMT_TEST=OFF -DFMT_DOC=OFF
}

# Without a capture driver: it reads and writes files.
libpcap() {
  build libpcap pcap_static -DPCAP_TYPE=null -DDISABLE_DBUS=ON -DDISABLE_DPDK=ON -DDISABLE_RDMA=ON &&
    cp -r "$work"/libpcap/source/{pcap,pcap.h} "$prefix/include/" &&
    cp "$work/libpcap/build/libpcap.a" "$prefix/lib/"
}

hdf5() {
  # HDF5 1.10 runs programs while it is built.
  if [ -f "$work/hdf5/source/src/H5detect.c" ]; then
    scripts/prepare-wine.sh || return
  fi
  # MinGW has unistd.h, but not this header that the library takes for granted with it.
  sed -i '/#include <sys\/wait.h>/d' "$work/hdf5/source/src/H5private.h"
  # MinGW's vasprintf can be linked, but is not declared to the library. The embedded information has the day on
  # which the library was built.
  build hdf5 install -DBUILD_SHARED_LIBS=OFF -DBUILD_TESTING=OFF -DHDF5_BUILD_TOOLS=OFF \
    -DHDF5_BUILD_UTILS=OFF -DHDF5_BUILD_EXAMPLES=OFF -DHDF5_BUILD_HL_LIB=OFF -DHDF5_BUILD_CPP_LIB=OFF \
    -DHDF5_ENABLE_SZIP_SUPPORT=OFF -DHDF5_ENABLE_Z_LIB_SUPPORT=ON \
    -DH5_HAVE_VASPRINTF=OFF -DHDF5_ENABLE_EMBEDDED_LIBINFO=OFF \
    -DZLIB_LIBRARY=/usr/x86_64-w64-mingw32/lib/libz.a
}

# A header, in which Windows needs no library of its own.
cpp-httplib() {
  cp "$work/cpp-httplib/source/httplib.h" "$prefix/include/"
}

# Without its own build files, which differ between releases.
libdeflate() {
  (cd "$work/libdeflate/source" &&
    x86_64-w64-mingw32-gcc-posix -O2 -I. -c lib/*.c lib/x86/*.c &&
    x86_64-w64-mingw32-ar rcsD "$prefix/lib/libdeflate.a" ./*.o &&
    cp libdeflate.h "$prefix/include/")
}

for package in fmtlib libpcap hdf5 cpp-httplib libdeflate; do
  [ -f "$prefix/versions/$package" ] && continue
  echo "== Building $package for Windows"
  if ! { unpack $package && $package >>"$work/$package.log" 2>&1; }; then
    tail -40 "$work/$package.log"
    echo "build-windows-libraries.sh: $package cannot be built; once the reason above is gone, run" \
      "scripts/build-windows-libraries.sh again" >&2
    exit 1
  fi
  cp "$work/$package/source/debian/copyright" "$prefix/licenses/$package.txt"
  # Last, since it tells that the library is complete.
  dpkg-parsechangelog -l "$work/$package/source/debian/changelog" -S Version >"$prefix/versions/$package"
done

if [ ! -f "$prefix/versions/nlohmann-json3-dev" ]; then
  cp -r /usr/include/{CLI,nlohmann} "$prefix/include/"
  cp -r /usr/share/cmake/{CLI11,nlohmann_json} "$prefix/share/cmake/"
  cp /usr/share/doc/libz-mingw-w64-dev/copyright "$prefix/licenses/zlib.txt"
  cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$prefix/licenses/mingw-w64.txt"
  cp /usr/share/doc/gcc-mingw-w64-base/copyright "$prefix/licenses/gcc.txt"
  cp /usr/share/doc/libcli11-dev/copyright "$prefix/licenses/CLI11.txt"
  cp /usr/share/doc/nlohmann-json3-dev/copyright "$prefix/licenses/nlohmann-json.txt"
  for package in libcli11-dev nlohmann-json3-dev; do
    dpkg-query -W -f '${Version}\n' $package >"$prefix/versions/$package"
  done
fi
