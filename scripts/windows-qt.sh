#!/usr/bin/env bash
# Qt's base for Windows, built once on this machine from Debian's own source package of the very version that the Linux
# build uses, into a cache outside the tree. Prints the folder it stands in (the last line of standard output); the
# second call costs nothing.
#
#   LOADER_CACHE   where to keep it (~/.cache/parameter-loader)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/debian-source.sh

version=$(dpkg-query -W -f='${source:Version}' qt6-base-dev)
options=(
  -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF
  # No part of the program, and each of them a library that Windows lacks here.
  -DFEATURE_sql=OFF -DFEATURE_dbus=OFF -DFEATURE_printsupport=OFF -DFEATURE_xml=OFF
  -DFEATURE_concurrent=OFF -DINPUT_opengl=no -DFEATURE_vulkan=OFF -DFEATURE_pkg_config=OFF
  # wintab.h is not among the compiler's headers.
  -DFEATURE_tabletevent=OFF
)
compiler=$(x86_64-w64-mingw32-g++-posix -dumpfullversion)
key=$(printf '%s\n' "$version" "$compiler" "${options[@]}" "$(cat cmake/WindowsToolchain.cmake)" | sha256sum | cut -c1-12)
cache=${LOADER_CACHE:-$HOME/.cache/parameter-loader}
folder=$cache/qt-windows-${version//[^0-9a-z.]/_}-$key
if [ -f "$folder/built" ]; then
  echo "$folder"
  exit 0
fi

# A build that was broken off goes on where it stood.
work=$folder.work
mkdir -p "$work"
if [ ! -d "$work/qt6-base" ]; then
  debian_source qt6-base "$version" "$work/qt6-base"
fi

host=/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)/cmake
export CCACHE_BASEDIR="$work" CCACHE_NOHASHDIR=1
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S "$work/qt6-base" -B "$work/build" -G Ninja \
  -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/WindowsToolchain.cmake" -DCMAKE_INSTALL_PREFIX="$folder.part" \
  -DQT_HOST_PATH=/usr -DQt6HostInfo_DIR="$host/Qt6HostInfo" -DQT_HOST_PATH_CMAKE_DIR="$host" \
  "${options[@]}" "${launcher[@]}" >&2
rm -rf "$folder.part"
cmake --build "$work/build" >&2
cmake --install "$work/build" >&2
# What the builds look for names the folder it was installed to, so that it is moved before it counts as built.
grep -rlF "$folder.part" "$folder.part" --include='*.cmake' --include='*.conf' --include='*.pri' --include='*.json' |
  xargs -r sed -i "s|$folder.part|$folder|g"
rm -rf "$folder"
mv "$folder.part" "$folder"
touch "$folder/built"
rm -rf "$work"
echo "$folder"
