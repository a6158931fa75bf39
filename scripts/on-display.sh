#!/usr/bin/env bash
# on-display.sh PROGRAM [ARGUMENT...]: runs the program on a virtual display of its own, with a small window
# manager so that windows become active as on a desk. Ends with the program's status; display and window manager
# end with it. DISPLAY_SIZE is the display's size, 1600x1200 where it is not set.
set -euo pipefail
if [ $# -eq 0 ]; then
  echo "usage: on-display.sh PROGRAM [ARGUMENT...]" >&2
  exit 2
fi

work=$(mktemp -d)
started=()
end_all() {
  # The window manager first: without its display it would complain.
  for ((i = ${#started[@]} - 1; i >= 0; --i)); do
    kill "${started[i]}" 2>/dev/null || true
    wait "${started[i]}" 2>/dev/null || true
  done
  rm -rf "$work"
}
trap end_all EXIT
trap 'exit 143' TERM
trap 'exit 130' INT

# ready PIPE: waits until something is written into the pipe. What is to write it holds its only other end: when that
# ends instead, so does the wait.
ready() {
  local said=
  read -r said <"$1" || true
  if [ -z "$said" ]; then
    echo "on-display: no display or no window manager came up" >&2
    cat "$work"/*.log >&2
    exit 1
  fi
  echo "$said"
}

# The server takes a free display and writes its number when it is ready. Both end with this script, however it ends.
mkfifo "$work/display"
setpriv --pdeathsig TERM Xvfb -displayfd 3 -screen 0 "${DISPLAY_SIZE:-1600x1200}x24" -nolisten tcp -noreset \
  3>"$work/display" >"$work/display.log" 2>&1 &
started+=($!)
DISPLAY=:$(ready "$work/display")
export DISPLAY

# The window manager runs its start-up command once it has taken the display over. It does not hand its open files on.
mkfifo "$work/manager"
setpriv --pdeathsig TERM openbox --sm-disable --startup "sh -c 'echo ready >\"$work/manager\"'" \
  3>"$work/manager" >"$work/manager.log" 2>&1 &
started+=($!)
ready "$work/manager" >/dev/null

export QT_QPA_PLATFORM=xcb LIBGL_ALWAYS_SOFTWARE=1
unset WAYLAND_DISPLAY
"$@" &
program=$!
started+=("$program")
status=0
wait "$program" || status=$?
exit "$status"
