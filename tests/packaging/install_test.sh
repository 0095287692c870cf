#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs into a folder of its own, holds what is there against docs/packages.md, and runs the programs from there, and from
# where the tree is moved to.
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

# Nothing of the person's is touched, and no window that happens to be open is met.
export HOME="$work/home" XDG_RUNTIME_DIR="$work/run" QT_QPA_PLATFORM=offscreen
unset XDG_DATA_HOME XDG_CONFIG_HOME DISPLAY WAYLAND_DISPLAY
export DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent
mkdir -p "$HOME"
mkdir -m 700 "$XDG_RUNTIME_DIR"

DESTDIR="$work/root" cmake --install "$build" --prefix /usr >"$work/log" || { cat "$work/log"; exit 1; }
files() { (cd "$1" && find . ! -type d); }
files "$work/root/usr" >"$work/list"
expect "what is installed is what docs/packages.md lists" "$sources/scripts/package/compare.sh" installed <"$work/list"

echo "-- a list that differs is told from one that does not"
differs() { ! "$sources/scripts/package/compare.sh" installed >"$work/said"; }
expect "a file less" differs < <(grep -v '/kestrinctl$' "$work/list")
expect "it is named" grep -qxF 'in docs/packages.md, but not there: bin/kestrinctl' "$work/said"
expect "a file more" differs < <(cat "$work/list"; echo ./share/kestrin/more)
expect "it is named" grep -qxF 'not in docs/packages.md: share/kestrin/more' "$work/said"

echo "-- the examples name their sounds where they get"
expect "each by its whole path" [ "$(grep -c '^/usr/share/kestrin/Examples/[^/]*\.lsu' "$work/root/usr/share/kestrin/Examples/demo.lscfg")" -eq 17 ]
expect "and no other" [ "$(grep -c '\.lsu' "$work/root/usr/share/kestrin/Examples/demo.lscfg")" -eq 17 ]
expect "nothing of the build's places is told" [ "$(grep -rlF "$build" "$work/root/usr/share" | wc -l)" -eq 0 ]

# The catalogue, the examples and, with the window, a picture are read from the tree.
try_programs() {  # TREE
  local tree="$1" window picture="$1/share/kestrin/kestrin.bmp" status=0
  expect "the catalogue is found" grep -qF 'Prism RGB 9W' <(cd / && "$tree/bin/kestrinctl" led types)
  expect "the examples are sent" grep -qF '"outcome": "success"' \
    <(cd / && "$tree/bin/kestrinctl" --json --quiet --board "sim:dir=$work/board" download "$tree/share/kestrin/Examples/demo.lscfg")
  expect "the board holds them" grep -qF '"verified": true' \
    <(cd / && "$tree/bin/kestrinctl" --json --quiet --board "sim:dir=$work/board" verify "$tree/share/kestrin/Examples/demo.lscfg")
  rm -rf "$work/board"

  # A pipe in the place of a picture: what is written into it is taken once somebody reads the picture there.
  mv "$picture" "$work/picture"
  mkfifo "$picture"
  "$tree/bin/kestrin" --board sim "$tree/share/kestrin/Examples/demo.lscfg" >"$work/window" 2>&1 &
  window=$!
  expect "the window reads its pictures there" timeout 60 dd if="$work/picture" of="$picture" status=none
  kill "$window" 2>/dev/null || true
  wait "$window" || status=$?
  expect "the window ends by the request to, not by itself ($status)" [ "$status" -eq 143 ]
  [ "$status" -eq 143 ] || cat "$work/window"
  rm "$picture"
  mv "$work/picture" "$picture"

  # Nobody listens there, so nothing is fetched; but the place for fonts is made before.
  "$tree/bin/kestrinctl" --board sim fonts update --server 127.0.0.1:1 >/dev/null 2>&1 || true
  expect "fonts go to the person" [ -d "$HOME/.local/share/kestrin/fonts" ]
  rm -rf "$HOME/.local"
  files "$tree" >"$work/after"
  expect "nothing was written into the tree" cmp -s "$work/list" "$work/after"
}

echo "-- in the tree as it was installed"
try_programs "$work/root/usr"
echo "-- in the tree, moved"
mv "$work/root/usr" "$work/another place"
try_programs "$work/another place"

echo "-- by a link on the search path"
mkdir "$work/bin"
ln -s "$work/another place/bin/kestrinctl" "$work/bin/kestrinctl"
expect "the catalogue is found" grep -qF 'Prism RGB 9W' <("$work/bin/kestrinctl" led types)
exit "$failed"
