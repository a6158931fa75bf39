#!/usr/bin/env bash
# clang-format, clang-tidy and cppcheck over the product's sources (what is checked and what is switched off, with the
# reason: .clang-tidy and the list below), clang-format over the tests and benches too. Ends with 1 when one of them
# finds something.
#   scripts/lint.sh                  everything (some minutes)
#   scripts/lint.sh companion comm   these folders
set -euo pipefail
cd "$(dirname "$0")/.."
for tool in clang-format clang-tidy cppcheck; do
  command -v "$tool" >/dev/null || { echo "lint: $tool is not installed (apt-get install $tool)" >&2; exit 2; }
done
cmake --preset release >/dev/null
# Headers that the build makes have to stand.
cmake --build --preset release --target loader_qt >/dev/null

folders=("$@")
only_laid_out=()
if [ ${#folders[@]} -eq 0 ]; then
  folders=(app channel channelscreens companion comm conversion core devices dialogs fields files mainwindow meaning operation
           paramtool platform qt simulator tools)
  only_laid_out=(tests bench)
fi
mapfile -t sources < <(git ls-files -- "${folders[@]/%//*.cpp}")
laid_out=("${folders[@]}" "${only_laid_out[@]}")
mapfile -t all < <(git ls-files -- "${laid_out[@]/%//*.cpp}" "${laid_out[@]/%//*.h}")
found=0

echo "lint: layout of ${#all[@]} files"
clang-format --dry-run -Werror "${all[@]}" || found=1

# Each of the two systems' files as its own build compiles it; Windows' only where that has been configured.
tidy() { # PRESET FILES... -- further words for clang-tidy
  local preset=$1 files=()
  shift
  while [ "$1" != -- ]; do files+=("$1"); shift; done
  shift
  echo "lint: clang-tidy over ${#files[@]} files of build/$preset"
  printf '%s\0' "${files[@]}" | xargs -0 -r -n 4 -P "$(nproc)" clang-tidy -p "build/$preset" --quiet --warnings-as-errors='*' \
    --extra-arg=-Wno-unknown-warning-option "$@" \
    2> >(grep -v "warnings generated\|Suppressed\|Use -header-filter" >&2) || found=1
}
is_compiled() { grep -qF "\"file\": \"$PWD/$2\"" "build/$1/compile_commands.json" 2>/dev/null; }
linux=() windows=()
for file in "${sources[@]}"; do
  if is_compiled release "$file"; then
    linux+=("$file")
  elif is_compiled windows "$file"; then
    windows+=("$file")
  else
    echo "lint: clang-tidy leaves $file out: no build here compiles it" >&2
  fi
done
tidy release "${linux[@]}" --
if [ ${#windows[@]} -gt 0 ]; then
  library=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++.a)")/include/c++
  tidy windows "${windows[@]}" -- --extra-arg=--target=x86_64-w64-windows-gnu --extra-arg="-isystem$library" \
    --extra-arg="-isystem$library/x86_64-w64-mingw32"
fi

# cppcheck: what is switched off.
#   missingIncludeSystem   it is not given the system's headers
#   unknownMacro           Q_OBJECT and its like, the rows of the .def tables
#   noExplicitConstructor  records are made from their parts on purpose; clang-tidy looks after the rest
#   passedByValue          texts are taken by value where they are kept
#   useStlAlgorithm        a loop that reads better stays a loop
#   returnTempReference, danglingTempReference, danglingTemporaryLifetime
#                          cppcheck 2.10 takes a reference that a function or "?:" gives for a temporary; the compiler's own
#                          warning and clang-tidy know better
echo "lint: cppcheck"
cppcheck --quiet --std=c++20 --language=c++ --enable=warning,performance,portability --inline-suppr --error-exitcode=1 \
  --suppress=missingIncludeSystem --suppress=unknownMacro --suppress=noExplicitConstructor --suppress=passedByValue \
  --suppress=useStlAlgorithm --suppress=returnTempReference --suppress=danglingTempReference \
  --suppress=danglingTemporaryLifetime -I. -j "$(nproc)" "${sources[@]}" || found=1
[ "$found" = 0 ] && echo "lint: nothing found"
exit "$found"
