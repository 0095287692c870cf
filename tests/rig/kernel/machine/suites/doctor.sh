# SPDX-License-Identifier: MIT
# What "kestrinctl doctor" finds of the ways in which a board can be missing or ill, each of them made real. The five states are
# those of its questions in their order: present, permitted, free, answers, identified.
# takes: 25 s
# shellcheck shell=dash disable=SC2154  # demo, rule: of the harness
load_uhid
load_usb 0

# The findings of the last step, a line "QUESTION STATE" each, in the order of the document.
findings() {
  tr -d ' \n' </tmp/out | tr '{' '\n' | sed -n 's/.*"question":"\([a-z]*\)","state":"\([a-z]*\)".*/\1 \2/p'
}
has_findings() { test "$(findings | xargs)" = "$1"; }
# Each finding that is a problem says what to do next.
has_a_next_step() { tr -d '\n' </tmp/out | tr '{' '\n' | grep '"problem"' | grep -q '"next": *"[^"]'; }

diagnose() {  # NAME STATUS STATES PATTERN [COMMAND IN FRONT...]
  local name="$1" status="$2" states="$3" pattern="$4" wanted="" question
  shift 4
  step "$name" "$status" "$pattern" "$@" kestrinctl --json doctor
  for question in present permitted free answers identified; do
    wanted="$wanted $question ${states%% *}"
    states="${states#* }"
  done
  check "$name: the findings" has_findings "${wanted# }"
  [ "$status" = 0 ] || check "$name: the next step" has_a_next_step
}
nobody="problem unknown unknown unknown unknown"
all_well="ok ok ok ok ok"

topic "No board"
diagnose "nothing at all" 3 "$nobody" '"healthy": false'
board mouse kind=mouse vid=046d pid=c077
board namesake kind=plain vid=1209 pid=fa37
diagnose "foreign devices" 3 "$nobody" '"healthy": false'
check "the mouse was not opened" not log_says mouse OPENED
check "nor the device of another vendor" not log_says namesake OPENED

topic "Devices with the board's numbers that cannot be used"
board alike kind=other
diagnose "other reports" 1 "$nobody" "not its reports"
end alike
gadget bare 0 board=id=4133
basename /sys/bus/usb/drivers/usbhid/*-1:1.0 >/sys/bus/usb/drivers/usbhid/unbind
await "the end of the HID interface" not node_of bare
diagnose "no HID interface" 1 "$nobody" "no HID interface"
end_gadget bare 0

topic "Healthy"
gadget usb 0 board=id=4133,serial=0A1B2C3D
diagnose "a board on USB" 0 "$all_well" '"healthy": true'
step "the report" 0 "" kestrinctl doctor --report /tmp/report
check "it names the descriptor's bytes" grep -qi "06 \?00 \?ff \?09 \?01 \?a1 \?01" /tmp/report
check "it does not name the serial number" not grep -qi 0A1B2C3D /tmp/report
board behind kind=other
diagnose "beside a device with other reports" 0 "$all_well" '"healthy": true'
end behind

topic "A board that hangs"
tell usb STOP
diagnose "it takes nothing" 1 "ok ok ok problem unknown" '"healthy": false'
tell usb CONT
step "awake again" 0 '"healthy": true' kestrinctl --json doctor
end_gadget usb 0
board silent board=id=4133 silentat=1
diagnose "it takes a question and does not answer" 1 "ok ok ok problem unknown" '"healthy": false'
end silent

topic "Another program is using it"
board busy board=id=4133,erase=60
start download "$demo"
await_log busy ERASES
diagnose "during a download" 1 "ok ok problem unknown unknown" "kestrinctl"
kill -KILL "$program"
ended_with 137
end busy

topic "No permission, and the rule"
start_udevd
board refused board=id=4133,serial=0A1B2C3D
diagnose "not permitted" 1 "ok problem unknown unknown unknown" "rule" as_user member
step "the doctor installs the rule" 0 "" kestrinctl doctor --install-rule --yes
check "it is the one that comes with the program" cmp /rig/70-kestrin.rules "$rule"
may_be_opened() { test "$(stat -c %a "$(node_of refused)")" = 660; }
await "the board's new permissions" may_be_opened
diagnose "permitted, without being plugged in again" 0 "$all_well" '"healthy": true' as_user member
step "the doctor removes it" 0 "" kestrinctl doctor --remove-rule --yes
check "it is gone" not test -e "$rule"
check "nobody plugged the board in again" test "$(log_count refused PLUGGED)" -eq 1
end refused

topic "A bad contact"
board loose board=id=4133 flap=1
number=0
while [ $number -lt 10 ]; do
  number=$((number + 1))
  step "look $number" "0|1|3" '"healthy": (true|false)' kestrinctl --json doctor
  check "look $number: five findings" test "$(findings | grep -c .)" -eq 5
done
plug_for_good loose
diagnose "when the contact holds" 0 "$all_well" '"healthy": true'
end loose mouse namesake
