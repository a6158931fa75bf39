#!/usr/bin/env bash
# wine-on-display.sh PROGRAM.exe [ARGUMENT...]: runs a program for Windows on a display of its own, in a Wine that was begun
# there: one that was begun without a display shows no window of its programs. Ends with the program's status.
set -euo pipefail
folder=$(cd "$(dirname "$0")" && pwd)
source "$folder/wine.sh"
export -f end_wine
"$folder/on-display.sh" bash -c 'wine wineboot --init >/dev/null 2>&1; status=0; wine "$@" || status=$?; end_wine; exit $status' wine "$@"
