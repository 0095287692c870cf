# SPDX-License-Identifier: MIT
# Programs that end in the middle, over uhid and over USB: by force, by Ctrl-C, by a board that falls silent. The next
# command finds the board as if nothing had been.
# takes: 75 s
# shellcheck shell=dash disable=SC2154  # demo: of the harness
load_uhid
load_usb 0

# The board holds an answer back, so the program is waiting for it when it ends; then the answer comes all the same.
end_in_the_middle() {  # NAME SIGNAL STATUS
  start --json download "$demo"
  await_log "$1" HOLDS
  kill "-$2" "$program"
  check "$1: ended by $2" ended_with "$3"
  tell "$1" HUP
  step "$1: the next command" 0 '"serial": "0A1B2C3D"' kestrinctl --json info
}
keys="board=id=4133,serial=0A1B2C3D,dir=/tmp/board"
simulate_download /tmp/simulator

topic "Killed while it waits for an answer"
for moment in 3 4 500; do
  board "uhid$moment" $keys "holdat=$moment"
  end_in_the_middle "uhid$moment" KILL 137
  end "uhid$moment"
  gadget "usb$moment" 0 $keys "holdat=$moment"
  end_in_the_middle "usb$moment" KILL 137
  end_gadget "usb$moment" 0
done

topic "Ctrl-C in the writing"
board uhid $keys holdat=500
end_in_the_middle uhid INT 130
end uhid
gadget usb 0 $keys holdat=500
end_in_the_middle usb INT 130
step "usb: download" 0 '"outcome": "success"' kestrinctl --json download "$demo"
check "usb: the flash" cmp /tmp/board/flash.bin /tmp/simulator/flash.bin
end_gadget usb 0

topic "Ended during the erase: the next command meets the answer to it"
for signal in KILL INT TERM; do
  board erasing $keys,erase=4
  start --json download "$demo"
  await_log erasing ERASES
  kill -$signal "$program"
  case $signal in KILL) wanted=137 ;; INT) wanted=130 ;; TERM) wanted=143 ;; esac
  check "ended by $signal" ended_with "$wanted"
  step "info, while the board still erases" 0 '"serial": "0A1B2C3D"' kestrinctl --json info
  step "download" 0 '"outcome": "success"' kestrinctl --json download "$demo"
  check "the flash" cmp /tmp/board/flash.bin /tmp/simulator/flash.bin
  end erasing
done

topic "A board that falls silent"
board silent $keys silentat=300
step "download" 1 connection-lost kestrinctl --json download "$demo"
end silent
gadget silent 0 $keys silentat=300
step "download over USB" 1 connection-lost kestrinctl --json download "$demo"
end_gadget silent 0
