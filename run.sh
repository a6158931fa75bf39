#!/usr/bin/env bash
# Sets the machine up, builds, and starts the parameter loader beside two simulated recorders:
#   a KOV at 127.0.0.1 and a RUG at 127.0.0.2 (port 502).
# The loader is set to reach the recorder of its model; the recorders end with the window.
# Without a display it runs the tour instead: the real program on a virtual display (see build/tour/).
set -euo pipefail
cd "$(dirname "$0")"

# What one clone has compiled serves every other.
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1

./scripts/setup.sh
cmake --preset release >/dev/null
# What is needed to run; the tests are built by test.sh.
cmake --build --preset release --target parameter-loader recorder-sim loader-ini recorder-tour

bin=build/release/bin
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "run: there is no display here, so here is the tour instead."
  exec ./scripts/tour.sh "$bin/recorder-tour" build/tour
fi

recorders=()
log=$(mktemp -d)
end_recorders() {
  for recorder in "${recorders[@]}"; do
    kill "$recorder" 2>/dev/null || true
  done
  rm -rf "$log"
}
trap end_recorders EXIT

# start_recorder NAME ARGS...: starts a recorder and waits until it listens; fails when it ends instead.
start_recorder() {
  local name=$1
  shift
  mkfifo "$log/$name.out"
  "$bin/recorder-sim" "$@" >"$log/$name.out" 2>"$log/$name.err" &
  recorders+=($!)
  # The pipe stays open: a recorder that prints later must not meet a closed one.
  local pipe line=
  exec {pipe}<"$log/$name.out"
  read -r line <&"$pipe" || true
  if [ -z "$line" ]; then
    cat "$log/$name.err" >&2
    return 1
  fi
  echo "run: recorder $name: $line"
}

# set_link LINK IP: the communication settings of the loader; everything else of its file stays.
set_link() {
  "$bin/loader-ini" "$bin/LOADER.INI" COMMUNICATION "$1" COM 0 STNO 1 IP "$2"
}

model=$("$bin/loader-ini" "$bin/LOADER.INI" TYPE)
address=127.0.0.1
[ "$model" = 0 ] || address=127.0.0.2
if start_recorder KOV --model KOV --tcp 127.0.0.1:502 && start_recorder RUG --model RUG --tcp 127.0.0.2:502; then
  set_link 1 "$address"
else
  name=KOV
  [ "$model" = 0 ] || name=RUG
  echo "run: port 502 may not be bound here, so the $name recorder is at COM1 (a pseudo-terminal)."
  start_recorder COM1 --model "$name" --rtu "$bin/COM1"
  set_link 2 "$address"
fi
"$bin/parameter-loader"
