# SPDX-License-Identifier: MIT
# Sourced by scripts/tests/windows.sh: the setup as people use it - installed, used, updated, removed.
# shellcheck shell=bash disable=SC2154  # project, packages_folder and the names that begin with windows_: of who sources this

windows_setup_suite() {
  # Where Wine runs as root, its person is an administrator.
  setup_person="$(id -un)"
  own_programs="$drive/users/$setup_person/AppData/Local/Programs/Kestrin Launcher"
  settings="$drive/users/$setup_person/AppData/Roaming/kestrin"
  section "Windows: the setup, for one person" setup_for_one
  section "Windows: the setup, for everybody" setup_for_all
  section "Windows: the setup, where another program lies" setup_beside_others
}

windows_pictures="$windows_build/pictures"
drive="$windows_build/wine/drive_c"
all_programs="$drive/Program Files/Kestrin Launcher"
strangers="$drive/Strangers"

run_setup() { timeout -k 5 300 "$wine_program" "$packages_folder/kestrin-$windows_version-setup.exe" /S "$@" </dev/null; }

# Everything on the disk, but what lies in folders for passing things, and what a person has set.
files_on_disk() { (cd "$drive" && find . -path '*/Temp' -prune -o -path ".${settings#"$drive"}" -prune -o -print | sort); }
# Everything of ours in the registry, and what is left of a kind of file; the tests that ran before leave folders that file
# dialogs have shown.
keys_in_registry() {
  local root all
  for root in HKCU HKLM; do
    all="$(run_wine reg query "$root\\Software" /s </dev/null)" || { echo "$root cannot be listed"; return 1; }
    tr -d '\r' <<<"$all" | grep -iE 'kestrin|\\\.(lscfg|ldset|lsu)' | grep -v 'Software\\Wine\\'
  done
  return 0
}
holds_the_keys() {  # KEYS
  local now
  now="$(keys_in_registry)" || { echo "$now"; return 1; }
  diff <(echo "$1") <(echo "$now")
}

setup_for_one() {
  local before keys after own="$own_programs/Examples/my own.lsu"
  local set="$own_programs/Examples/demo.lscfg" catalogue="$own_programs/KestrinLEDS.ldcfg"
  remove_leftovers
  before="$(files_on_disk)"
  keys="$(keys_in_registry)"
  check "the setup runs silently" run_setup
  check "it installs what the zip holds, and an uninstaller" holds_the_folder "$own_programs"
  check "it installs what docs/packages.md lists" listed_as_documented "$own_programs"
  check "the start menu has it" test -e "$drive/users/$setup_person/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Kestrin Launcher.lnk"
  check "Windows' list of programs has it" registry_says \
    'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Kestrin Launcher' DisplayVersion "$windows_version"
  check "a set is opened by it" registry_says 'HKCU\Software\Classes\Kestrin.SoundSet\shell\open\command' '' 'kestrin.exe" "%1"'
  check "settings for LEDs are opened by it" registry_says 'HKCU\Software\Classes\Kestrin.LedSettings\shell\open\command' '' 'kestrin.exe" "%1"'
  for ending in lscfg ldset lsu; do
    check "files .$ending have a kind" registry_says "HKCU\\Software\\Classes\\.$ending" '' 'Kestrin\.'
  done
  check "the installed kestrinctl downloads and verifies the examples" installed_download
  check "the installed kestrinctl imports a sound and a packed set" installed_import
  cp "$own_programs/Examples/idle.lsu" "$own"
  check "the window, and a setup while it is open" installed_window
  check "a setup while kestrinctl runs" installed_server
  for file in "$set" "$catalogue"; do echo "a person's change" >>"$file"; done
  check "the setup runs again over what is there" run_setup
  check "and installs the same" holds_the_folder "$own_programs" "$own" "$set.mine" "$catalogue.mine"
  for file in "$set" "$catalogue"; do
    check "what a person has changed is kept in ${file##*/}.mine" ends_with "$file.mine" "a person's change"
    echo "another change" >>"$file"
  done
  check "the uninstaller" remove_silently "$own_programs"
  after="$(files_on_disk)"
  check "nothing is left but a person's own files" diff <(echo "$after") \
    <({ echo "$before"; printf ".%s\n" "${own_programs#"$drive"}" "${own_programs#"$drive"}/Examples" "${own#"$drive"}" \
      "${set#"$drive"}".mine{,2} "${catalogue#"$drive"}".mine{,2}; } | sort)
  for file in "$set" "$catalogue"; do
    check "what was kept before still is, in ${file##*/}.mine" ends_with "$file.mine" "a person's change"
    check "what a person has changed since is kept in ${file##*/}.mine2" ends_with "$file.mine2" "another change"
  done
  check "what a person has set is still there" test -s "$settings/kestrin.ini"
  check "nothing is left in the registry" holds_the_keys "$keys"
  remove_leftovers
}

setup_for_all() {
  local before keys
  remove_leftovers
  before="$(files_on_disk)"
  keys="$(keys_in_registry)"
  check "the setup runs silently" run_setup /AllUsers
  check "it installs what the zip holds, and an uninstaller" holds_the_folder "$all_programs"
  check "everybody's start menu has it" test -e "$drive/ProgramData/Microsoft/Windows/Start Menu/Programs/Kestrin Launcher.lnk"
  check "Windows' list of programs has it" registry_says \
    'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Kestrin Launcher' DisplayVersion "$windows_version"
  check "a set is opened by it" registry_says 'HKLM\Software\Classes\Kestrin.SoundSet\shell\open\command' '' 'kestrin.exe" "%1"'
  check "the uninstaller" remove_silently "$all_programs"
  check "nothing is left" diff <(echo "$before") <(files_on_disk)
  check "nothing is left in the registry" holds_the_keys "$keys"
}

# Into a folder that is another program's, and then without the older installation elsewhere.
setup_beside_others() {
  local before keys ours="$strangers/Kestrin Launcher"
  remove_leftovers
  before="$(files_on_disk)"
  keys="$(keys_in_registry)"
  mkdir -p "$strangers"
  echo "no program of ours" >"$strangers/uninstall.exe"
  check "the setup runs silently" run_setup
  check "the setup runs into another program's folder" run_setup '/D=C:\Strangers'
  check "which stays as it was" diff <(cd "$strangers" && echo * && cat uninstall.exe) <(echo "Kestrin Launcher uninstall.exe" && echo "no program of ours")
  check "it installs into a folder of its own" holds_the_folder "$ours"
  check "it is the one that is registered" registry_says 'HKCU\Software\Kestrin Launcher' InstallLocation 'C:\\Strangers\\Kestrin Launcher'
  check "the older one's uninstaller" remove_silently "$own_programs"
  check "which has gone" [ ! -e "$own_programs" ]
  check "the newer one is whole" holds_the_folder "$ours"
  check "it is still the one that is registered" registry_says 'HKCU\Software\Kestrin Launcher' InstallLocation 'C:\\Strangers\\Kestrin Launcher'
  check "sets are still opened by it" registry_says 'HKCU\Software\Classes\Kestrin.SoundSet\shell\open\command' '' 'C:\\Strangers\\Kestrin Launcher\\kestrin.exe'
  check "it runs a second time, into the same place" run_setup
  check "and installs the same" holds_the_folder "$ours"
  check "its uninstaller" remove_silently "$ours"
  rm -rf "$strangers"
  check "nothing is left" diff <(echo "$before") <(files_on_disk)
  check "nothing is left in the registry" holds_the_keys "$keys"
}

# Of a run that was broken off, and what the checks themselves have put there.
remove_leftovers() {
  local folder
  for folder in "$own_programs" "$all_programs" "$strangers/Kestrin Launcher"; do
    if [ -e "$folder/uninstall.exe" ]; then remove_silently "$folder"; fi
    rm -rf "$folder"
  done
  rm -rf "$strangers"
  # The disk is compared: what Windows makes for every program's first run has to be there already.
  rmdir "$drive/users/$setup_person/AppData/Local/Programs" 2>/dev/null
  mkdir -p "$drive/users/$setup_person/AppData/Local/Programs"
}

holds_the_folder() {  # FOLDER [OWN-FILE...]
  local folder="$1" file
  shift
  diff <({ cd "$windows_folder" && find . -type f; echo ./uninstall.exe; for file in "$@"; do echo ".${file#"$folder"}"; done; } | sort) \
    <(cd "$folder" && find . -type f | sort) &&
    [ -z "$(diff -rq "$windows_folder" "$folder" | grep -v "^Only in $folder" | tee /dev/stderr)" ]
}

listed_as_documented() { (cd "$1" && find . ! -type d) | "$project/scripts/package/compare.sh" windows; }  # FOLDER

registry_says() {  # KEY VALUE TEXT
  local -a value=(/ve)
  if [ -n "$2" ]; then value=(/v "$2"); fi
  says "$3" run_wine reg query "$1" "${value[@]}"
}

installed_download() {
  local said
  cd "$own_programs" || return
  for command in download verify; do
    said="$(run_wine ./kestrinctl.exe --board "sim:dir=$(windows_path "$windows_build/installed-board")" "$command" Examples/demo.lscfg </dev/null 2>&1)" ||
      { echo "$command ended with $?: $said"; return 1; }
  done
}

# A sound and a packed set, of 17 sounds, are read by the libraries that came with the programs.
installed_import() {
  local made
  made="$(windows_path "$windows_build/installed-sounds")"
  rm -rf "$windows_build/installed-sounds"
  mkdir "$windows_build/installed-sounds"
  cd "$own_programs" || return
  run_wine ./kestrinctl.exe sound wav Examples/boot.lsu --output "$made\\boot.wav" </dev/null &&
    run_wine ./kestrinctl.exe config pack Examples/demo.lscfg --output "$made\\pack.zip" </dev/null &&
    run_wine ./kestrinctl.exe sound import "$made\\boot.wav" "$made\\pack.zip" --output "$made" </dev/null || return
  [ "$(find "$windows_build/installed-sounds" -name '*.lsu' -size +1k | wc -l)" -eq 18 ]
}

ends_with() { [ "$(tail -n 1 "$1")" = "$2" ]; }  # FILE LINE

# The uninstaller goes on as a copy of itself. That takes its own file away in the folder, then the folder, and last what
# the registry says of it.
remove_silently() {  # FOLDER
  local tries
  run_wine "$1/uninstall.exe" /S </dev/null || return
  for ((tries = 0; tries < 600; ++tries)); do
    [ -e "$1/uninstall.exe" ] || is_registered "$1" || return 0
    sleep 0.1
  done
  echo "it did not end"
  return 1
}
is_registered() {  # FOLDER
  local root folder="C:${1#"$drive"}"
  for root in HKCU HKLM; do
    run_wine reg query "$root\\Software\\Kestrin Launcher" /v InstallLocation </dev/null 2>/dev/null | tr -d '\r' | grep -qF "${folder//\//\\}" && return
  done
  return 1
}

# As long as it serves, its program cannot be replaced.
installed_server() {
  local server address status
  rm -f "$windows_build/server"
  mkfifo "$windows_build/server"
  (cd "$own_programs" && exec "$wine_program" ./kestrinctl.exe fonts serve "$windows_build/demo/fonts" </dev/null) >"$windows_build/server" 2>&1 &
  server=$!
  exec {said}<"$windows_build/server"
  read -r -t 60 address <&"$said"
  echo "it serves at ${address-nothing}"
  setup_waits_for "$server"
  status=$?
  kill -INT $server
  wait $server
  exec {said}<&-
  return $status
}

# Opens the installed window, looks at it, tries to install over it, and closes it.
installed_window() {
  local program status
  mkdir -p "$windows_pictures"
  (cd "$own_programs" && LC_ALL=C.UTF-8 exec "$wine_program" ./kestrin.exe --board sim Examples/demo.lscfg </dev/null >"$windows_build/window.log" 2>&1) &
  program=$!
  look_at_window && setup_waits_for "$program"
  status=$?
  # As a person closes it.
  run_wine taskkill /im kestrin.exe </dev/null >/dev/null 2>&1
  if ! ends_within "$program" 600; then
    echo "the window did not close"
    kill -KILL $program
    status=1
  fi
  wait $program || { echo "the window ended with $?: $(cat "$windows_build/window.log")"; status=1; }
  return $status
}

ends_within() {  # PROCESS TENTHS-OF-A-SECOND
  local tries
  for ((tries = 0; tries < $2; ++tries)); do
    kill -0 "$1" 2>/dev/null || return 0
    sleep 0.1
  done
  return 1
}

# A window is drawn when it has many colours and none of them takes nearly all of it.
look_at_window() {
  local window tries picture="$windows_pictures/installed.png" colours=0 commonest=0 all=1
  for ((tries = 0; tries < 120; ++tries)); do
    sleep 0.5
    window="$(xdotool search --onlyvisible --name 'Kestrin' 2>/dev/null | head -n 1)"
    [ -n "$window" ] || continue
    import -window "$window" "$picture" 2>/dev/null || continue
    colours="$(identify -format %k "$picture")"
    all="$(identify -format '%[fx:w*h]' "$picture")"
    commonest="$(convert "$picture" -format %c histogram:info: | awk '{ sub(":", "", $1); if ($1 > most) most = $1 } END { print most + 0 }')"
    if [ "$colours" -ge 200 ] && [ $((commonest * 10)) -lt $((all * 9)) ]; then return 0; fi
  done
  echo "no window was drawn: $colours colours, the commonest on $commonest of $all points"
  return 1
}

# Nothing is replaced under a program that runs, and nobody is asked silently.
setup_waits_for() {  # PROCESS
  local before status
  before="$(ls -l --time-style=full-iso "$own_programs")"
  run_setup
  status=$?
  [ $status -eq 2 ] || { echo "the setup ended with $status"; return 1; }
  kill -0 "$1" || { echo "the program has gone"; return 1; }
  [ "$before" = "$(ls -l --time-style=full-iso "$own_programs")" ] || { echo "files were replaced"; return 1; }
}
