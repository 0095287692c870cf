# SPDX-License-Identifier: MIT
# Sourced by ./run and ./test: makes sure that what a section of packaging/debian-packages.txt names is there.
# shellcheck shell=bash

package_list() {  # SECTION... -> lines "package tool why"
  local section
  for section in "$@"; do
    awk -v section="$section" '$1 == section { $1 = ""; sub(/^ /, ""); print }' "$project/packaging/debian-packages.txt"
  done
}

is_installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }
# Of a name that only other packages stand in for, apt-cache shows nothing, and takes that for a success.
is_offered() { [ -n "$(apt-cache show --no-all-versions "$1" 2>/dev/null)" ]; }
is_a_command() { command -v "$1" >/dev/null; }

# The first of the alternatives "A|B|..." of which a command says yes; "-" stands for none at all and always is.
first_that() {  # COMMAND ALTERNATIVES
  local one
  local -a all
  IFS='|' read -ra all <<<"$2"
  for one in "${all[@]}"; do
    if [ "$one" = - ] || "$1" "$one"; then
      echo "$one"
      return 0
    fi
  done
  return 1
}

need_packages() {  # SECTION...
  if command -v apt-get >/dev/null && command -v dpkg-query >/dev/null; then
    install_missing "$@"
  else
    name_missing_tools "$@"
  fi
}

# Of each line none of whose alternatives is installed, the one that this system offers, or else the first: then the
# package manager says in its own words what is wrong with it.
missing_packages() {  # SECTION... -> lines "package why"
  local packages tool why chosen
  while read -r packages tool why; do
    first_that is_installed "${packages%|-}" >/dev/null && continue
    chosen="$(first_that is_offered "$packages" || echo "${packages%%|*}")"
    [ "$chosen" = - ] || printf '%s %s\n' "$chosen" "$why"
  done < <(package_list "$@")
}

install_missing() {
  local package why
  local -a missing=() as_root=()
  [ -n "$(missing_packages "$@")" ] || return 0
  echo "Some Debian packages are missing and will be installed:"
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      missing_packages "$@"
      echo "Installing needs root. Either run this script as root, or as root: apt-get install" \
        "$(missing_packages "$@" | cut -d ' ' -f 1 | xargs)" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  # What it offers, a fresh system knows only behind the first of these.
  if "${as_root[@]}" apt-get update -q; then
    while read -r package why; do
      printf '  %-20s %s\n' "$package" "$why"
      missing+=("$package")
    done < <(missing_packages "$@")
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}" && return 0
  fi
  echo "The packages could not be installed. Check the connection to the package server and start again." >&2
  return 1
}

# Without Debian's packages only the tools can be looked for; CMake says which library it does not find.
name_missing_tools() {
  local packages tools why lacking=0
  while read -r packages tools why; do
    first_that is_a_command "$tools" >/dev/null && continue
    [ $lacking -eq 1 ] || echo "This is no Debian system, so nothing is installed. Missing here (by their names in Debian 12):" >&2
    printf '  %-20s %s\n' "${packages%%|*}" "$why" >&2
    lacking=1
  done < <(package_list "$@")
  return $lacking
}
