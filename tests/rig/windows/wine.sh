# SPDX-License-Identifier: MIT
# Sourced by scripts/tests/windows.sh: Wine, with a Windows of its own under build/windows.
# shellcheck shell=bash disable=SC2154  # project and the names that begin with windows_: of who sources this

wine_log="$windows_build/wine.log"

# The program loader itself, where it can be had: the script around it asks for a 32-bit one.
wine_program=/usr/lib/wine/wine64
[ -x "$wine_program" ] || wine_program=wine
wine_server=/usr/lib/wine/wineserver64
[ -x "$wine_server" ] || wine_server=wineserver

# Arguments come by the system's character set, and not all of them are ASCII.
run_wine() { LC_ALL=C.UTF-8 "$wine_program" "$@"; }

# A path as Windows programs see it.
windows_path() { printf 'Z:%s' "${1//\//\\}"; }

wine_screen_server=""

# A screen that nobody sees, with a number that is free. Every program gets it: the first one that runs decides for all that
# come later whether there is a screen.
start_screen() {
  local said="$windows_build/screen" tries
  rm -f "$said"
  Xvfb -displayfd 9 -screen 0 1280x900x24 -nolisten tcp -noreset 9>"$said" >/dev/null 2>&1 </dev/null &
  wine_screen_server=$!
  for ((tries = 0; tries < 300; ++tries)); do
    if [ -s "$said" ]; then
      DISPLAY=":$(cat "$said")"
      export DISPLAY
      return 0
    fi
    sleep 0.1
  done
  return 1
}

# A server that stays makes a start ten times as quick.
start_wine() {
  export WINEPREFIX="$windows_build/wine" WINEDEBUG=-all
  # Neither .NET nor a browser is asked for, and nothing enters our own desktop's menu.
  export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
  # Nobody is to hear the tests.
  export PULSE_SERVER="unix:$windows_build/no-sound-service"
  mkdir -p "$WINEPREFIX"
  start_screen || return
  {
    LC_ALL=C.UTF-8 "$wine_server" -p &&
      run_wine wineboot --init &&
      run_wine winecfg -v win10 &&
      run_wine reg add 'HKCU\Software\Wine\Drivers' /v Audio /d pulse /f &&
      # Dialogs ask for a font that Windows alone has.
      run_wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v 'MS Shell Dlg' /d 'DejaVu Sans' /f
  } >"$wine_log" 2>&1 </dev/null
}

# Ends the programs of this Windows and no other's.
stop_wine() {
  "$wine_server" -k >/dev/null 2>&1
  "$wine_server" -w >/dev/null 2>&1
  if [ -n "$wine_screen_server" ]; then kill "$wine_screen_server" 2>/dev/null; fi
  wine_screen_server=""
}
