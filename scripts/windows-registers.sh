#!/usr/bin/env bash
# Proves that recorder-sim for Windows, run by Wine, is the same recorder as the one for Linux: paramtool reads both and
# writes to both, of every generation, and every byte that passes on the line, the files that were read, all registers
# and the stored memory have to be the same.
#
#   scripts/windows-registers.sh LINUX_BIN WINDOWS_BIN   the folders of the programs (build/release/bin, build/windows/bin)
set -euo pipefail
source "$(dirname "$0")/both-systems.sh" registers "$1" "$2"

# start FOLDER PROGRAM... -- starts a recorder whose files go to FOLDER, and leaves its port in `port`.
start() {
  local folder=$1
  shift
  mkdir -p "$folder"
  mkfifo "$folder/told"
  "$@" --tcp 127.0.0.1:0 --pattern A55A --dump "$folder/registers" --save "$folder/memory" --trace-frames \
    > "$folder/told" 2> "$folder/frames" &
  running+=($!)
  read -r line < "$folder/told"
  port=${line##*:}
  port=${port//[^0-9]/}
}

# What paramtool tells is of interest when it fails; that it names what an old firmware does not have is no failure.
tool() {
  local code=0
  "$linux/paramtool" "$@" > "$work/told" 2>&1 || code=$?
  if [ $code -gt 1 ]; then
    cat "$work/told" >&2
    exit 1
  fi
}

# What a client's port is, differs by chance.
frames() { sed -E 's/^([0-9]+) [0-9.]+:[0-9]+: /\1 /' "$1"; }

status=0
same() {
  if ! cmp -s "$1" "$2" || [ ! -s "$1" ]; then
    echo "$tag: $3 differs"
    status=1
  fi
}

for each in KOV:V05A KOV:V13A KOV:V17A KOV:V26A KOV:V39A KOV:V40A RUG:V09W RUG:V12W; do
  model=${each%:*} tag=${each#*:}
  for system in linux windows; do
    folder=$work/$tag-$system
    if [ $system = linux ]; then
      start "$folder" "$linux/recorder-sim" --model "$model" --firmware "$tag"
    else
      start "$folder" wine "$windows/recorder-sim.exe" --model "$model" --firmware "$tag"
    fi
    device=tcp:127.0.0.1:$port
    tool read "$device" -o "$folder/read.$model"
    tool set "$folder/read.$model" C00TAG=炉の温度 C02COLR=青 -o "$folder/changed.$model"
    tool write "$folder/changed.$model" "$device" --yes --store --no-backup
    stop
    frames "$folder/frames" > "$folder/line"
  done
  same "$work/$tag-linux/read.$model" "$work/$tag-windows/read.$model" "the file that was read"
  same "$work/$tag-linux/line" "$work/$tag-windows/line" "what passed on the line"
  same "$work/$tag-linux/registers" "$work/$tag-windows/registers" "a register after the write"
  same "$work/$tag-linux/memory" "$work/$tag-windows/memory" "the stored memory"
  cmp -s "$work/$tag-linux/read.$model" "$work/$tag-linux/changed.$model" && { echo "$tag: nothing was changed"; status=1; }
  echo "$tag: $(wc -l < "$work/$tag-windows/line") frames, $(wc -l < "$work/$tag-windows/registers") registers"
done
[ $status -eq 0 ] && echo "the same recorder on both systems"
exit $status
