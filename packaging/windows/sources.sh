# SPDX-License-Identifier: MIT
# Sourced by scripts/package/windows.sh: fetches the sources named in sources.txt, checks them and unpacks them.
# shellcheck shell=bash

# The row of sources.txt whose archive has this checksum, or is to be fetched: "package suite archive checksum".
source_rows() {  # NAME
  awk -v name="$1" '$1 == name { print $2, $3, $4, $5 }' "$project/packaging/windows/sources.txt"
}

checksum_of() { sha256sum "$1" | cut -d ' ' -f 1; }  # FILE

# apt with source packages, in a state folder of its own: what the system itself is set up with stays as it is.
source_apt() {  # SUITE apt-get's arguments...
  local suite="$1" state="$windows_libraries/apt/$1"
  shift
  # A server's list may be an old one, as on mirrors that stand still: what is taken is known by its checksum.
  apt-get -o Acquire::Check-Valid-Until=false -o Dir::Etc::sourcelist="$state/list.sources" -o Dir::Etc::sourceparts=/dev/null \
    -o Dir::State::lists="$state/lists" -o Dir::Cache="$state/cache" -o APT::Sandbox::User=root -q "$@"
}

# Asks the servers that the system is set up with, once in this run, what source packages they have in a suite.
know_sources() {  # SUITE
  local suite="$1" state="$windows_libraries/apt/$1"
  [ -e "$state/known" ] && return 0
  mkdir -p "$state/lists/partial" "$state/cache/archives/partial"
  if [ "$suite" = own ]; then
    source_lists deb-src >"$state/list.sources"
  else
    # The entry for this system's own suite; those for updates and security, and what is not Debian's, have other names there.
    source_lists deb-src | entry_of "$(. /etc/os-release && echo "${VERSION_CODENAME-}")" | sed "s/^Suites:.*/Suites: $suite/" >"$state/list.sources"
  fi
  source_apt "$suite" update && touch "$state/known"
}

# The first entry with that suite. Where none has it - the suite may be named "stable" - it is the first one of all.
entry_of() {  # CODENAME
  awk -v RS= -v suite="$1" 'NR == 1 { found = $0 }
    ("\n" $0 "\n") ~ ("\nSuites:([^\n]* )?" suite "[ \n]") { found = $0; exit }
    END { print found }'
}

# The system's entries, in the form that newer and older systems keep them in, as entries of one type.
source_lists() {  # TYPE
  local file entry options address suite components
  for file in /etc/apt/sources.list.d/*.sources; do
    [ -e "$file" ] || continue
    sed "s/^Types:.*/Types: $1/; /^#/d" "$file"
    echo
  done
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -e "$file" ] || continue
    sed -nE 's/^deb +(\[([^]]*)\] +)?([^ ]+) +([^ ]+) +(.*)$/\3 \4 \5|\2/p' "$file" |
      while IFS='|' read -r entry options; do
        read -r address suite components <<<"$entry"
        printf 'Types: %s\nURIs: %s\nSuites: %s\nComponents: %s\n' "$1" "$address" "$suite" "$components"
        sed -nE 's/(.* )?signed-by=([^ ]+).*/Signed-By: \2/p' <<<"$options"
        echo
      done
  done
}

# Unpacks the sources of NAME into a folder of that name and prints nothing; GIVEN is an archive that is there already.
unpack_source() {  # NAME [GIVEN]
  local name="$1" given="${2-}" folder="$windows_libraries/sources/$1" package suite archive checksum
  local archives="$windows_libraries/archives/$1"
  rm -rf "$folder"
  mkdir -p "$folder" "$archives"
  if [ -n "$given" ]; then
    if ! source_rows "$name" | grep -qF " $(checksum_of "$given")"; then
      echo "$given is not the archive of $name that packaging/windows/sources.txt names: its checksum is another." >&2
      return 1
    fi
    tar -xf "$given" -C "$folder" --strip-components=1
    return
  fi
  read -r package suite archive checksum < <(source_rows "$name")
  if ! is_intact "$archives/$archive" "$checksum" || { [ "$suite" = own ] && ! ls "$archives"/*.dsc >/dev/null 2>&1; }; then
    fetch_source "$archives" "$package" "$suite" || return
  fi
  if ! is_intact "$archives/$archive" "$checksum"; then
    echo "The source package $package does not hold $archive with the checksum in packaging/windows/sources.txt. The programs for Windows are built on Debian 12." >&2
    return 1
  fi
  if [ "$suite" = own ]; then
    rm -rf "$folder"
    dpkg-source --no-check --no-copy -x "$archives"/*.dsc "$folder"
  else
    tar -xf "$archives/$archive" -C "$folder" --strip-components=1
  fi
}

is_intact() { [ -e "$1" ] && [ "$(checksum_of "$1")" = "$2" ]; }  # FILE CHECKSUM

fetch_source() {  # FOLDER PACKAGE SUITE
  local -a only=()
  know_sources "$3" || return
  # Newer suites go on to newer patches, which another system's server may not have: the archive alone is asked for.
  [ "$3" = own ] || only=(--tar-only)
  rm -f "$1"/*
  # What is no source may be missing at a server, such as its makers' signature; whether the sources are there shows when
  # they are unpacked.
  (cd "$1" && source_apt "$3" source --download-only "${only[@]}" "$2") || true
}
