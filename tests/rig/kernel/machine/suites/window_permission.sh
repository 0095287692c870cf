# SPDX-License-Identifier: MIT
# A board that is plugged in while the window runs, and that this person may not open: the window says what to do, and once it
# is done the board comes online without being plugged in again.
# takes: 25 s
# needs: window
# shellcheck shell=dash disable=SC2154  # demo, rule: of the harness
# shellcheck source=/dev/null
. /rig/window.sh
load_uhid
mount_host
start_udevd
serial="Kestrin USB2 Serial Number: 0A1B2C3D"

sit_down 1000 1000 46
check "it starts" window start "$demo"
check "it says that there is no board" window look shown label "could not be established" usable "push button" OK
check "OK" window click "push button" OK
check "it works offline" window look shown graphic "No board is connected" untold "*" "not permitted"

board refused board=id=4133,serial=0A1B2C3D
check "it says why the board cannot be used, and what to do" window look shown graphic "No board is connected" \
  told "*" "you are not permitted to open it" told "*" "70-kestrin.rules"
check "nobody opened it" not log_says refused OPENED
check "Why?" window click "push button" "Why is no board connected?"
check "its doctor finds the same, and offers to change it" window look shown "*" "The rule is not there yet" \
  usable "push button" "Install permission rule"

cp /rig/70-kestrin.rules "$rule"
udevadm control --reload
udevadm trigger
check "with the rule it is online" window look shown label "$serial" shown graphic "A board is connected" \
  untold "*" "not permitted"
check "and its doctor finds nothing any more" window look shown "*" "All is well"
check "it was not plugged in again" test "$(log_count refused PLUGGED)" -eq 1
check "it closes" window close
end refused
