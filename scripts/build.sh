# SPDX-License-Identifier: MIT
# Sourced by ./run, ./test and ./package: how a preset is configured.
# shellcheck shell=bash disable=SC2154  # project: of who sources this

jobs="$(nproc 2>/dev/null || echo 2)"

# What CMake starts compilers with, where there is ccache. It keeps what is compiled with headers compiled ahead only when told
# that their macros and dates need no look.
launcher=""
if command -v ccache >/dev/null; then launcher="env;CCACHE_SLOPPINESS=pch_defines,time_macros;ccache"; fi

configure() {  # PRESET [cmake options]
  local preset="$1"
  shift
  local -a options=("$@")
  if [ -n "$launcher" ]; then options+=("-DCMAKE_CXX_COMPILER_LAUNCHER=$launcher"); fi
  # A build folder that came along when the project was copied or moved belongs to another place.
  local cache="$project/build/$preset/CMakeCache.txt"
  if [ -e "$cache" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$project" "$cache"; then options+=(--fresh); fi
  (cd "$project" && cmake --preset "$preset" "${options[@]}")
}
