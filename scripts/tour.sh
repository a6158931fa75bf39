#!/usr/bin/env bash
# tour.sh PROGRAM FOLDER: runs the tour on a virtual display of its own, with a small window manager so that windows
# become active as on a desk. Pictures and the saved file land in FOLDER.
set -euo pipefail
program=$(realpath "$1")
mkdir -p "$2"
folder=$(realpath "$2")

export QT_QPA_PLATFORM=xcb LIBGL_ALWAYS_SOFTWARE=1
unset WAYLAND_DISPLAY
exec xvfb-run --auto-servernum --server-args="-screen 0 1600x1200x24" \
  bash -c 'openbox >/dev/null 2>&1 & "$0" "$1"; code=$?; kill %1 2>/dev/null; exit $code' "$program" "$folder"
