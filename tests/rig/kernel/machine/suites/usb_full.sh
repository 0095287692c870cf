# SPDX-License-Identifier: MIT
# Boards on USB at full speed, as they are: with and without an OUT endpoint, with and without report ids. Without that
# endpoint reports go over the control pipe, and it is the kernel that decides so.
# takes: 55 s
# shellcheck shell=dash
# shellcheck source=/dev/null
. /rig/usb_board.sh
load_usb 0

topic "With an OUT endpoint"
try_usb_board plain out=1
check "it came over the OUT endpoint" test "$(way_of_reports plain)" = "1028 bytes by OUT endpoint"
check "at full speed" grep -qx 12 /tmp/speed

topic "Without an OUT endpoint"
try_usb_board control out=0
check "it came over the control pipe" test "$(way_of_reports control)" = "1028 bytes by SET_REPORT"

topic "With report ids"
try_usb_board numbered kind=numbered out=1
check "it came over the OUT endpoint" test "$(way_of_reports numbered)" = "1029 bytes by OUT endpoint"
