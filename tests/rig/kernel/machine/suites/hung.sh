# SPDX-License-Identifier: MIT
# A board that hangs: it is on the bus and takes nothing. On USB the kernel holds each write for 5 s before it gives up; programs
# say so after the first, and Ctrl-C does not wait for it. Over uhid the kernel takes the reports itself, and the board looks
# like one that erases: that is waited for, unless Ctrl-C says otherwise. The 5 s are the kernel's own, so how long a program
# took tells how many writes it tried.
# takes: 45 s
# shellcheck shell=dash disable=SC2154  # demo: of the harness
load_uhid
load_usb 0

is_stopped() { grep -q "^State:.T" "/proc/$(cat "/tmp/$1.pid")/status"; }  # NAME
# Whether a program has the node open, and so is about to write, writes, or waits.
is_held() { has_open "$program" "$(node_of "$1")"; }  # NAME

try_hung_board() {  # NAME
  step "$1: download that it hangs in" 1 "connection-lost" kestrinctl --json download "$demo"
  check "$1: it hangs" is_stopped "$1"
  if [ "$1" != uhid ]; then
    # While a write is held, by a program that has ended or by whom ever, the kernel lets nobody open any node.
    await "the end of what that download left behind" not pidof kestrin-writer
    step "$1: info" 1 "" kestrinctl --json info
    check "$1: it gave up after one write ($took s)" is_at_most "$took" 9
  fi

  start --json info
  await "the program to open the board" is_held "$1"
  kill -INT "$program"
  before="$(now)"
  check "$1: info, Ctrl-C" ended_with 130
  took="$(seconds_since "$before")"
  check "$1: it did not wait for the board ($took s)" is_at_most "$took" 2

  tell "$1" CONT
  step "$1: info, awake again" 0 '"serial": "4B535401"' kestrinctl --json info
  step "$1: download, awake again" 0 '"outcome": "success"' kestrinctl --json download "$demo"
}

topic "USB with an OUT endpoint"
gadget usb 0 board=id=4133 hangat=500
try_hung_board usb
end_gadget usb 0

topic "USB without an OUT endpoint"
gadget control 0 board=id=4133 hangat=500 out=0
try_hung_board control
end_gadget control 0

topic "uhid"
board uhid board=id=4133 hangat=500
try_hung_board uhid
end uhid
