# SPDX-License-Identifier: MIT
# The cable comes out at 20 moments of a download, from the first report to the last, and goes in again. Whatever the moment:
# the program says what happened, the board is there again at once, and in the end nothing is lost.
# takes: 35 s
# shellcheck shell=dash disable=SC2154  # demo: of the harness
load_uhid

topic "A whole run, to count its reports"
board counted board=id=4133,serial=0A1B2C3D,dir=/tmp/counted
step "download" 0 '"outcome": "success"' kestrinctl --json download "$demo"
unplug counted
total="$(sed -n 's/.*UNPLUGGED after \([0-9]*\) reports.*/\1/p' /tmp/counted.log)"
end counted
check "there is enough to interrupt ($total reports)" test "$total" -gt 1000

# From the front: identity, serial number, the detection parameters and the erase, and the first sound; then all along; from the
# end: the table, its checksum, the restart and the farewell, behind both of which all is done.
moments="1 2 3 4 5 6 7"
for part in 1 2 3 4 5 6 7 8 9; do moments="$moments $((total * part / 10))"; done
moments="$moments $((total - 3)) $((total - 2)) $((total - 1)) $total"

# Between two moments the board is plugged in once and stays.
plan=""
for moment in $moments; do plan="$plan,0,$moment"; done
board cut board=id=4133,serial=0A1B2C3D,dir=/tmp/cut "unplugat=${plan#,},0"
step "accel set" 0 '"ImpactTh": 17' kestrinctl --json accel set --ImpactTh 17

number=0
for moment in $moments; do
  number=$((number + 1))
  unplug cut
  plug cut
  if [ "$moment" -ge $((total - 1)) ]; then
    step "moment $number, report $moment: all is written" 0 '"outcome": "success"' kestrinctl --json download "$demo"
  else
    step "moment $number, report $moment" 1 '"outcome": "(connection-lost|memory-check-error)"' kestrinctl --json download "$demo"
  fi
  await_gone cut
  check "it was the cable" log_says cut "UNPLUGGED after $moment reports"
  plug cut
  step "back" 0 '"serial": "0A1B2C3D"' kestrinctl --json info
done

topic "In the end"
step "accel get" 0 '"ImpactTh": 17' kestrinctl --json accel get
step "download" 0 '"outcome": "success"' kestrinctl --json download "$demo"
check "the flash is that of the run that nobody disturbed" cmp /tmp/cut/flash.bin /tmp/counted/flash.bin
step "accel get" 0 '"ImpactTh": 17' kestrinctl --json accel get

topic "The cable comes out during the erase, and the parameters come back when they are asked for"
end cut
board erasing board=id=4133,serial=0A1B2C3D,dir=/tmp/cut,erase=60
start --json download "$demo"
await_log erasing ERASES
unplug erasing
check "it ends with 1" ended_with 1
check "and says why" grep -q connection-lost /tmp/started
plug erasing
step "the erase has wiped the parameters" 0 '"ImpactTh": 255' kestrinctl --json accel get
step "accel restore" 0 '"ImpactTh": 17' kestrinctl --json accel restore
end erasing
