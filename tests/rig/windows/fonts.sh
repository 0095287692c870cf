# SPDX-License-Identifier: MIT
# Sourced by scripts/tests/windows.sh: sound fonts served on one system and fetched on the other.
# shellcheck shell=bash disable=SC2154  # project and the names that begin with windows_: of who sources this

windows_fonts_suite() { section "Windows: sound fonts from system to system" fonts_between_systems; }

fonts_folder="$windows_build/fonts"

fonts_between_systems() {
  rm -rf "$fonts_folder"
  mkdir -p "$fonts_folder"
  check "Windows serves" fetch_fonts_from windows
  check "this system serves" fetch_fonts_from native
}

kestrinctl_on() {  # SYSTEM ARGUMENTS...
  local system="$1"
  shift
  if [ "$system" = windows ]; then
    exec env LC_ALL=C.UTF-8 "$wine_program" "$windows_folder/kestrinctl.exe" "$@" </dev/null
  else
    exec "$project/build/release/bin/kestrinctl" "$@" </dev/null
  fi
}

# Both systems fetch what the one serves; it is then what is offered. The server ends whatever comes of that.
fetch_fonts_from() {  # SYSTEM
  local address server system store ended status=0
  mkfifo "$fonts_folder/said-by-$1"
  (kestrinctl_on "$1" fonts serve "$windows_build/demo/fonts") >"$fonts_folder/said-by-$1" 2>"$fonts_folder/errors-of-$1" &
  server=$!
  exec {said}<"$fonts_folder/said-by-$1"
  read -r -t 60 address <&"$said"
  for system in windows native; do
    store="$fonts_folder/$1-to-$system"
    mkdir -p "$store"
    (kestrinctl_on "$system" --board sim --program-folder "$store" fonts update --server "$address") || { status=1; continue; }
    has_fonts "$store" "$windows_build/demo/fonts" || { echo "what came to $store is not what was served"; status=1; }
  done
  kill -INT $server
  wait $server
  ended=$?
  exec {said}<&-
  [ $ended -eq 130 ] || { echo "the server ended with $ended: $(cat "$fonts_folder/errors-of-$1")"; return 1; }
  return $status
}
