#!/usr/bin/env bash
# Runs every fuzz target of a build for some seconds, two at a time, from a copy of its corpus:
#   tests/fuzz/run.sh BUILD_DIR [SECONDS]      (10 seconds when nothing is said)
# Prints a line for each target. A target that fails is shown with the end of its log; the input that it
# failed on is in BUILD_DIR/crashes, and the target run with that file alone shows the failure again.
set -euo pipefail

if [ $# -lt 1 ] || ! compgen -G "$1/bin/fuzz_*" >/dev/null; then
  echo "usage: tests/fuzz/run.sh BUILD_DIR [SECONDS], after cmake --build of the preset fuzz" >&2
  exit 2
fi
build=$(cd "$1" && pwd)
seconds=${2:-10}
corpora=$(cd "$(dirname "$0")/corpus" && pwd)
crashes=$build/crashes
# The targets rewrite small files without end: in memory where the system has a place for that.
if [ -z "${TMPDIR:-}" ] && [ -w /dev/shm ]; then
  export TMPDIR=/dev/shm
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$crashes"

run_target() {
  local name=$1 log=$work/$1.log
  mkdir -p "$work/$name" "$work/$name.tmp"
  cp -r "$corpora/$name/." "$work/$name/"
  local options=(-max_total_time="$seconds" -timeout=20 -artifact_prefix="$crashes/$name-" -verbosity=1)
  if [ -f "$corpora/$name.dict" ]; then
    options+=(-dict="$corpora/$name.dict")
  fi
  if ! TMPDIR=$work/$name.tmp "$build/bin/fuzz_$name" "${options[@]}" "$work/$name" >"$log" 2>&1; then
    echo "fuzz: $name FAILED, its input is in $crashes"
    tail -n 40 "$log"
    return 1
  fi
  local runs reached edges
  runs=$(sed -n 's/^Done \([0-9]*\) runs.*/\1/p' "$log")
  reached=$(sed -n 's/.*DONE *cov: \([0-9]*\).*/\1/p' "$log")
  edges=$(sed -n 's/.*PC tables (\([0-9]*\) PCs).*/\1/p' "$log")
  echo "fuzz: $name: $runs runs, $reached of $edges edges of the program"
}
export -f run_target
export build seconds corpora crashes work

for target in "$build"/bin/fuzz_*; do
  basename "$target" | sed 's/^fuzz_//'
done | xargs -P 2 -I{} bash -c 'run_target {}' || { echo "fuzz: at least one target failed" >&2; exit 1; }
