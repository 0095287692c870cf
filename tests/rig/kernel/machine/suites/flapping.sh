# SPDX-License-Identifier: MIT
# A board with a bad contact: it comes and goes many times a second while 150 commands run, one after another. Each of them
# ends with 0, 1 or 3, as a command that found the board, lost it, or found none.
# takes: 30 s
# shellcheck shell=dash
# shellcheck source=/dev/null
. /rig/flapping.sh
load_uhid

board loose board=id=4133,serial=0A1B2C3D,dir=/tmp/loose flap=1
run_commands 150
check "every command ended with 0, 1 or 3" ended_only_with "0|1|3"
show_ends
check "the board came and went all the time" test "$(log_count loose UNPLUGGED)" -ge 50
check "some commands lost it" grep -q "^1 " /tmp/ends
check "what they said of it is no error of the system" not grep -iE "success|exception|basic_|what\(\)" /tmp/messages
plug_for_good loose
step "info, when the contact holds" 0 "0A1B2C3D" kestrinctl --json info
end loose
