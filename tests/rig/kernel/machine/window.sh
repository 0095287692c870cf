# SPDX-License-Identifier: MIT
# Sourced by the suites with a window. The window runs as an ordinary person, on this computer's own files: the host's root is
# mounted read-only, and what has to be written there lies over it.
# shellcheck shell=dash

host=/mnt

mount_host() {
  local place
  load virtio_pci
  load 9pnet_virtio
  load 9p
  mount -t 9p -o trans=virtio,version=9p2000.L,msize=512000,ro,cache=loose host $host || verdict 1 "the host's root"
  mkdir -p /run/programs
  mount -t 9p -o trans=virtio,version=9p2000.L,msize=512000,ro,cache=loose programs /run/programs ||
    verdict 1 "the folder of the programs"
  mount -t devpts devpts /dev/pts
  for place in proc sys dev run; do mount --rbind /$place $host/$place; done
  # The message bus does not start for somebody whom the computer does not know.
  for place in etc/passwd etc/group; do mount --bind /$place $host/$place; done
  for place in tmp var/tmp; do
    mount -t tmpfs tmp $host/$place
    chmod 1777 $host/$place
  done
}

# Somebody with mouse, keyboard and screen reader, in the machine's own session.
sit_down() {  # USER-NUMBER GROUP-NUMBER...; the first group is the person's own
  local user="$1" groups
  shift
  groups="$(echo "$*" | tr ' ' ,)"
  mkdir -p $host/var/tmp/home
  chown "$user:$1" $host/var/tmp/home
  mkfifo /run/orders /run/answers
  # Open for both directions, so that neither side waits for the other to come.
  exec 3<>/run/orders 4<>/run/answers
  chroot $host /usr/bin/setpriv --reuid="$user" --regid="$1" --groups="$groups" \
    /usr/bin/env -i PATH=/usr/bin:/bin HOME=/var/tmp/home TMPDIR=/var/tmp/home LC_ALL=C.UTF-8 \
    /run/programs/kestrin_kernel_window </run/orders >/run/answers 2>/tmp/window.errors &
  check "the desktop starts" hear
}
# The answer to the last order.
hear() {
  local answer="no: there is no answer"
  # shellcheck disable=SC3045
  read -t 150 -r answer <&4
  [ "$answer" = ok ] && return 0
  echo "$answer" | tr '\t' '\n'
  tail -n 5 /tmp/window.errors
  return 1
}
window() {  # ORDER WORD...
  printf '%s\t' "$@" >&3
  echo >&3
  hear
}

window_has_a_board() { has_open "$(pidof kestrin)" hidraw; }
# How quickly the window notices is seen from outside: it opens the board's node, and closes it.
check_plug_is_noticed() {  # NAME
  local before took
  before="$(log_count "$1" OPENED)"
  plug "$1"
  await "the window to open the board" log_counts "$1" OPENED $((before + 1))
  took="$(echo "$(log_time "$1" PLUGGED) $(log_time "$1" OPENED)" | awk '{ printf "%.2f", $2 - $1 }')"
  check "plugging in is noticed within 1 s ($took s)" is_at_most "$took" 1
}
check_unplug_is_noticed() {  # NAME
  local took
  unplug "$1"
  await "the window to close the board" not window_has_a_board
  took="$(seconds_since "$(log_time "$1" UNPLUGGED)")"
  check "pulling out is noticed within 1 s ($took s)" is_at_most "$took" 1
}
