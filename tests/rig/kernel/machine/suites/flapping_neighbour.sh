# SPDX-License-Identifier: MIT
# The same beside a mouse with a bad contact, which comes and goes at moments of its own; then that mouse alone: a board that
# is plugged in well is not disturbed by it.
# takes: 30 s
# shellcheck shell=dash
# shellcheck source=/dev/null
. /rig/flapping.sh
load_uhid

board mouse kind=mouse vid=046d pid=c077 flap=1
board loose board=id=4133,serial=0A1B2C3D,dir=/tmp/loose flap=1 delay=1
run_commands 150
check "every command ended with 0, 1 or 3" ended_only_with "0|1|3"
show_ends
check "the board came and went all the time" test "$(log_count loose UNPLUGGED)" -ge 50
check "what they said of it is no error of the system" not grep -iE "success|exception|basic_|what\(\)" /tmp/messages
plug_for_good loose

topic "The board's contact holds, the mouse's does not"
run_commands 20
check "every command ended with 0" ended_only_with 0
show_ends
# Nobody can open a device by what it is, only by its path, and the mouse gets the path of the board that has just gone. So
# it may be opened once in a while in the moment between the last look and the opening; then it is let go of at once.
check "nothing was written to the mouse" not grep -E "UNPLUGGED after [1-9]" /tmp/mouse.log
check "the mouse was let go of whenever it was opened by mistake" \
  test "$(log_count mouse OPENED)" -le "$(log_count mouse CLOSED)"
check "that is rare ($(log_count mouse OPENED) of $(log_count mouse PLUGGED))" \
  test $(($(log_count mouse OPENED) * 20)) -le "$(log_count mouse PLUGGED)"
plug_for_good mouse
end loose mouse
