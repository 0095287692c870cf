# SPDX-License-Identifier: MIT
# A board on USB at high speed, where a report goes in two packets instead of 17; and report ids without an OUT endpoint.
# takes: 40 s
# shellcheck shell=dash
# shellcheck source=/dev/null
. /rig/usb_board.sh
load_usb 1

try_usb_board plain out=1
check "it came over the OUT endpoint" test "$(way_of_reports plain)" = "1028 bytes by OUT endpoint"
check "at high speed" grep -qx 480 /tmp/speed

topic "With report ids, without an OUT endpoint"
try_usb_board control kind=numbered out=0
check "it came over the control pipe" test "$(way_of_reports control)" = "1029 bytes by SET_REPORT"
