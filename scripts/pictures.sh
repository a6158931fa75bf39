#!/usr/bin/env bash
# Makes the pictures of the guides and the README anew: the real program on a virtual display, at its first size, in
# the light palette, in the font that it is laid out for.
#   scripts/pictures.sh              into docs/images; look at each of them before it is committed
#   scripts/pictures.sh --try BIN    into build/pictures with the programs in BIN; fails when docs/images holds another
#                                    set of names
set -euo pipefail
cd "$(dirname "$0")/.."

bin=build/release/bin
folder=docs/images
if [ "${1:-}" = --try ]; then
  bin=$2
  folder=build/pictures
else
  cmake --preset release >/dev/null
  cmake --build --preset release --target recorder-pictures
fi
rm -rf "$folder"
mkdir -p "$folder"
# Whatever the desk is set to, the pictures are those of a plain one.
unset QT_SCALE_FACTOR QT_FONT_DPI QT_STYLE_OVERRIDE QT_QPA_PLATFORMTHEME XDG_CURRENT_DESKTOP
DISPLAY_SIZE=1920x1440 scripts/on-display.sh "$bin/recorder-pictures" "$folder"

if [ "$folder" != docs/images ] && ! diff <(ls docs/images) <(ls "$folder"); then
  echo "pictures: docs/images (<) is not what is made (>): run scripts/pictures.sh" >&2
  exit 1
fi
