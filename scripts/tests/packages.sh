# SPDX-License-Identifier: MIT
# Sourced by scripts/parts.sh: the packages that people install, in fresh systems that have nothing but them.
# shellcheck shell=bash disable=SC2154  # project: of who sources this

. "$project/scripts/package/deb.sh"

# What is made anew in each run, and what is fetched once: a fresh system's tarball and the packages that were installed there.
systems_folder="$project/build/debian"
debian_systems=("bookworm:Debian 12" "trixie:Debian 13")
# The most that the package for Debian may take.
most_bytes=3000000

packages_is_here() {
  local system name
  # What is installed there has been fetched when all of it was installed once.
  for system in "${debian_systems[@]}"; do
    name="$systems_folder/${system%%:*}"
    [ -e "$name.tar" ] && [ -e "$name.complete" ] || return 1
  done
  can_have_systems && [ -z "$(missing_packages build test deb packages 2>/dev/null)" ]
}

packages_suites() {
  local system codename
  if ! can_have_systems; then
    leave_out "packages, systems in a folder need root and a Linux that lets it mount"
    return
  fi
  if ! need_packages deb packages; then
    leave_out "packages, the packages of the sections \"deb\" and \"packages\" in packaging/debian-packages.txt could not be installed"
    return
  fi
  at_end end_packages
  mkdir -p "$systems_folder"
  # These mostly wait for the network, and the package's build computes. Each is a process group of its own, to end as a whole.
  set -m
  for system in "${debian_systems[@]}"; do
    codename="${system%%:*}"
    fetch_system "$codename" >"$systems_folder/$codename.log" 2>&1 &
    fetching+=($!)
  done
  set +m
  section "The package for Debian" check_deb
  wait "${fetching[@]}"
  fetching=()
  deb="$project/build/packages/$(deb_name)"
  if [ ! -e "$deb" ]; then return; fi
  for system in "${debian_systems[@]}"; do
    codename="${system%%:*}"
    if [ ! -e "$systems_folder/$codename.tar" ]; then
      tail -n 3 "$systems_folder/$codename.log"
      leave_out "the package in a fresh ${system#*:}, which could not be fetched; all that was said is in $systems_folder/$codename.log"
    elif ! is_for "$codename"; then
      leave_out "the package in a fresh ${system#*:}, since it was built on a newer system, whose libraries have other names"
    else
      section "The package in a fresh ${system#*:}" prove_deb "$codename"
    fi
  done
}

# What is started here ends with it, and systems need no unmounting: their mounts are gone with their last process.
fetching=()
end_packages() {
  local process
  for process in "${fetching[@]}"; do kill -KILL -- "-$process"; done
  if [ ${#fetching[@]} -gt 0 ]; then wait "${fetching[@]}"; fi
  fetching=()
  end_deb_screen
  rm -rf "$systems_folder"/*.root "$systems_folder"/*.part
}

can_have_systems() { [ "$(id -u)" -eq 0 ] && unshare --mount --pid --fork true 2>/dev/null; }

# A package is for the system on which it was built and for later ones.
is_for() {  # CODENAME
  local built_on
  built_on="$(. /etc/os-release && echo "${VERSION_CODENAME-}")"
  [ "$1" != bookworm ] || [ "$built_on" != trixie ]
}

tells() {  # PATTERN COMMAND...; the pattern is to be found in what the command says
  local said
  said="$("${@:2}" 2>&1)" || { echo "$said"; return 1; }
  grep -E -e "$1" <<<"$said" || { echo "$said"; return 1; }
}
says_nothing() {  # COMMAND...
  local said
  said="$("$@" 2>&1)" && [ -z "$said" ] || { echo "$said"; return 1; }
}

# ---- The package itself

check_deb() {
  rm -f "$project/build/packages/$(deb_name)"
  check "./package deb" "$project/package" deb
  deb="$project/build/packages/$(deb_name)"
  [ -e "$deb" ] || return
  check "it is larger than $most_bytes bytes" test "$(stat -c %s "$deb")" -le $most_bytes
  check "lintian" lintian --allow-root --fail-on error,warning "$deb"
  check "files that docs/packages.md does not name, or that it names and that are not there" compare_with_table
}

compare_with_table() { dpkg-deb --fsys-tarfile "$deb" | tar -t | "$project/scripts/package/compare.sh" deb; }

# ---- Fresh systems

# From where this computer has its own packages.
mirror() { apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Origin: Debian' 'Label: Debian' | head -n 1; }

# The smallest Debian that there is, and a person in it.
fetch_system() {  # CODENAME
  local root="$systems_folder/$1.part"
  if [ -e "$systems_folder/$1.tar" ]; then return 0; fi
  rm -rf "$root" "$systems_folder/$1.complete"
  unshare --mount debootstrap --variant=minbase "$1" "$root" "$(mirror)" || return 1
  rm -f "$root"/var/cache/apt/archives/*.deb
  mkdir -p "$systems_folder/$1.archives"
  as_root apt-get update -q && as_root useradd --create-home person || return 1
  tar -C "$root" -cf "$systems_folder/$1.tar.part" . && mv "$systems_folder/$1.tar.part" "$systems_folder/$1.tar"
  rm -rf "$root"
}

# A command in a system of its own: what it mounts nobody else sees, and when it ends, or whoever called it, all that it
# started ends as well.
inside() {  # ROOT COMMAND...
  unshare --mount --pid --fork --kill-child bash -c '
    trap "exit 130" INT
    trap "exit 143" TERM
    root="$1" archives="${1%.*}.archives"
    shift
    mount -t proc proc "$root/proc" && mount --rbind /sys "$root/sys" && mount --rbind /dev "$root/dev" || exit 1
    if [ -d "$archives" ]; then mount --bind "$archives" "$root/var/cache/apt/archives" || exit 1; fi
    mkdir -p "$root/tmp/.X11-unix"
    if [ -d /tmp/.X11-unix ]; then mount --bind /tmp/.X11-unix "$root/tmp/.X11-unix" || exit 1; fi
    chroot "$root" "$@"
    exit' inside "$@"
}
as_root() {
  inside "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"
}
as_person() {
  inside "$root" runuser -u person -- env -i PATH=/usr/bin:/bin HOME=/home/person LANG=C.UTF-8 "$@"
}
# What a system knows of its server's packages may be from another day than the server's packages.
install() {  # PACKAGE...
  local -a call=(as_root apt-get install -q -y --no-install-recommends -o Dpkg::Options::=--force-unsafe-io "$@")
  "${call[@]}" || { as_root apt-get update -q && "${call[@]}"; }
}
# Whatever was installed with it goes as well, also what something else would recommend or suggest. A package that is gone already
# apt does not know, dpkg does.
purge() { as_root dpkg --purge kestrin && as_root apt-get autoremove -q -y --purge -o APT::AutoRemove::RecommendsImportant=false -o APT::AutoRemove::SuggestsImportant=false; }

# Everything in a system but what apt and dpkg note about it, logs, caches, and the person's own files.
files_of() {  # ROOT
  (cd "$1" && find . \( -path ./var/lib/dpkg -o -path ./var/lib/apt -o -path ./var/cache -o -path ./var/log -o -path ./home/person \
    -o -path ./tmp \) -prune -o -printf '%y %m %u:%g %p %l\n' | sort)
}
nothing_is_left() {  # FILE: the list from before
  local left
  left="$(diff "$1" <(files_of "$root") | grep '^[<>]')"
  [ -z "$left" ] || { echo "$left"; return 1; }
}

# ---- A person's day with it

prove_deb() {  # CODENAME
  local root="$systems_folder/$1.root" before examples failed_before=$failed
  before="$(mktemp)"
  rm -rf "$root"
  mkdir -p "$root"
  tar -C "$root" -xf "$systems_folder/$1.tar"
  cp "$deb" "$root/tmp/"
  files_of "$root" >"$before"

  check "it is installed" install "/tmp/$(deb_name)"
  examples="$(as_root dpkg -L kestrin | grep -m 1 '/Examples/.*\.lscfg$')"
  check "kestrinctl's version" tells "$(deb_name | cut -d _ -f 2)" as_person kestrinctl --version
  check "kestrinctl finds the catalogue of LEDs" tells . as_person kestrinctl led types
  check "the examples go into a simulated board" tells "SUCCESS" as_person kestrinctl --board sim:dir=/home/person/board download "$examples"
  check "the board's flash was written" test -s "$root/home/person/board/flash.bin"
  check "the board holds them" tells '"verified": true' as_person kestrinctl --json --board sim:dir=/home/person/board verify "$examples"
  check "verify sees a bit that is wrong" sees_a_wrong_bit
  check "the examples are packed" as_person kestrinctl config pack "$examples" --output /home/person/pack.zip
  check "a sound becomes a WAV file" as_person kestrinctl sound wav "${examples%/*}/boot.lsu" --output /home/person/boot.wav
  check "both are imported, with all their sounds" tells '^18$' imported /home/person/boot.wav /home/person/pack.zip
  check "the examples are heard as on a saber" as_person kestrinctl saber render "$examples" --script "on; swing; off" --output /home/person/saber.wav
  check_window
  check "it is removed" as_root apt-get remove -q -y kestrin
  check "programs that are still there" test ! -e "$root/usr/bin/kestrin" -a ! -e "$root/usr/bin/kestrinctl"
  check "it is purged" purge
  check "files that are left behind" nothing_is_left "$before"

  # Once more, beside what a desktop has; what that keeps about all programs is to forget this one.
  check "a desktop's tools are installed" install "${desktop_tools[@]}"
  files_of "$root" >"$before"
  check "it is installed beside a desktop's tools" install "/tmp/$(deb_name)"
  check_desktop
  check "it is purged beside a desktop's tools" purge
  check "files that are left behind beside a desktop's tools" nothing_is_left "$before"
  rm -rf "$root" "$before"
  if [ "$failed" -eq "$failed_before" ]; then touch "$systems_folder/$1.complete"; fi
}

# How many sounds are there when these have been imported.
imported() {  # SOURCE...
  as_person kestrinctl sound import "$@" --output /home/person/imported && find "$root/home/person/imported" -name '*.lsu' -size +1k | wc -l
}

sees_a_wrong_bit() {
  local status=0
  printf '\x5a' | dd of="$root/home/person/board/flash.bin" bs=1 seek=5000 conv=notrunc status=none
  as_person kestrinctl --board sim:dir=/home/person/board verify "$examples" || status=$?
  [ $status -eq 1 ]
}

# The screen is this computer's, so that the system needs nothing but the package to show the window.
start_deb_screen() {
  local ready
  ready="$(mktemp -d)"
  mkfifo "$ready/number"
  mkdir -p "$ready/pixels"
  Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp -ac -fbdir "$ready/pixels" 3>"$ready/number" 2>"$ready/said" &
  screen_process=$! screen_folder="$ready"
  read -r screen_number <"$ready/number" && [ -n "$screen_number" ]
}
end_deb_screen() {
  if [ -n "${screen_process-}" ]; then
    kill "$screen_process" && wait "$screen_process"
    rm -rf "$screen_folder"
    screen_process=""
  fi 2>/dev/null
}

# As the desktop would start it, with a set that was double-clicked. There is no board, so it first asks whether to go on.
check_window() {
  local command window process status=0
  command="$(sed -n 's/^Exec=//p' "$root"/usr/share/applications/*.desktop | head -n 1)"
  command="${command/\%[fFuU]/\"$examples\"}"
  if ! start_deb_screen; then
    fail "a screen for the window"
    return
  fi
  mkfifo "$root/tmp/end"
  as_person DISPLAY=":$screen_number" sh -c "$command & read -r line </tmp/end; kill -TERM \$!; wait \$!" >"$screen_folder/window.log" 2>&1 &
  process=$!
  check "the window opens: $command" work_without_a_board
  check "the window shows something" has_colors 300
  timeout 20 sh -c "echo now >'$root/tmp/end'" || kill $process
  wait $process || status=$?
  # Told to end, it ends, and says so.
  check "the window ends when it is told to, with status $status" test $status -eq $((128 + 15))
  end_deb_screen
}
on_screen() { DISPLAY=":$screen_number" timeout 20 xdotool "$@"; }
# Says yes as long as it is asked, until the window is there.
work_without_a_board() {
  local deadline=$((SECONDS + 120)) question
  while [ $SECONDS -lt $deadline ]; do
    if on_screen search --onlyvisible --name 'Kestrin Launcher v' >/dev/null 2>&1; then return 0; fi
    for question in $(on_screen search --onlyvisible --name '^Kestrin Launcher$' 2>/dev/null); do
      on_screen key --window "$question" Return 2>/dev/null
    done
    sleep 0.2
  done
  cat "$screen_folder/window.log"
  return 1
}

# An empty screen has one color. A program may show its window before it has painted it.
has_colors() {  # AT-LEAST
  local deadline=$((SECONDS + 60)) colors=0
  while [ $SECONDS -lt $deadline ]; do
    colors=$(od -An -v -tx4 -w4 "$screen_folder/pixels/Xvfb_screen0" | sort -u | wc -l)
    [ "$colors" -lt "$1" ] || return 0
    sleep 0.2
  done
  echo "only $colors colors"
  return 1
}

desktop_tools=(man-db desktop-file-utils appstream shared-mime-info libglib2.0-bin xdg-utils bash-completion zsh fish)

check_desktop() {
  local file
  while read -r file; do
    case "$file" in
      *.desktop) check "$file" says_nothing as_root desktop-file-validate "$file" ;;
      *.metainfo.xml) check "$file" as_root appstreamcli validate --no-net "$file" ;;
      */man/man[0-9]/*) check "$file" says_nothing as_root sh -c "MANWIDTH=80 MANROFFSEQ='' man --warnings -E UTF-8 -l -Tutf8 -Z '$file' >/dev/null" ;;
    esac
  done < <(as_root dpkg -L kestrin)
  for file in kestrin kestrinctl; do
    check "the page of $file is found" tells "/$file\.1" as_person man -w $file
  done
  check "bash completes a command" tells '^download$' as_person bash -c '. /usr/share/bash-completion/bash_completion
    _completion_loader kestrinctl
    COMP_WORDS=(kestrinctl downl) COMP_CWORD=1 COMP_LINE="kestrinctl downl" COMP_POINT=16
    "$(complete -p kestrinctl | sed "s/.*-F \([^ ]*\).*/\1/")" kestrinctl downl kestrinctl
    printf "%s\n" "${COMPREPLY[@]%% }"'
  check "zsh knows how to complete" tells '^_kestrinctl$' as_person zsh -fc 'autoload -Uz compinit; compinit -u -D; echo $_comps[kestrinctl]'
  check "fish completes a command" tells '^download' as_person fish -c 'complete -C "kestrinctl downl"'
  check_type lscfg application/x-kestrin-sound-set
  check_type ldset application/x-kestrin-led-settings
  check_type lsu application/x-kestrin-sound
  for file in sound-set led-settings; do
    check "the window opens files of this kind: $file" tells 'kestrin\.desktop' as_person gio mime "application/x-kestrin-$file"
  done
}

check_type() {  # ENDING MIME-TYPE
  # Of an empty file no system says more than that.
  as_person sh -c "echo >/home/person/mine.$1"
  check "the type of .$1 files" tells "content-type: $2\$" as_person gio info -a standard::content-type "/home/person/mine.$1"
}
