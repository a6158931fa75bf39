# install_missing PACKAGE...: installs what is not there, as root or through sudo; asks no questions. Sourced.
install_missing() {
  local package missing=() as_root=()
  for package in "$@"; do
    if [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
      missing+=("$package")
    fi
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "setup: these packages are missing and neither root nor sudo is at hand: ${missing[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  echo "setup: installing ${missing[*]}" >&2
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}
