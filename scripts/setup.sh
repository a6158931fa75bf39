#!/usr/bin/env bash
# Installs what is missing to build, run and test the parameter loader on Debian, and nothing else.
# As root or through sudo; asks no questions.
set -euo pipefail

packages=(
  build-essential cmake ninja-build ccache pkg-config
  qt6-base-dev qt6-serialport-dev qt6-svg-dev qt6-translations-l10n
  libmodbus-dev libxcb-xtest0-dev libgtest-dev libgmock-dev libbenchmark-dev
  clang libclang-rt-14-dev
  fonts-noto-cjk
  xvfb openbox xdg-utils dbus-daemon dbus-bin fcitx5 fcitx5-anthy fcitx5-frontend-qt6 git man-db
)

missing=()
for package in "${packages[@]}"; do
  if [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
    missing+=("$package")
  fi
done
if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "setup: these packages are missing and neither root nor sudo is at hand: ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo)
fi

echo "setup: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
