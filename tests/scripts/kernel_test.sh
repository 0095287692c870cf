#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# ./test kernel counts what the virtual machines say, no more and no less.
. "$(dirname "${BASH_SOURCE[0]}")/pretend.sh"
cp -R "$real/test" "$work/project/"
mkdir -p "$project/tests/rig"
cp -R "$real/tests/rig/kernel" "$project/tests/rig/"
suites="$project/tests/rig/kernel/machine/suites"
rm -f "$suites"/*.sh
# The other parts have tests of their own.
find "$project/scripts/tests" -name '*.sh' ! -name kernel.sh -delete

pretend cmake <<<'exit 0'
pretend ccache <<<'exit 1'
pretend dpkg-query <<<'case " $INSTALLED " in *" all "*) printf installed ;; *) exit 1 ;; esac'
pretend apt-cache <<'COMMAND'
case "$1" in
  depends) [ -z "$KERNEL" ] || printf 'linux-image-amd64\n  Depends: %s\n' "$KERNEL" ;;
  show) echo "Package: $3" ;;
esac
COMMAND
pretend apt-get <<'COMMAND'
echo "$*" >>"$CALLS"
[ "$1" = download ] && [ "$SERVER" = there ] && touch "$PWD/linux-image.deb"
COMMAND
pretend dpkg <<<'mkdir -p "$3/boot" "$3/lib" && touch "$3/boot/vmlinuz-6.1.0"'
# The machine says what the file of its suite says.
pretend qemu-system-x86_64 <<'COMMAND'
words="$*"
suite="${words##*suite=}"
sh "$SUITES/${suite%% *}.sh"
COMMAND
printf '#!/bin/sh\ntouch "$3"\n' >"$project/tests/rig/kernel/initramfs.sh"
export SUITES="$suites" INSTALLED=all KERNEL=linux-image-6.1.0-amd64 SERVER=there CALLS="$work/calls"

suite() {  # NAME SECONDS; what the machine does comes from standard input
  { printf '# takes: %d s\n' "$2"; cat; } >"$suites/$1.sh"
}

run() { status=0; "$@" >"$work/out" 2>&1 </dev/null || status=$?; }
ends_with() {  # WHAT STATUS LAST-LINE
  expect "$1: status $status is $2" [ "$status" -eq "$2" ]
  expect "$1: '$(tail -n 1 "$work/out")' is '$3'" [ "$(tail -n 1 "$work/out")" = "$3" ]
  [ $failed -eq 0 ] || { cat "$work/out"; exit 1; }
}

# A console ends its lines with two characters.
suite short 1 <<<"printf 'ok   one\r\nok   two\r\nRESULT 2 0\r\n'"
suite long 9 <<<"printf 'ok   three\r\nRESULT 1 0\r\n'"
run "$project/test" kernel
ends_with "all is well" 0 "3 passed, 0 failed"
expect "the kernel is fetched" grep -qx "download -q linux-image-6.1.0-amd64 udev systemd libsystemd-shared" "$CALLS"
expect "long suites begin" grep -q "^==== Kernel suites: long short$" "$work/out"
expect "a suite has its line" grep -q "^---- Kernel: long: 1 passed, 0 failed" "$work/out"

rm "$CALLS"
run "$project/test" kernel short
ends_with "one suite" 0 "2 passed, 0 failed"
expect "the kernel is fetched once" [ ! -e "$CALLS" ]

suite short 1 <<<"printf 'ok   one\nFAIL two\n     | seen\nRESULT 1 1\n'"
run "$project/test" kernel
ends_with "a failed check" 1 "2 passed, 1 failed"
expect "what was seen is shown" grep -q "     | seen" "$work/out"

suite short 1 <<<"printf 'ok   one\n'; exit 1"
run "$project/test" kernel
ends_with "a machine that dies" 1 "2 passed, 1 failed"
suite short 1 <<<":"
run "$project/test" kernel
ends_with "a machine that says nothing" 1 "1 passed, 1 failed"
suite short 1 <<<"printf 'ok   one\nRESULT 2 0\n'"
run "$project/test" kernel
ends_with "a machine that lost a line" 1 "2 passed, 1 failed"
run "$project/test" kernel long no-such
ends_with "a suite that there is not" 1 "1 passed, 1 failed"
suite short 1 <<<"printf 'ok   one\nRESULT 1 0\n'"

printf '#!/bin/sh\nexit 1\n' >"$project/tests/rig/kernel/initramfs.sh"
run "$project/test" kernel
ends_with "the machine cannot be made" 1 "0 passed, 1 failed"
printf '#!/bin/sh\ntouch "$3"\n' >"$project/tests/rig/kernel/initramfs.sh"

# What cannot be had is left out, with the reason, and shown as left out; that is no success.
rm -rf "$project/build/kernel-rig"
SERVER=away
run "$project/test" kernel
ends_with "no server" 1 "0 passed, 0 failed, 1 left out"
expect "the reason" grep -q "^left out: kernel suites, the package linux-image-6.1.0-amd64 could not be fetched$" "$work/out"
KERNEL=
run "$project/test" kernel
ends_with "no such kernel" 1 "0 passed, 0 failed, 1 left out"
expect "the reason" grep -q "^left out: kernel suites, this system offers no package linux-image-amd64$" "$work/out"
exit $failed
