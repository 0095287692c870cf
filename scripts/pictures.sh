#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Takes the pictures of the documents anew from the running program, without a display:  scripts/pictures.sh
# With names it takes these scenes only, into FOLDER:  scripts/pictures.sh FOLDER [SCENE-SCHEME...]
set -euo pipefail
project="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)"
. "$project/scripts/packages.sh"
. "$project/scripts/build.sh"

folder="${1:-$project/docs/pictures}"
if [ $# -gt 0 ]; then shift; fi
pictures=("$@")
if [ ${#pictures[@]} -eq 0 ]; then
  pictures=(window-dark window-light downloading-dark setup-light led-dark updating-light doctor-light import-light
    try-dark setup-sensor-light board-chip-light board-differs-light board-held-dark left-set-light start-light)
fi

need_packages build
if [ ! -e "$project/build/release/CMakeCache.txt" ]; then configure release -DKESTRIN_TESTS=OFF; else configure release; fi
cmake --build "$project/build/release" -j "$jobs" --target take_pictures make_demo_set

bin="$project/build/release/bin"
work="$(mktemp -d)"
# A folder as people have them, since its path is seen in the pictures.
sounds="${TMPDIR:-/tmp}/Kestrin sounds"
if [ -e "$sounds" ]; then
  echo "\"$sounds\" is needed for the pictures. Move it away and start again." >&2
  exit 1
fi
trap 'rm -rf "$work" "$sounds"' EXIT
mkdir -p "$folder" "$sounds/Ember knight" "$sounds/Old hums" "$sounds/River stone"
"$bin/make_demo_set" "$sounds"
# What is for an update server.
rm -rf "$sounds/fonts"
for picture in "${pictures[@]}"; do
  QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$work" "$bin/take_pictures" --program "$bin" --sounds "$sounds" \
    --scheme "${picture##*-}" "$folder" "${picture%-*}"
  echo "$folder/$picture.png"
done
