# SPDX-License-Identifier: MIT
# Several devices at once: two boards, two programs, and devices that are none of our business.
# takes: 20 s
# shellcheck shell=dash disable=SC2154  # demo: of the harness
load_uhid

topic "Two boards"
board first board=id=4133,serial=AAAA0001,dir=/tmp/first
board second board=id=64,serial=BBBB0002,dir=/tmp/second serial=SN0002
at_first="hid:$(node_of first)"
at_second="hid:$(node_of second)"
step "devices lists the second as well" 0 "Kestrin second +SN0002" kestrinctl devices
step "info: the first" 0 "AAAA0001" kestrinctl --json info
step "info at its path: the second" 0 "BBBB0002" kestrinctl --json --board "$at_second" info
start --json --board "$at_first" download "$demo"
step "download to both at the same time: the second" 0 '"outcome": "success"' kestrinctl --json --board "$at_second" download "$demo"
check "the first" ended_with 0
check "both hold the same" cmp /tmp/first/flash.bin /tmp/second/flash.bin
simulate_download /tmp/simulator
check "and what the simulator holds" cmp /tmp/first/flash.bin /tmp/simulator/flash.bin
unplug first
step "the first is gone: the second is used" 0 "BBBB0002" kestrinctl --json info
plug first
step "the first is back: it is used" 0 "AAAA0001" kestrinctl --json info
end first second

topic "A second program during the erase"
board busy board=id=4133,serial=AAAA0001,dir=/tmp/busy,erase=8
start --json download "$demo"
await_log busy ERASES
in_use="Another program is using this board"
step "info" 1 "$in_use" kestrinctl info
step "download" 1 "$in_use" kestrinctl download "$demo"
step "devices says so as well" 0 "$in_use" kestrinctl devices
check "the board still erases" kill -0 "$program"
check "the first program's download is whole" ended_with 0
check "byte by byte" cmp /tmp/busy/flash.bin /tmp/simulator/flash.bin
step "then another one may" 0 "AAAA0001" kestrinctl --json info
end busy

topic "Foreign devices"
board mouse kind=mouse vid=046d pid=c077
board neighbour kind=other vid=04d8 pid=003f
board namesake kind=plain vid=1209 pid=fa37
step "devices: none of them is a board" 0 "No board was found" kestrinctl devices
step "info" 3 "" kestrinctl info
board real board=id=4133,serial=CCCC0003,dir=/tmp/real
step "info of a board behind them" 0 "CCCC0003" kestrinctl --json info
step "download" 0 '"outcome": "success"' kestrinctl --json download "$demo"
check "the mouse was never opened" not log_says mouse OPENED
check "nor another device of the same vendor" not log_says neighbour OPENED
check "nor a device of another vendor with the board's number and reports" not log_says namesake OPENED
end mouse neighbour namesake real

topic "A device with the board's numbers but other reports, on a lower node"
board alike kind=other
step "info" 3 "has the numbers of a Kestrin board but not its reports" kestrinctl info
board real board=id=4133,serial=CCCC0003,dir=/tmp/real
step "info of the board behind it" 0 "CCCC0003" kestrinctl --json info
step "download to the board behind it" 0 '"outcome": "success"' kestrinctl --json download "$demo"
check "the flash" cmp /tmp/real/flash.bin /tmp/simulator/flash.bin
check "the other one got no report" not log_says alike FIRST
end alike real
