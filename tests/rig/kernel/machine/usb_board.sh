# SPDX-License-Identifier: MIT
# Sourced by the suites of boards on USB.
# shellcheck shell=dash disable=SC2154  # demo: of the harness

# A board from its first plugging to its last: the independent client, a download that is the simulator's byte by byte, the
# cable out at rest and in the middle of a download, and back.
try_usb_board() {  # NAME KEY=VALUE...; a board that is "numbered" has report ids
  local name="$1" numbered=""
  shift
  case " $* " in *" kind=numbered "*) numbered=numbered ;; esac

  gadget "$name" 0 board=id=4133 "$@"
  step "$name: the independent client" 0 "GetID" /rig/client "$(node_of "$name")" $numbered
  check "$name: no report was of a wrong length" not log_says "$name" WRONG
  cat /sys/bus/usb/devices/*-1/speed >/tmp/speed
  end_gadget "$name" 0

  gadget "$name" 0 "board=id=4133,serial=0A1B2C3D,dir=/tmp/$name.board" unplugat=5000,700 "$@"
  step "$name: devices" 0 "Kestrin Blått +Board $name .*yes" kestrinctl devices
  step "$name: info" 0 "0A1B2C3D" kestrinctl --json info
  step "$name: accel set" 0 '"ImpactTh": 17' kestrinctl --json accel set --ImpactTh 17
  step "$name: download" 0 '"outcome": "success"' kestrinctl --json download "$demo"
  [ -e /tmp/simulator ] || simulate_download /tmp/simulator
  check "$name: the flash is that of the simulator, byte by byte" cmp "/tmp/$name.board/flash.bin" /tmp/simulator/flash.bin
  step "$name: verify" 0 '"verified": true' kestrinctl --json verify "$demo"
  step "$name: the detection parameters outlived the erase" 0 '"ImpactTh": 17' kestrinctl --json accel get
  unplug "$name"
  step "$name: info without it" 3 "could not be established" kestrinctl info

  plug "$name"
  step "$name: the cable comes out at report 700 of a download" 1 "connection-lost" kestrinctl --json download "$demo"
  await_gone "$name"
  check "$name: it was the cable" log_says "$name" "UNPLUGGED after 700 reports"
  step "$name: devices without it" 0 "No board was found" kestrinctl devices
  plug "$name"
  step "$name: download with the cable back" 0 '"outcome": "success"' kestrinctl --json download "$demo"
  check "$name: the flash is whole again" cmp "/tmp/$name.board/flash.bin" /tmp/simulator/flash.bin
  step "$name: and so are the detection parameters" 0 '"ImpactTh": 17' kestrinctl --json accel get
  check "$name: no report was of a wrong length" not log_says "$name" WRONG
  end_gadget "$name" 0
}

way_of_reports() { sed -n "s/.* FIRST of \(.*\)/\1/p" "/tmp/$1.log" | sort -u; }  # NAME -> "1028 bytes by ..."
