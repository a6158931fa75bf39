#!/usr/bin/env bash
# libmodbus for Windows as a static library, built once on this machine from Debian's own source package of the very
# version that the Linux build uses, into a cache outside the tree. Prints the folder it stands in (the last line of
# standard output); the second call costs nothing.
#
#   LOADER_CACHE   where to keep it (~/.cache/parameter-loader)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/debian-source.sh

version=$(dpkg-query -W -f='${source:Version}' libmodbus-dev)
tool=x86_64-w64-mingw32
flags=(-O2 -DNDEBUG)
key=$(printf '%s\n' "$version" "$($tool-gcc-posix -dumpfullversion)" "${flags[@]}" "$(cat "$0")" |
  sha256sum | cut -c1-12)
cache=${LOADER_CACHE:-$HOME/.cache/parameter-loader}
folder=$cache/libmodbus-windows-${version//[^0-9a-z.]/_}-$key
if [ -f "$folder/built" ]; then
  echo "$folder"
  exit 0
fi

work=$(mktemp -d "${TMPDIR:-/tmp}/libmodbus-windows.XXXXXX")
trap 'rm -rf "$work"' EXIT
debian_source libmodbus "$version" "$work/libmodbus"

# Four files; its own configuration for Windows stands ready among its sources, so that its configure is not needed.
source=$work/libmodbus/src
release=${version%%[-+~]*}
IFS=. read -r major minor micro <<< "$release"
sed -e "s/@LIBMODBUS_VERSION_MAJOR@/$major/; s/@LIBMODBUS_VERSION_MINOR@/$minor/; s/@LIBMODBUS_VERSION_MICRO@/$micro/" \
    -e "s/@LIBMODBUS_VERSION@/$release/" "$source/modbus-version.h.in" > "$source/modbus-version.h"
cp "$source/win32/config.h.win32" "$work/config.h"
part=$folder.part$$
rm -rf "$part"
mkdir -p "$part/lib" "$part/include/modbus"
for file in modbus modbus-data modbus-rtu modbus-tcp; do
  $tool-gcc-posix "${flags[@]}" -I "$work" -I "$source" -c "$source/$file.c" -o "$work/$file.o" >&2
done
$tool-ar crs "$part/lib/libmodbus.a" "$work"/*.o
cp "$source"/modbus.h "$source"/modbus-version.h "$source"/modbus-rtu.h "$source"/modbus-tcp.h "$part/include/modbus/"
cp "$work/libmodbus/COPYING.LESSER" "$part/"
rm -rf "$folder"
mv "$part" "$folder"
touch "$folder/built"
echo "$folder"
