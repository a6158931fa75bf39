#!/usr/bin/env bash
# Makes the packages from the release build and tries the portable one as a user has it: unpacked into a folder with a
# Japanese name and blanks, with nothing of Qt but what is in it.
#   scripts/try-packages.sh            both packages, and the portable one tried
#   scripts/try-packages.sh --bare     the Debian package too: installed in a bare Debian root without build tools,
#                                      the tour and the companion run there from the installed files (as root;
#                                      needs debootstrap and a Debian mirror)
set -euo pipefail
cd "$(dirname "$0")/.."
packages=$PWD/build/packages

cmake --build --preset release --target parameter-loader paramtool recorder-sim icon_parameter-loader icon_parameter-file
rm -rf "$packages"
cpack --config build/release/CPackConfig.cmake >/dev/null
rm -rf "$packages/_CPack_Packages"

work=$(mktemp -d)
cleanup=("rm -rf '$work'")
end_all() { for ((i = ${#cleanup[@]} - 1; i >= 0; --i)); do eval "${cleanup[i]}"; done; }
trap end_all EXIT

fail() { echo "try-packages: $*" >&2; exit 1; }

# --- The portable folder
place="$work/携帯 用 フォルダ"
mkdir "$place"
tar xzf "$packages"/*-portable.tar.gz -C "$place"
folder=$(echo "$place"/*)
# Every library of Qt comes from the folder, and none is missing.
for file in "$folder"/parameter-loader "$folder"/paramtool "$folder"/recorder-sim; do
  libraries=$(ldd "$file")
  grep -q "not found" <<<"$libraries" && fail "$file misses a library: $libraries"
  grep "libQt6" <<<"$libraries" | grep -v -F "$folder/lib/" && fail "$file takes Qt from elsewhere"
done
text=$("$folder/paramtool" show default:RUG CH1 --lang en)
grep -q "CH 1 Tag: CH 01" <<<"$text" || fail "paramtool in the portable folder says: $text"
# The packages are called by the version that the program says.
version=$("$folder/paramtool" --version)
version=${version#paramtool }
for package in "$packages/parameter-loader_${version}_"*.deb "$packages/parameter-loader-$version-"*-portable.tar.gz; do
  [ -e "$package" ] || fail "there is no $package"
done
# The window opens and leaves its settings in the folder; then it is told to go.
try_window() {
  local settings=$1 window status=0
  shift
  "$@" &
  window=$!
  for ((tenths = 0; tenths < 200; ++tenths)); do
    [ ! -s "$settings" ] || break
    kill -0 "$window" 2>/dev/null || fail "the window has ended by itself"
    sleep 0.1
  done
  [ -s "$settings" ] || fail "$settings was not made"
  kill -TERM "$window"
  wait "$window" || status=$?
  [ "$status" = 143 ] || fail "the window ended with $status"
}
try_window "$folder/LOADER.INI" scripts/on-display.sh "$folder/parameter-loader"
echo "try-packages: the portable folder works"
[ "${1:-}" = --bare ] || exit 0

# --- The Debian package in a bare root
root=$work/root
command -v debootstrap >/dev/null || fail "debootstrap is not installed"
mirror=$(sed -n 's/^URIs: *//p' /etc/apt/sources.list.d/*.sources 2>/dev/null | head -1)
debootstrap --variant=minbase bookworm "$root" "${mirror:-http://deb.debian.org/debian}" >"$work/debootstrap.log" 2>&1 ||
  { tail "$work/debootstrap.log" >&2; fail "no bare root"; }
mount -t proc proc "$root/proc"
cleanup+=("umount '$root/proc'")
cp "$packages"/*.deb "$root/tmp/"
inside() { chroot "$root" /usr/bin/env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 "$@"; }
inside sh -c 'DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends /tmp/*.deb' >"$work/apt.log" 2>&1 ||
  { tail -20 "$work/apt.log" >&2; fail "the package does not install"; }
inside sh -c 'command -v g++ cmake' && fail "the root is not bare"
# A display to look at it with, and the tour, which is no part of the package.
inside sh -c 'DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends xvfb openbox libqt6test6 libmodbus5' \
  >"$work/apt.log" 2>&1 || { tail -20 "$work/apt.log" >&2; fail "no display for the root"; }
cp build/release/bin/recorder-tour "$root/usr/bin/"
cp scripts/on-display.sh "$root/tmp/"
inside paramtool show default:KOV CH1 --lang en | grep -q "CH 1 Tag: CH 01" || fail "the installed paramtool does not work"
inside bash -c 'recorder-sim --tcp 1502 --model RUG > /tmp/listening & recorder=$!
  until [ -s /tmp/listening ]; do sleep 0.1; done
  paramtool read tcp:127.0.0.1:1502 -o /tmp/a.RUG && paramtool write /tmp/a.RUG tcp:127.0.0.1:1502 --yes --no-backup
  status=$?; kill $recorder; exit $status' || fail "the installed companion does not read and write"
inside /tmp/on-display.sh recorder-tour /tmp/tour || fail "the tour fails in the bare root"
try_window "$root/root/.local/share/parameter-loader/LOADER.INI" chroot "$root" /usr/bin/env -i HOME=/root \
  PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 /tmp/on-display.sh parameter-loader
inside apt-get purge -y parameter-loader >/dev/null 2>&1
[ -e "$root/usr/bin/parameter-loader" ] && fail "the package leaves its program behind"
mkdir -p build/bare-tour
cp "$root"/tmp/tour/*.png build/bare-tour/
echo "try-packages: the Debian package works in a bare root (pictures in build/bare-tour)"
