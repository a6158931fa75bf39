# Sourced by the scripts that build a library for Windows.
#
# debian_source PACKAGE VERSION FOLDER: unpacks Debian's source package of that very version, patches applied, to
# FOLDER, which is made. It comes from where the machine's own packages come from; the machine's lists stay as they
# are.
debian_source() {
  local package=$1 version=$2 folder=$3 list
  local as_root=() apt=() fetch=$3.fetch
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  mkdir -p "$fetch/apt/lists/partial" "$fetch/source" "$fetch/parts"
  {
    cat /etc/apt/sources.list 2>/dev/null | sed -n 's/^deb \(.*debian.*\)/deb-src \1/p' || true
  } > "$fetch/apt/sources.list"
  for list in /etc/apt/sources.list.d/debian*.sources; do
    [ -f "$list" ] && cp "$list" "$fetch/parts/" && sed -i 's/^Types:.*/Types: deb-src/' "$fetch/parts/$(basename "$list")"
  done
  apt=(-o "Dir::Etc::SourceList=$fetch/apt/sources.list" -o "Dir::Etc::SourceParts=$fetch/parts"
       -o "Dir::State::Lists=$fetch/apt/lists" -o APT::Sandbox::User=root)
  "${as_root[@]}" apt-get "${apt[@]}" update -qq >&2
  (cd "$fetch/source" &&
    "${as_root[@]}" apt-get "${apt[@]}" source --only-source --download-only -qq "$package=$version" >&2)
  (cd "$fetch/source" && dpkg-source --no-check -x ./*.dsc "$folder" >&2)
}
