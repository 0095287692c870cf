# SPDX-License-Identifier: MIT
# Every command of the command line, with a sound board, an LED driver and no board; what the boards then hold is what the
# simulated board inside the process holds after the same commands.
# takes: 20 s
# shellcheck shell=dash disable=SC2154  # demo: of the harness
load_uhid

topic "No board"
step "devices" 0 "No board was found" kestrinctl devices
step "devices for programs" 0 '"devices": \[\]' kestrinctl --json devices
step "info" 3 "could not be established" kestrinctl info
step "doctor" 3 '"healthy": false' kestrinctl --json doctor
step "download" 3 "could not be established" kestrinctl download "$demo"

topic "The board that serves these suites keeps to docs/protocol.md"
board checked board=id=4133
step "the independent client" 0 "GetID" /rig/client "$(node_of checked)"
end checked
board numbered board=id=4133 kind=numbered
step "the independent client, with report ids" 0 "GetID" /rig/client "$(node_of numbered)" numbered
check "no report was of a wrong length" not log_says numbered WRONG
end numbered

topic "A sound board of the revision from which on the flash period can be set"
board sound board=id=4389,serial=0A1B2C3D,dir=/tmp/sound serial=SN0042
step "devices" 0 "/dev/hidraw0 .*Kestrin sound +SN0042 +yes" kestrinctl devices
step "devices for programs" 0 '"accessible": true' kestrinctl --json devices
step "info" 0 "0A1B2C3D" kestrinctl info
step "info for programs" 0 '"id": 4389' kestrinctl --json info
step "doctor" 0 '"healthy": true' kestrinctl --json doctor
step "info at its path" 0 '"serial": "0A1B2C3D"' kestrinctl --json --board hid:/dev/hidraw0 info
step "info at another path" 3 "" kestrinctl --board hid:/dev/hidraw7 info
step "accel get" 0 '"MotionTh": 180' kestrinctl --json accel get
step "accel set" 0 '"FOCTime": 400' kestrinctl --json accel set --MotionTh 99 --FOCTime 400
step "accel get, what was set" 0 '"MotionTh": 99' kestrinctl --json accel get
step "accel set, out of range" 2 "" kestrinctl accel set --ImpactTh 32
step "accel defaults" 0 '"MotionTh": 180' kestrinctl --json accel defaults
step "accel restore, with nothing kept" 1 "" kestrinctl accel restore
step "accel watch" 0 '"z": 21' kestrinctl --json accel watch --seconds 1
step "accel watch, for a person" 0 "    0    0   21     0" kestrinctl accel watch --seconds 1
step "accel set, before the erase" 0 '"ImpactTh": 17' kestrinctl --json accel set --ImpactTh 17
step "download" 0 '"outcome": "success"' kestrinctl --json download "$demo"
step "verify" 0 '"verified": true' kestrinctl --json verify "$demo"
step "accel get, after the erase" 0 '"ImpactTh": 17' kestrinctl --json accel get
simulate_download /tmp/simulator id=4389
check "the flash is that of the simulator, byte by byte" cmp /tmp/sound/flash.bin /tmp/simulator/flash.bin
step "download, for a person" 0 "SUCCESS !" kestrinctl download "$demo"
step "led status of a sound board" 1 "" kestrinctl led status
unplug sound
step "devices after the unplugging" 0 "No board was found" kestrinctl devices
step "info after the unplugging" 3 "" kestrinctl info
plug sound
step "info after the plugging" 0 "0A1B2C3D" kestrinctl info
step "verify after the plugging" 0 '"verified": true' kestrinctl --json verify "$demo"
step "board, of a set that is named" 0 '"known": true' kestrinctl --json board "$demo"
step "board, by its own table" 0 "A set this computer does not know: 6 motion sounds" kestrinctl board
step "config diff with the board" 0 '"same": true' kestrinctl --json config diff "$demo" board
end sound

topic "An LED driver"
printf '%s\r\n' 'KestdrinLEDSettings#1' 'PULSE+Low=40_0_0_0+High=255_0_0_0+Times=1000_1000_500_500' \
  'FOC=255_255_255_0+Times=40_60_3' >/tmp/blade.ldset
led="Tandem Blue White 6W"
use_led_driver() {  # WHOSE BOARD
  step "$1: led config" 0 "$led" kestrinctl --json --board "$2" led config --type "$led" --overdrive 110 --yes
  step "$1: led preview" 0 '"level": 200' kestrinctl --json --board "$2" led preview --level 200 100
  step "$1: led send idle" 0 '"Ton": 1000' kestrinctl --json --board "$2" led send idle /tmp/blade.ldset
  step "$1: led send foc" 0 '"NRep": 3' kestrinctl --json --board "$2" led send foc /tmp/blade.ldset
}
board led board=id=36864,dir=/tmp/led,serial=11223344
use_led_driver "the board" auto
use_led_driver "the simulator" sim:id=36864,dir=/tmp/led.simulator,serial=11223344
check "the board holds what the simulated one holds" cmp /tmp/led/board.json /tmp/led.simulator/board.json
step "led status" 0 '"overdrive": 110' kestrinctl --json led status
step "led config without consent" 2 "" kestrinctl led config --type "$led" --overdrive 120
step "led status, unchanged" 0 '"overdrive": 110' kestrinctl --json led status
step "info" 0 "LED Driver" kestrinctl info
step "download to an LED driver" 1 "LED driver" kestrinctl download "$demo"
step "accel watch of an LED driver" 1 "LED driver" kestrinctl accel watch --seconds 1
step "accel get of an LED driver" 1 "LED driver" kestrinctl accel get
end led

topic "Models, as docs/protocol.md has them"
while read -r id model; do
  board model "board=id=$id"
  step "identity $id" 0 "\"model\": \"$model\"" kestrinctl --json info
  end model
done <<'MODELS'
32 USB
64 USB 64
4095 LED Driver
8191 USB2
MODELS

topic "What needs no board"
step "sound info" 0 '"valid": true' kestrinctl --json sound info /run/demo/boot.lsu
step "sound code" 0 '"codedBytes"' kestrinctl --json sound code /run/demo/boot.lsu --output /tmp/boot.coded
check "three bytes for two samples" grep -q "\"codedBytes\": $(stat -c %s /tmp/boot.coded)," /tmp/out
step "sound wav" 0 '"samples"' kestrinctl --json sound wav /run/demo/boot.lsu --output /tmp/boot.wav
check "a WAV file" test "$(head -c 4 /tmp/boot.wav)" = RIFF
step "config make" 0 '"totalSamples"' kestrinctl --json config make /tmp/made.lscfg --boot /run/demo/boot.lsu:70
step "config show" 0 '"volume": 70' kestrinctl --json config show /tmp/made.lscfg
step "config map" 0 '"checksum"' kestrinctl --json config map "$demo"
step "sound import" 0 '"imported": 1' kestrinctl --json sound import /tmp/boot.wav --output /tmp/imported
check "what was a WAV file is a sound" test "$(stat -c %s /tmp/imported/boot.lsu)" = $(($(stat -c %s /tmp/boot.wav) - 40))
step "config level" 0 '"changed"' kestrinctl --json config level "$demo" --output /tmp/level.lscfg
step "config diff" 1 '"kind": "volume"' kestrinctl --json config diff "$demo" /tmp/level.lscfg
step "config pack" 0 '"files": 18' kestrinctl --json config pack "$demo" --output /tmp/packed.zip
step "config unpack" 0 '"totalSamples"' kestrinctl --json config unpack /tmp/packed.zip --output /tmp/unpacked
check "what was packed is there again" cmp /run/demo/idle.lsu /tmp/unpacked/idle.lsu
step "saber render" 0 '"slot": "motion"' kestrinctl --json saber render "$demo" --script "on; swing; off" --output /tmp/saber.wav
step "saber play, where nobody presses keys" 2 'run "saber play" in a terminal' kestrinctl saber play "$demo" </dev/null
step "led types" 0 "$led" kestrinctl led types
step "led counts" 0 '"period"' kestrinctl --json led counts --type "$led" --overdrive 100 --level 255 128
step "led settings" 0 '"Trise": 500' kestrinctl --json led settings /tmp/blade.ldset

topic "Fonts, between two programs in this machine"
mkdir -p "/tmp/offered/Ember" /tmp/trial
cp /run/demo/*.lsu /tmp/offered/Ember/
cp "$demo" /tmp/offered/Ember/Ember.lscfg
start fonts serve /tmp/offered
await "the server" grep -q "On offer: Ember" /tmp/started
server="$(head -n 1 /tmp/started)"
step "fonts update" 0 '"outcome": "updated"' \
  kestrinctl --json --board sim --program-folder /tmp/trial fonts update --server "$server"
step "fonts list" 0 '"name": "Ember"' kestrinctl --json --program-folder /tmp/trial fonts list
check "what came is what was offered" cmp /tmp/offered/Ember/idle.lsu /tmp/trial/fonts/Ember/idle.lsu
kill -INT "$program"
check "Ctrl-C ends the server" ended_with 130

topic "All commands"
# Those that --help lists below a command; each of them was used above.
commands_below() {  # WORDS
  # shellcheck disable=SC2086
  command kestrinctl $1 --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p'
}
for first in $(commands_below ""); do
  below="$(commands_below "$first")"
  for second in ${below:-""}; do
    words="$first${second:+ $second}"
    check "\"$words\" was used" grep -Eq "(^| )$words( |\$)" /tmp/used
  done
done
