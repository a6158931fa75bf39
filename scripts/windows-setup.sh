#!/usr/bin/env bash
# Installs what is missing beside scripts/setup.sh to build for Windows and to try it under Wine. As root or through sudo.
#   scripts/windows-setup.sh logic   only what the programs without Qt need
set -euo pipefail
source "$(dirname "$0")/packages.sh"
install_missing g++-mingw-w64-x86-64-posix wine64 wine dpkg-dev xz-utils
[ "${1:-}" = logic ] || install_missing nsis icoutils pandoc zip unzip
