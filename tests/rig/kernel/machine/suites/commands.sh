# SPDX-License-Identifier: MIT
# A board over uhid, from before it is plugged in until after it is gone.
# takes: 40 s
# shellcheck shell=dash disable=SC2154  # demo: of the harness
load_uhid

topic "No board"
step "devices" 0 "No board was found" kestrinctl devices
step "info" 3 "could not be established" kestrinctl info

topic "The board that serves these suites keeps to docs/protocol.md"
board checked board=id=4133
step "the independent client" 0 "GetID" /rig/client "$(node_of checked)"
end checked

topic "A sound board"
board sound board=id=4133,serial=0A1B2C3D,dir=/tmp/sound
step "info" 0 "0A1B2C3D" kestrinctl info
step "download" 0 '"outcome": "success"' kestrinctl --json download "$demo"
simulate_download /tmp/simulator serial=0A1B2C3D
check "the flash is that of the simulator, byte by byte" cmp /tmp/sound/flash.bin /tmp/simulator/flash.bin
end sound
