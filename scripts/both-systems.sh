# Sourced by the scripts that hold the programs of both systems against each other: NAME LINUX_BIN WINDOWS_BIN.
# Sets linux, windows (the folders of the programs) and work (a folder that ends with the script); what is in running is
# told to stop by stop, and at the end.
linux=$(cd "$2" && pwd)
windows=$(cd "$3" && pwd)
export WINEDEBUG=${WINEDEBUG:--all}
work=$(mktemp -d "${TMPDIR:-/tmp}/windows-$1.XXXXXX")
running=()
stop() {
  local process
  for process in "${running[@]}"; do kill -INT "$process" 2>/dev/null && wait "$process" || true; done
  running=()
}
trap 'stop; rm -rf "$work"' EXIT
