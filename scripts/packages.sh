# Sourced by ./run and ./test: makes sure that what a section of packaging/debian-packages.txt names is there.
# shellcheck shell=bash

package_list() {  # SECTION... -> lines "package tool why"
  local section
  for section in "$@"; do
    awk -v section="$section" '$1 == section { $1 = ""; sub(/^ /, ""); print }' "$project/packaging/debian-packages.txt"
  done
}

is_installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

need_packages() {  # SECTION...
  if command -v apt-get >/dev/null && command -v dpkg-query >/dev/null; then
    install_missing "$@"
  else
    name_missing_tools "$@"
  fi
}

install_missing() {
  local package tool why
  local -a missing=()
  while read -r package tool why; do
    is_installed "$package" && continue
    [ ${#missing[@]} -gt 0 ] || echo "These Debian packages are missing and will be installed:"
    printf '  %-20s %s\n' "$package" "$why"
    missing+=("$package")
  done < <(package_list "$@")
  [ ${#missing[@]} -gt 0 ] || return 0

  local -a as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "Installing needs root. Either run this script as root, or as root: apt-get install ${missing[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  "${as_root[@]}" apt-get update -q &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}" && return 0
  echo "The packages could not be installed. Check the connection to the package server and start again." >&2
  return 1
}

# Without Debian's packages only the tools can be looked for; CMake says which library it does not find.
name_missing_tools() {
  local package tool why lacking=0
  while read -r package tool why; do
    if [ "$tool" = - ] || command -v "$tool" >/dev/null; then continue; fi
    [ $lacking -eq 1 ] || echo "This is no Debian system, so nothing is installed. Missing here (by their names in Debian 12):" >&2
    printf '  %-20s %s\n' "$package" "$why" >&2
    lacking=1
  done < <(package_list "$@")
  return $lacking
}
