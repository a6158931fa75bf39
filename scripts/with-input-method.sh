#!/usr/bin/env bash
# with-input-method.sh PROGRAM [ARGUMENT...]: runs the program with a Japanese input method at its side, as on a desk in
# Japan: fcitx5 with the converter that INPUT_METHOD names (anthy where it is not set). The session bus, the settings and
# what the converter learns are of this run alone. Ends with the program's status; all else ends with it.
set -euo pipefail
if [ $# -eq 0 ]; then
  echo "usage: with-input-method.sh PROGRAM [ARGUMENT...]" >&2
  exit 2
fi

# The second call, inside of the session: the bus starts the input method and answers when it is there.
if [ -n "${LOADER_INPUT_METHOD_SESSION:-}" ]; then
  dbus-send --session --print-reply --dest=org.freedesktop.DBus /org/freedesktop/DBus \
    org.freedesktop.DBus.StartServiceByName string:org.fcitx.Fcitx5 uint32:0 >/dev/null
  exec "$@"
fi

method=${INPUT_METHOD:-anthy}
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
mkdir -p "$home"/config/fcitx5 "$home"/data/dbus-1/services
mkdir -m 700 "$home"/run
cat >"$home/config/fcitx5/profile" <<END
[Groups/0]
Name=Default
Default Layout=us
DefaultIM=$method
[Groups/0/Items/0]
Name=keyboard-us
Layout=
[Groups/0/Items/1]
Name=$method
Layout=
[GroupOrder]
0=Default
END
printf '[Behavior]\nActiveByDefault=True\n' >"$home/config/fcitx5/config"
# It is no client of the display: what it shows (a window of candidates) is not of interest, and it leaves the map of
# the keyboard alone.
cat >"$home/data/dbus-1/services/org.fcitx.Fcitx5.service" <<END
[D-BUS Service]
Name=org.fcitx.Fcitx5
Exec=$(command -v flock) $home/runs $(command -v fcitx5) --disable=wayland,waylandim,xim,xcb,classicui,kimpanel,notifications,notificationitem,fcitx4frontend
END

status=0
HOME=$home XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data XDG_CACHE_HOME=$home/cache XDG_RUNTIME_DIR=$home/run \
  LOADER_INPUT_METHOD_SESSION=1 QT_IM_MODULE=${QT_IM_MODULE:-fcitx} \
  dbus-run-session -- "$(realpath "$0")" "$@" 2>"$home/errors" || status=$?
# It ends with its bus, and writes a last word into its folder.
flock "$home/runs" true
# What the bus and the input method say is of interest only where the program has failed.
if [ "$status" -ne 0 ]; then
  cat "$home/errors" >&2
fi
exit "$status"
