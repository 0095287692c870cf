# SPDX-License-Identifier: MIT
# Who may open a board: an ordinary person without the rule, then with it as a member of its group, as the person at the
# seat, and on a system that does not have the group. What udevd itself says of the rule counts as well.
# takes: 30 s
# shellcheck shell=dash disable=SC2154  # demo, rule: of the harness
load_uhid
load_usb 0

refused="you are not permitted to open it"
mode_of() { stat -c '%a %u %g' "$(node_of "$1")"; }  # NAME -> "660 0 46"
has_mode() { test "$(mode_of "$1")" = "$2"; }        # NAME MODE
# As who logs in at the computer is noted by the service for logins, which this machine does without.
seat() {  # USER-NUMBER
  mkdir -p /run/systemd/seats
  printf 'IS_SEAT0=1\nACTIVE=c1\nACTIVE_UID=%d\n' "$1" >/run/systemd/seats/seat0
}

topic "No udevd: only root may"
board plain board=id=4133,serial=0A1B2C3D
step "devices" 0 "$refused" as_user member kestrinctl devices
step "devices for programs" 0 '"accessible": false' as_user member kestrinctl --json devices
step "info" 1 "$refused" as_user member kestrinctl info
step "info for programs" 1 "$refused" as_user member kestrinctl --json info
step "the way out is named" 1 "sudo cp 70-kestrin.rules /etc/udev/rules.d/" as_user member kestrinctl info
check "nobody opened it" not log_says plain OPENED
end plain

topic "udevd without the rule"
start_udevd
board plugged board=id=4133,serial=0A1B2C3D,dir=/tmp/plugged
board mouse kind=mouse vid=046d pid=c077
step "info" 1 "$refused" as_user member kestrinctl info

topic "The rule, as the advice says"
cp /rig/70-kestrin.rules "$rule"
step "reload" 0 "" udevadm control --reload
step "trigger" 0 "" udevadm trigger
await "the board's new permissions" has_mode plugged "660 0 46"
step "info, before it is plugged in again" 0 "0A1B2C3D" as_user member kestrinctl --json info
unplug plugged
plug plugged
check "the permissions of a board that is plugged in" has_mode plugged "660 0 46"
step "devices" 0 '"accessible": true' as_user member kestrinctl --json devices
step "download" 0 '"outcome": "success"' as_user member kestrinctl --json download "$demo"
step "somebody who is not in the group" 1 "$refused" as_user other kestrinctl info
check "the mouse keeps its permissions" has_mode mouse "600 0 0"

topic "Two boards on USB"
gadget one 0 board=id=4133,serial=AAAA0001,dir=/tmp/one
gadget other 1 board=id=36864,serial=BBBB0002,dir=/tmp/other
check "the permissions of the first" has_mode one "660 0 46"
check "the permissions of the second" has_mode other "660 0 46"
unplug plugged
step "devices" 0 "Board other .*yes" as_user member kestrinctl devices
step "info: the first" 0 "AAAA0001" as_user member kestrinctl --json info
step "download to the first" 0 '"outcome": "success"' as_user member kestrinctl --json download "$demo"
step "info at its path: the second" 0 "BBBB0002" as_user member kestrinctl --json --board "hid:$(node_of other)" info
unplug one
step "the first is gone: the second is used" 0 "LED Driver" as_user member kestrinctl info
step "somebody who is not in the group" 1 "$refused" as_user other kestrinctl info
end_gadget other 1
end_gadget one 0
plug plugged

topic "What udevd says of the rule"
udevadm test "/sys/class/hidraw/$(basename "$(node_of plugged)")" >/tmp/tested 2>&1
check "it read the rule" grep -q "$rule" /tmp/tested
check "it knows every key of it" not grep -E "70-kestrin.rules:[0-9]+ .*([Uu]nknown|[Ii]nvalid|ignor|[Ff]ailed)" /tmp/tested
# The same test of a rule with a slip of the pen, or nobody knows whether such slips are told.
sed 's/GROUP=/GRUOP=/' /rig/70-kestrin.rules >/etc/udev/rules.d/71-slip.rules
udevadm test "/sys/class/hidraw/$(basename "$(node_of plugged)")" >/tmp/tested 2>&1
check "it tells of a key that there is not" grep -E "71-slip.rules:[0-9]+ .*[Ii]nvalid key" /tmp/tested
rm /etc/udev/rules.d/71-slip.rules
udevadm control --reload

topic "The person at the seat, in no group"
seat 1001
unplug plugged
plug plugged
step "info" 0 "0A1B2C3D" as_user other kestrinctl --json info
unplug plugged
seat 0
plug plugged
step "somebody else at the seat" 1 "$refused" as_user other kestrinctl info

topic "A system without the group"
unplug plugged
sed -i /plugdev/d /etc/group
udevadm control --exit
await "the end of udevd" not udevd_runs
start_udevd
seat 1001
plug plugged
step "info of the person at the seat" 0 "0A1B2C3D" as_user other kestrinctl --json info
step "info of the one who was in the group" 1 "$refused" as_user member kestrinctl info

topic "The rule is taken away"
rm "$rule"
udevadm control --reload
unplug plugged
plug plugged
step "info of the person at the seat" 1 "$refused" as_user other kestrinctl info
end plugged mouse
