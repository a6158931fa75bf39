#!/usr/bin/env bash
# Tells what the fuzz targets reach of the code they are for, each alone and all together, by functions and lines:
#   tests/fuzz/coverage.sh BUILD_DIR [SECONDS]    (60 seconds of fuzzing for each target when nothing is said)
# Builds the targets with clang's source coverage in BUILD_DIR, a folder of its own. Every line with its count
# is in BUILD_DIR/coverage/TARGET.txt afterwards; a count of 0 is a rule that no input reached.
# Needs llvm-profdata and llvm-cov, which come with clang.
set -euo pipefail

if [ $# -lt 1 ]; then
  echo "usage: tests/fuzz/coverage.sh BUILD_DIR [SECONDS]" >&2
  exit 2
fi
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
seconds=${2:-60}
cmake -S "$root" --preset fuzz -B "$1" -DCMAKE_CXX_FLAGS="-fprofile-instr-generate -fcoverage-mapping" >/dev/null
cmake --build "$1"
build=$(cd "$1" && pwd)
result=$build/coverage
mkdir -p "$result"
if [ -z "${TMPDIR:-}" ] && [ -w /dev/shm ]; then
  export TMPDIR=/dev/shm
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The code that each target is for.
declare -A code=(
  [initial_settings]="core/modFile.cpp"
  [parameter_file]="files/ParameterFile.cpp"
  [text_output]="files/TextOutput.cpp"
  [loader_ini]="platform/PrivateProfile.cpp platform/WholeFile.cpp core/modIniReadWrite.cpp"
  [code_page]="core/Text.cpp"
  [block_text]="comm/ParameterTelegram.cpp"
  [exchange]="comm/modComunication.cpp comm/modEthernet.cpp comm/modUsb.cpp comm/ModbusFrames.cpp"
  [bulk_transfer]="comm/BulkRead.cpp comm/BulkWrite.cpp comm/ParameterTelegram.cpp comm/RecorderCheck.cpp
                   comm/RecorderCommands.cpp comm/FlowCallbacks.cpp core/UserUnits.cpp"
  [value_rules]="channel/modUtil.cpp channel/InputTypeRules.cpp"
  [window_tables]="mainwindow/ParameterTables.cpp mainwindow/TableCells.cpp mainwindow/SettingsPages.cpp
                   mainwindow/SettingsTables.cpp mainwindow/TableLayouts.cpp operation/Formula.cpp"
  [channel_screens]="channelscreens/ChannelScreen.cpp channelscreens/ChannelCascades.cpp
                     channelscreens/frmChSetting.cpp channelscreens/frmOperationChSet.cpp
                     channelscreens/frmFormula.cpp channelscreens/frmOpSetting.cpp"
)

# report NAME PROFILE OBJECTS... -- SOURCES...
report() {
  local name=$1 profile=$2
  shift 2
  local objects=("$1")
  shift
  while [ "$1" != -- ]; do
    objects+=(-object "$1")
    shift
  done
  shift
  llvm-cov show "${objects[@]}" -instr-profile="$profile" "$@" >"$result/$name.txt"
  llvm-cov report "${objects[@]}" -instr-profile="$profile" "$@" | awk -v name="$name" '$1 == "TOTAL" {
    printf "%-17s functions %3d of %3d, lines %4d of %4d (%s)\n", name, $5 - $6, $5, $8 - $9, $8, $10 }'
}

all_sources=()
all_programs=()
for name in $(printf '%s\n' "${!code[@]}" | sort); do
  sources=()
  for source in ${code[$name]}; do
    sources+=("$root/$source")
  done
  options=(-max_total_time="$seconds" -timeout=30 -artifact_prefix="$result/$name-")
  if [ -f "$here/corpus/$name.dict" ]; then
    options+=(-dict="$here/corpus/$name.dict")
  fi
  mkdir -p "$work/$name"
  cp -r "$here/corpus/$name/." "$work/$name/"
  LLVM_PROFILE_FILE="$work/$name.raw" \
    "$build/bin/fuzz_$name" "${options[@]}" "$work/$name" >"$result/$name.log" 2>&1
  llvm-profdata merge -o "$work/$name.data" "$work/$name.raw"
  report "$name" "$work/$name.data" "$build/bin/fuzz_$name" -- "${sources[@]}"
  all_sources+=("${sources[@]}")
  all_programs+=("$build/bin/fuzz_$name")
done
llvm-profdata merge -o "$work/all.data" "$work"/*.data
# Each program has its own functions of the same names, which the merged profile cannot tell apart: not of interest.
mapfile -t all_sources < <(printf '%s\n' "${all_sources[@]}" "$root/core/modMain.cpp" | sort -u)
report together "$work/all.data" "${all_programs[@]}" -- "${all_sources[@]}" 2> >(grep -v "mismatched data" >&2)
