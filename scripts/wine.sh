# Sourced by the scripts that run programs for Windows. Sets work, a folder that ends with the script, and a place of
# Wine's own in it.
work=$(mktemp -d)
export WINEPREFIX="$work/wine" WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" LC_ALL=C.UTF-8
# Wine's desktop outlives the program that it was begun for; begun without a display it makes no window of a later
# program the active one, and it complains when its display goes before it.
end_wine() { /usr/lib/wine/wineserver64 -k 2>/dev/null || true; /usr/lib/wine/wineserver64 -w 2>/dev/null || true; }
trap 'end_wine; rm -rf "$work"' EXIT
