#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Takes the pictures of the documents anew from the running program, without a display:  scripts/pictures.sh
# With names it takes these scenes only, into FOLDER:  scripts/pictures.sh FOLDER [SCENE-SCHEME[:WIDTHxHEIGHT+X+Y]...]
# Behind the colon stands the part that is shown, where the whole window would hide what matters.
set -euo pipefail
project="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)"
. "$project/scripts/packages.sh"
. "$project/scripts/build.sh"

folder="${1:-$project/docs/pictures}"
if [ $# -gt 0 ]; then shift; fi
pictures=("$@")
if [ ${#pictures[@]} -eq 0 ]; then
  pictures=(window-dark window-light downloading-dark setup-light led-dark updating-light doctor-light import-light
    try-dark try-light:640x400+640+75 setup-sensor-light:1124x650+77+98 board-chip-light:640x400+640+0
    board-differs-light:1060x640+110+100 board-held-dark:640x400+320+220 left-set-light:680x425+300+190 start-light)
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
for wanted in "${pictures[@]}"; do
  picture="${wanted%%:*}"
  part="${wanted#"$picture"}"
  QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$work" "$bin/take_pictures" --program "$bin" --sounds "$sounds" \
    --scheme "${picture##*-}" ${part:+--part "${part#:}"} "$folder" "${picture%-*}"
  echo "$folder/$picture.png"
done
