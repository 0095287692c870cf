# SPDX-License-Identifier: MIT
# Sourced by scripts/tests/windows.sh: the real HID library with a board behind the stand-ins for two of Windows' libraries.
# shellcheck shell=bash disable=SC2154  # project and the names that begin with windows_: of who sources this

windows_board_suite() { section "Windows: a board over HID" board_over_hid; }

board_folder="$windows_build/board"

board_over_hid() {
  local pipe='\\.\pipe\kestrin_board' made="$windows_build/tests/rig/windows" line
  local -x WINEDLLOVERRIDES="hid,cfgmgr32=n;$WINEDLLOVERRIDES" KESTRIN_STAND_IN_BOARD="$pipe"
  rm -rf "$board_folder"
  cp -r "$windows_folder" "$board_folder"
  cp "$made/hid.dll" "$made/cfgmgr32.dll" "$board_folder/"

  KESTRIN_STAND_IN_BOARD="" check "without a board there is none" says '"devices": *\[\]' kestrinctl_for_windows devices

  coproc board { WINEPATH="$(windows_path "$board_folder")" run_wine "$made/kestrin_board_on_pipe.exe" "$pipe" "$(windows_path "$board_folder/flash.bin")" 2>&1; }
  local board_process=$!
  if ! read -r -t 60 line <&"${board[0]}" || [ "${line%$'\r'}" != ready ]; then
    fail "the board did not start: $line"
    kill $board_process 2>/dev/null
    return
  fi
  check "the board is found, with every letter of its name" says '"Kestrin Blått Ж"' kestrinctl_for_windows devices
  check "info" says '"serial"' kestrinctl_for_windows info
  check "a download of the examples" says '"outcome": *"success"' kestrinctl_for_windows download "Examples/demo.lscfg"
  check "their verification" says '"verified": *true' kestrinctl_for_windows verify "Examples/demo.lscfg"

  # It ends with its input, and then writes what it holds.
  exec {board[1]}>&-
  wait $board_process
  rm -rf "$board_folder/linux"
  check "the same download on this system" native_kestrinctl --board "sim:dir=$board_folder/linux" download "$board_folder/Examples/demo.lscfg"
  check "both boards hold the same bytes" holds_same_bytes "$board_folder/flash.bin" "$board_folder/linux/flash.bin"
}

# A board that is kept in a folder keeps what is behind its last sound to itself: erased flash.
holds_same_bytes() {  # WHOLE KEPT
  local size
  size="$(stat -c %s "$2")"
  [ "$size" -gt 1000000 ] && cmp -n "$size" "$1" "$2" && [ -z "$(tail -c "+$((size + 1))" "$1" | tr -d '\377' | head -c 1)" ]
}

kestrinctl_for_windows() { (cd "$board_folder" && run_wine ./kestrinctl.exe --json "$@" </dev/null); }
native_kestrinctl() { "$project/build/release/bin/kestrinctl" --json "$@" </dev/null; }

says() {  # EXPRESSION COMMAND...
  local expression="$1" said
  shift
  said="$("$@" 2>&1)" || { echo "ended with $?: $said"; return 1; }
  grep -qE "$expression" <<<"$said" || { echo "said: $said"; return 1; }
}
