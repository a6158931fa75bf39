#!/usr/bin/env bash
# Installs what is missing to build, run and test the parameter loader on Debian, and nothing else.
# As root or through sudo; asks no questions.
set -euo pipefail

source "$(dirname "$0")/packages.sh"

packages=(
  build-essential cmake ninja-build ccache pkg-config
  qt6-base-dev qt6-serialport-dev qt6-svg-dev qt6-translations-l10n
  libmodbus-dev libxcb-xtest0-dev libgtest-dev libgmock-dev libbenchmark-dev
  clang libclang-rt-14-dev
  fonts-noto-cjk
  xvfb openbox xdg-utils file dbus-daemon dbus-bin fcitx5 fcitx5-anthy fcitx5-frontend-qt6 git man-db
)

install_missing "${packages[@]}"
