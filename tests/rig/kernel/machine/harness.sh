# SPDX-License-Identifier: MIT
# Sourced by init in front of a suite. A suite is a list of steps and checks; each prints one line that begins with "ok" or
# "FAIL", the latter followed by what was seen. Nothing here waits for a time to pass: everything waits for something to be
# so, and no longer than $patience seconds.
# shellcheck shell=dash disable=SC2034  # what only suites use

passed=0
failed=0
patience=30
demo=/run/demo/demo.lscfg
rule=/etc/udev/rules.d/70-kestrin.rules

now() { cut -d ' ' -f 1 /proc/uptime; }
seconds_since() { echo "$1 $(now)" | awk '{ printf "%.2f", $2 - $1 }'; }

verdict() {  # STATUS NAME
  if [ "$1" = 0 ]; then
    passed=$((passed + 1))
    echo "ok   $2"
  else
    failed=$((failed + 1))
    echo "FAIL $2"
  fi
}

# What comes next; says in the log where one is.
topic() { echo "-- $*"; }

# Runs a command: its status must be the wanted one (or one of several with "|" between), and its output or its errors must
# hold a line that fits the extended regular expression ("" for anything). Both stay in /tmp/out and /tmp/errors, and how long
# it took in $took.
step() {  # NAME STATUS PATTERN COMMAND...
  local name="$1" wanted="$2" pattern="$3" start status good=0
  shift 3
  start="$(now)"
  "$@" >/tmp/out 2>/tmp/errors
  status=$?
  took="$(seconds_since "$start")"
  case "|$wanted|" in *"|$status|"*) ;; *) good=1 ;; esac
  [ -z "$pattern" ] || cat /tmp/out /tmp/errors | grep -Eq -e "$pattern" || good=1
  verdict $good "$name ($took s, status $status)"
  if [ $good -ne 0 ]; then
    echo "     wanted: status $wanted, \"$pattern\", of: $*"
  elif [ -z "$verbose" ]; then
    return 0
  fi
  sed 's/^/     | /' /tmp/out | head -n 40
  sed 's/^/     ! /' /tmp/errors | head -n 40
}

# The same for a command whose status alone counts.
check() {  # NAME COMMAND...
  local name="$1" status
  shift
  "$@" >/tmp/checked 2>&1
  status=$?
  verdict $status "$name"
  [ $status -eq 0 ] || sed 's/^/     ! /' /tmp/checked | head -n 20
}

not() { ! "$@"; }
is_at_most() { echo "$1 $2" | awk '{ exit !($1 <= $2) }'; }

# Waits until a command succeeds. When it does not, that is a failed check, and the status is 1.
await() {  # WHAT COMMAND...
  local what="$1" start
  shift
  start="$(now)"
  until "$@" >/dev/null 2>&1; do
    if ! is_at_most "$(seconds_since "$start")" "$patience"; then
      verdict 1 "waited for $what in vain"
      return 1
    fi
    usleep 20000
  done
}

# --- Boards ---
# A board is known by its name, which is also the last word of the name that the kernel knows it by. Its log is in
# /tmp/NAME.log: "SECONDS WHAT".

load() {  # MODULE [parameter for that module]
  local file name parameter
  while read -r file; do
    name="$(basename "$file" .ko | tr - _)"
    [ -d "/sys/module/$name" ] && continue
    parameter=""
    [ "$name" != "$1" ] || parameter="${2-}"
    # shellcheck disable=SC2086
    insmod "/rig/modules/$file" $parameter || verdict 1 "the module $name"
  done <"/rig/modules/$1.order"
}

load_uhid() { load hid_generic && load uhid; }

# An ordinary name for a node, "/dev/hidrawN"; nothing while there is none.
node_of() {  # NAME
  local one
  for one in /sys/class/hidraw/*; do
    if grep -q "^HID_NAME=.* $1\$" "$one/device/uevent" 2>/dev/null; then
      echo "/dev/${one##*/}"
      return 0
    fi
  done
  return 1
}

log_says() { grep -q " $2" "/tmp/$1.log"; }               # NAME WORD
log_count() { grep -c " $2" "/tmp/$1.log"; }              # NAME WORD
log_counts() { [ "$(log_count "$1" "$2")" -ge "$3" ]; }   # NAME WORD NUMBER
log_time() { grep " $2" "/tmp/$1.log" | tail -n 1 | cut -d ' ' -f 1; }  # NAME WORD -> of the last such line
await_log() { await "\"$2\" in the log of $1" log_says "$1" "$2"; }     # NAME WORD

udevd_runs() { pidof systemd-udevd >/dev/null; }
# How many of these there are; a pattern that fits nothing stays as it is.
count() {  # FILE...
  [ -e "$1" ] || set --
  echo $#
}
# Whether udevd has dealt with all that came and went: then it has a file for every node, and no other.
udevd_is_done() {
  local major
  udevd_runs || return 0
  major="$(awk '$2 == "hidraw" { print $1 }' /proc/devices)"
  [ "$(count /run/udev/data/"c$major":*)" -eq "$(count /sys/class/hidraw/*)" ] && udevadm settle
}
# Whether programs find it, and with the permissions that it is to have.
is_usable() {  # NAME
  local node
  node="$(node_of "$1")" && [ -c "$node" ] && udevd_is_done
}
is_gone() {  # NAME
  ! node_of "$1" && ! grep -q " $1\$" /sys/bus/usb/devices/*/product 2>/dev/null && udevd_is_done
}
await_usable() { await "the node of $1" is_usable "$1"; }
await_gone() { await "the end of the node of $1" is_gone "$1"; }

# Starts a board over uhid and waits until it can be used.
board() {  # NAME KEY=VALUE...
  local name="$1"
  shift
  /rig/board uhid "name=Kestrin $name" "$@" 2>"/tmp/$name.log" &
  echo $! >"/tmp/$name.pid"
  case " $* " in *" late=1 "* | *" flap=1 "*) return 0 ;; esac
  await_log "$name" PLUGGED && await_usable "$name"
}

# Makes gadget NUMBER (0 or 1) on an emulated USB controller, starts its board and plugs it in.
gadget() {  # NAME NUMBER KEY=VALUE...
  local name="$1" number="$2"
  shift 2
  /rig/gadget.sh make "$number" "$name" || verdict 1 "the gadget $name"
  /rig/board usb "/run/functions$number" "/sys/kernel/config/usb_gadget/g$number/UDC" "dummy_udc.$number" "$@" 2>"/tmp/$name.log" &
  echo $! >"/tmp/$name.pid"
  await_log "$name" READY && plug "$name"
}

load_usb() {  # high speed: 0 or 1
  load usbhid
  load hid_generic
  load libcomposite
  load usb_f_fs
  load dummy_hcd "is_high_speed=$1 num=2"
}

tell() { kill "-$2" "$(cat "/tmp/$1.pid")"; }  # NAME SIGNAL
plug() {  # NAME
  local before
  before="$(log_count "$1" PLUGGED)"
  tell "$1" USR2
  await "the board $1 to be plugged in" log_counts "$1" PLUGGED $((before + 1))
  await_usable "$1"
}
unplug() {  # NAME
  local before
  before="$(log_count "$1" UNPLUGGED)"
  tell "$1" USR1
  await "the board $1 to be pulled out" log_counts "$1" UNPLUGGED $((before + 1))
  await_gone "$1"
}
# Lets a board that flaps stay.
plug_for_good() {  # NAME
  tell "$1" USR2
  await "the board $1 to stay" log_says "$1" STAYS && await_usable "$1"
}
# Takes boards away for good; the state that they keep in a folder stays.
end() {  # NAME...
  local name process
  for name in "$@"; do
    process="$(cat "/tmp/$name.pid")"
    kill -CONT "$process"
    kill -TERM "$process"
    wait "$process" 2>/dev/null
    await_gone "$name"
  done
}
end_gadget() {  # NAME NUMBER
  end "$1"
  /rig/gadget.sh remove "$2" || verdict 1 "removing the gadget $1"
}

# --- People ---

as_user() {  # USER COMMAND...
  local user="$1" word line=""
  shift
  for word in "$@"; do line="$line '$word'"; done
  su -s /bin/sh "$user" -c "HOME=/home/$user; export HOME; exec $line"
}

start_udevd() {
  mkdir -p /run/udev
  /usr/lib/systemd/systemd-udevd --daemon 2>/tmp/udevd.errors
  await "udevd" test -S /run/udev/control
  udevadm trigger
  udevadm settle
}

# The same set in the simulator inside the process: what a board's flash is to be.
simulate_download() {  # FOLDER [further keys of the simulated board]
  kestrinctl --json --board "sim:dir=$1${2:+,$2}" download "$demo" >/tmp/simulated 2>&1 ||
    verdict 1 "the download into the simulator"
}

# Which commands a suite has used: their words, a line each, in /tmp/used.
kestrinctl() {
  echo "$*" >>/tmp/used
  command kestrinctl "$@"
}

# Starts it beside the suite; its number is in $program, what it says in /tmp/started.
start() {
  echo "$*" >>/tmp/used
  /rig/programs/kestrinctl "$@" >/tmp/started 2>&1 &
  program=$!
}
# Whether a process has a file open whose path holds the text.
has_open() { stat -c %N "/proc/$1/fd/"* | grep -q "$2"; }  # PROCESS TEXT
# What a program that was started ended with.
ended_with() { wait "$program"; test $? -eq "$1"; }

# --- At the end of every suite ---

check_the_kernel() {
  dmesg >/tmp/kernel
  check "no program crashed and the kernel is well" not grep -E "segfault|general protection|BUG:|Oops|WARNING:|Call Trace" /tmp/kernel
}
