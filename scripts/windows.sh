#!/usr/bin/env bash
# Everything for Windows, made and tried on this Debian machine: sets it up, builds Qt once (scripts/windows-qt.sh), the
# programs, runs the tests and the tour under Wine, and leaves a portable zip and an installer in build/packages.
# At its end it lists what was proved under Wine (docs/windows.md says what Wine cannot prove).
#   scripts/windows.sh            everything
#   scripts/windows.sh logic ...  what needs no Qt, built and tested; further words go to ctest
#   scripts/windows.sh build      the programs only
#   scripts/windows.sh test ...   programs and tests; further words go to ctest
#   scripts/windows.sh pack       programs and packages, without the tests and without trying them
#   scripts/windows.sh try        programs and packages, and these tried, without the tests
set -euo pipefail
cd "$(dirname "$0")/.."
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
what=${1:-all}
shift || true

./scripts/setup.sh
./scripts/windows-setup.sh "$what"

source scripts/wine.sh

proved=()
passed() { proved+=("$*"); echo "windows: $*"; }
list_proved() {
  printf 'windows: proved under Wine %s:\n' "$(wine --version)"
  printf '  %s\n' "${proved[@]}"
}
run_tests() { # PRESET, words for ctest: each program, with the tests that it counted, goes on the list
  local preset=$1 program tests
  shift
  ctest --test-dir "build/$preset" --output-on-failure --no-tests=error -j "$(nproc)" "$@"
  while read -r program tests; do
    proved+=("$program: $tests tests")
  done < <(awk '/^[0-9]+\/[0-9]+ Test: / { program = $3 } /^\[  PASSED  \]/ { print program, $4 }' \
    "build/$preset/Testing/Temporary/LastTest.log" | sort)
}

if [ "$what" = logic ]; then
  cmake --preset windows-logic >/dev/null
  cmake --build --preset windows-logic
  wine wineboot --init >/dev/null 2>&1
  run_tests windows-logic "$@"
  list_proved
  exit 0
fi

fail() { echo "windows: $*" >&2; exit 1; }

# --- What the build needs of this machine: Qt and libmodbus for Windows, the tool that draws the icons.
LOADER_QT_WINDOWS=$(./scripts/windows-qt.sh | tail -1)
LOADER_LIBMODBUS_WINDOWS=$(./scripts/windows-libmodbus.sh | tail -1)
export LOADER_QT_WINDOWS LOADER_LIBMODBUS_WINDOWS
cmake --preset release >/dev/null
cmake --build --preset release --target icons paramtool recorder-sim parameter-loader
cmake --preset windows >/dev/null
if [ "$what" = build ] || [ "$what" = pack ] || [ "$what" = try ]; then
  cmake --build --preset windows --target parameter-loader paramtool recorder-sim recorder-tour guides parameter-file_ico
else
  cmake --build --preset windows
fi
[ "$what" != build ] || exit 0

# --- Under Wine.
windows_name() { printf "Z:%s" "${1//\//\\}"; } # of a file of this machine
[ "$what" = pack ] || wine wineboot --init >/dev/null 2>&1
if [ "$what" = all ] || [ "$what" = test ]; then
  run_tests windows "$@"
fi
[ "$what" != test ] || exit 0

# --- The packages.
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/windows/CMakeCache.txt)
stage=$PWD/build/windows/stage/parameter-loader
rm -rf "$stage"
cmake --install build/windows --prefix "$stage" --strip >/dev/null
find "$stage" -name '*.dll' -exec x86_64-w64-mingw32-strip --strip-unneeded {} +
# No library that neither Windows nor the folder has.
system=' advapi32 authz comctl32 comdlg32 crypt32 d2d1 d3d11 d3d9 d3d12 dnsapi dwmapi dwrite dxgi gdi32 imm32 iphlpapi kernel32
  mpr msvcrt ncrypt netapi32 ntdll ole32 oleaut32 powrprof rpcrt4 secur32 setupapi shcore shell32 shlwapi user32 userenv uxtheme
  version winhttp winmm winspool.drv ws2_32 wtsapi32 bcrypt '
while read -r file; do
  for library in $(x86_64-w64-mingw32-objdump -p "$file" | sed -n 's/.*DLL Name: //p'); do
    name=$(tr '[:upper:]' '[:lower:]' <<<"$library")
    [ -e "$stage/$library" ] || [[ $name == api-ms-win-* || " ${system//$'\n'/ } " == *" ${name%.dll} "* ]] ||
      fail "$(basename "$file") needs $library, which is not in the folder"
  done
done < <(find "$stage" -name '*.exe' -o -name '*.dll')

mkdir -p build/packages
name=parameter-loader-$version-windows
rm -f build/packages/"$name"*
(cd "$stage/.." && zip -q -r -X "$OLDPWD/build/packages/$name-portable.zip" parameter-loader)
# What the uninstaller removes, the files before their folders.
{
  (cd "$stage" && find . -type f | sed 's|^\./||; s|/|\\|g; s|.*|Delete "$INSTDIR\\&"|')
  (cd "$stage" && find . -mindepth 1 -depth -type d | sed 's|^\./||; s|/|\\|g; s|.*|RMDir "$INSTDIR\\&"|')
} >"$work/remove.nsh"
makensis -V2 -NOCD -INPUTCHARSET UTF8 -DVERSION="$version" -DSTAGE="$stage" -DREMOVE="$work/remove.nsh" \
  -DOUTPUT="$PWD/build/packages/$name-setup.exe" share/windows/installer.nsi
ls -l build/packages/"$name"*
[ "$what" != pack ] || exit 0

# --- Tried as a user has them.
exec_tour() { # NAME FOLDER-OF-THE-PROGRAM...: the tour with the programs of that folder
  local name=$1 folder=$2
  cp build/windows/bin/recorder-tour.exe "$folder/"
  cp "$LOADER_QT_WINDOWS/bin/Qt6Test.dll" "$folder/"
  mkdir -p build/windows-tour
  end_wine
  DISPLAY_SIZE=1280x1024 timeout 300 scripts/on-display.sh wine "$folder/recorder-tour.exe" "$(windows_name "$PWD/build/windows-tour/$name")" ||
    fail "the tour of $name fails"
  end_wine
  rm "$folder/recorder-tour.exe" "$folder/Qt6Test.dll"
  # The same files as on Linux; the sheets tell the time in their second line.
  for file in recorder.KOV recorder.RUG; do
    cmp "build/tour/$file" "build/windows-tour/$name/$file" || fail "$file is another one than on Linux"
  done
  for file in sheet-KOV.Txt sheet-RUG.Txt; do
    cmp <(sed 2d "build/tour/$file") <(sed 2d "build/windows-tour/$name/$file") || fail "$file is another one than on Linux"
  done
  passed "the tour with the programs of $name; its files and sheets are those of Linux, byte for byte"
}
cmake --build --preset release --target recorder-tour
scripts/tour.sh build/release/bin/recorder-tour build/tour >/dev/null
# The same registers, and the same outputs and files, on both systems.
for comparison in registers companion; do
  "scripts/windows-$comparison.sh" build/release/bin build/windows/bin >"$work/$comparison" 2>&1 ||
    { tail -20 "$work/$comparison" >&2; fail "the $comparison are not the same on both systems"; }
  passed "$(tail -1 "$work/$comparison")"
done
place="$work/携帯 用 フォルダ"
mkdir "$place"
(cd "$place" && unzip -q "$OLDPWD/build/packages/$name-portable.zip")
folder=$place/parameter-loader
text=$(wine "$folder/paramtool.exe" show default:RUG CH1 --lang en)
grep -q "CH 1 Tag: CH 01" <<<"$text" || fail "paramtool of the zip says: $text"
passed "paramtool of the zip, in a folder with a Japanese name and blanks"
exec_tour portable "$folder"

setup=build/packages/$name-setup.exe
sums() { (cd "$1" && find . -type f -exec sha256sum {} + | sort); }
# What the Start menu has of the program leads somewhere.
check_menu() {
  local entry target entries=0
  while read -r entry; do
    target=$(strings "$entry" | grep -m1 '^C:')
    target=${target#C:}
    [ -e "$WINEPREFIX/drive_c${target//\\//}" ] || fail "$(basename "$entry") in the Start menu leads to $target, which is not there"
    entries=$((entries + 1))
  done < <(find "$WINEPREFIX/drive_c" -path '*Start Menu*Parameter Loader*' -name '*.lnk')
  [ "$entries" = 2 ] || fail "the Start menu has $entries entries and not 2"
}
# While a program of it runs, the installation stays as it is.
check_in_use() {
  local folder=$1 mode=$2 before after recorder status=0 line
  exec {listening}< <(exec wine "$folder/recorder-sim.exe" --tcp 0)
  recorder=$!
  read -r line <&"$listening" || fail "the recorder does not start"
  before=$(sums "$folder")
  wine "$setup" /S "/$mode" || status=$?
  after=$(sums "$folder")
  kill "$recorder"
  end_wine
  exec {listening}<&-
  [ "$status" = 2 ] || fail "with a program running the installer ends with $status"
  [ "$before" = "$after" ] || fail "with a program running the installer changes files"
}
# Installed again, it keeps what the user has adapted.
check_again() {
  local folder=$1 mode=$2
  echo "; mine" >>"$folder/TextKOV.Ini"
  cp "$folder/TextKOV.Ini" "$work/adapted"
  wine "$setup" /S "/$mode" || fail "the installer fails over an installation"
  cmp -s "$folder/TextKOV.Ini" "$stage/TextKOV.Ini" || fail "an adapted data file is not replaced"
  cmp -s "$folder/TextKOV.Ini.old" "$work/adapted" || fail "an adapted data file is not kept"
  [ ! -e "$folder/InitSet.Ini.old" ] || fail "a data file is kept that nobody has adapted"
}
for mode in CurrentUser AllUsers; do
  wine "$setup" /S "/$mode" || fail "the installer fails for $mode"
  if [ "$mode" = AllUsers ]; then
    installed="$WINEPREFIX/drive_c/Program Files/Parameter Loader"
  else
    installed=$(echo "$WINEPREFIX"/drive_c/users/*/AppData/Local/Programs/"Parameter Loader")
  fi
  [ -e "$installed/parameter-loader.exe" ] || fail "nothing is installed for $mode"
  check_menu
  check_in_use "$installed" "$mode"
  check_again "$installed" "$mode"
  passed "installed for $mode: menu, again over an adapted file, not while a program runs"
  exec_tour "installed-$mode" "$installed"
  touch "$installed/mine.RUG"
  # It copies itself away and returns at once: the end of all programs is its end.
  wine "$installed/uninstall.exe" /S "/$mode" || fail "the uninstaller fails for $mode"
  /usr/lib/wine/wineserver64 -w
  [ -e "$installed/mine.RUG" ] || fail "the uninstaller has removed a file of the user's"
  [ ! -e "$installed/parameter-loader.exe" ] || fail "the uninstaller has left the program"
  [ -z "$(find "$WINEPREFIX/drive_c" -path '*Start Menu*Parameter Loader*')" ] || fail "the uninstaller has left its menu"
  rm -rf "$installed"
  passed "installed for $mode: toured, removed silently, the user's files left"
done

list_proved
