# SPDX-License-Identifier: MIT
# The window as an ordinary person uses it: a board comes, goes and comes again, takes a set, is lost in the middle of the next
# one, and takes another one.
# takes: 30 s
# needs: window
# shellcheck shell=dash disable=SC2154  # demo, rule: of the harness
# shellcheck source=/dev/null
. /rig/window.sh
load_uhid
mount_host
cp /rig/70-kestrin.rules "$rule"
start_udevd
serial="Kestrin USB2 Serial Number: 0A1B2C3D"
online() { window look shown label "$serial" shown graphic "A board is connected" usable "push button" Download; }
offline() { window look gone label "$serial" shown graphic "No board is connected" unusable "push button" Download; }

sit_down 1000 1000 46
board used board=id=4133,serial=0A1B2C3D,dir=/tmp/used.board late=1 unplugat=0,0,700,0

topic "No board"
check "it starts" window start "$demo"
check "it says that there is no board" window look shown label "could not be established" usable "push button" OK
check "OK" window click "push button" OK
check "it works offline" offline

topic "A board comes and goes"
check_plug_is_noticed used
check "it is online" online
check_unplug_is_noticed used
check "it is offline" offline
check_plug_is_noticed used
check "it is online again" online

topic "A download"
check "Download" window click "push button" Download
check "it ends well" window look shown label "SUCCESS !"
simulate_download /tmp/simulator
check "the flash is that of the simulator, byte by byte" cmp /tmp/used.board/flash.bin /tmp/simulator/flash.bin
check "its frame goes by itself" window look gone label "SUCCESS !" usable "push button" Download
check_unplug_is_noticed used

topic "A download that loses its board at report 700"
check_plug_is_noticed used
check "it is online" online
check "Download" window click "push button" Download
check "it says that the board holds the set" window look shown label "The board holds just this set."
check "Send it again" window click "push button" "Send it again"
check "it says what happened, and what the board holds" window look shown label "Connection lost" \
  shown label "The board holds no complete sound set. Repeat the download before you use the saber."
check "it was the cable" log_says used UNPLUGGED
check "Close" window click "push button" Close
check "it is offline" window look gone label "Connection lost" shown graphic "No board is connected"

topic "Another one"
check_plug_is_noticed used
check "it is online" online
check "Download" window click "push button" Download
check "it ends well" window look shown label "SUCCESS !"
check "the flash is whole again" cmp /tmp/used.board/flash.bin /tmp/simulator/flash.bin
check "it closes" window close
end used
