#!/usr/bin/env bash
# tour.sh PROGRAM FOLDER: runs the tour on a virtual display of its own. Pictures and the saved file land in FOLDER.
set -euo pipefail
program=$(realpath "$1")
mkdir -p "$2"
folder=$(realpath "$2")

exec "$(dirname "$0")/on-display.sh" "$program" "$folder"
