# SPDX-License-Identifier: MIT
# Sourced by scripts/package/windows.sh: builds the libraries that the programs for Windows are linked with, each once.
# shellcheck shell=bash

. "$project/packaging/windows/recipes.sh"

# Each behind those that it is built with.
windows_library_names=(headers chmlib hidapi microhttpd curl ogg vorbis opus flac mpg123 lame sndfile soxr ebur128 zlib zip
  googletest qt)

# Builds what is not there yet as its recipe stands here; what a recipe says is shown only when it fails.
build_windows_libraries() {
  local name log
  mkdir -p "$windows_libraries"/{stamps,logs,installed/{include,lib/{pkgconfig,cmake}}}
  # What the servers offer may have changed since the last run.
  rm -f "$windows_libraries"/apt/*/known
  for name in "${windows_library_names[@]}"; do
    library_is_built "$name" && continue
    log="$windows_libraries/logs/$name.log"
    echo "Building for Windows: $name"
    rm -f "$windows_libraries/stamps/$name"
    # A shell of its own, which ends where a step of the recipe fails: inside a condition none does.
    if ! project="$project" jobs="$jobs" windows_libraries="$windows_libraries" \
      bash -euo pipefail "$project/packaging/windows/recipes.sh" "$name" >"$log" 2>&1; then
      tail -n 30 "$log" | cut -c -400 >&2
      echo "$name could not be built for Windows; everything that was said is in ${log#"$project/"}" >&2
      return 1
    fi
    { recipe_of "$name"; given_archive "$name"; } >"$windows_libraries/stamps/$name"
  done
}

# An archive that is given now must be the one that was taken; without one, what was taken then is as good as what is built.
library_is_built() {  # NAME
  local recipe="" given=""
  { read -r recipe; read -r given; } 2>/dev/null <"$windows_libraries/stamps/$1"
  [ "$recipe" = "$(recipe_of "$1")" ] || return 1
  [ -z "$(given_archive "$1")" ] || [ "$given" = "$(given_archive "$1")" ]
}

# Changes whenever what a library is made from, or how, does.
recipe_of() {  # NAME
  { declare -f "build_$1"; source_rows "$1"; "$windows_target-gcc-posix" -dumpfullversion; } 2>/dev/null | checksum_of -
}

# Of the archive in the place of what would be built; nothing where there is none.
given_archive() {  # NAME
  if [ "$1" = qt ] && [ -n "${KESTRIN_WINDOWS_QT-}" ]; then checksum_of "$KESTRIN_WINDOWS_QT"; fi
}
