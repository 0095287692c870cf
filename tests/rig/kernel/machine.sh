#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs one suite in a virtual machine; what the machine prints comes out here.
#   machine.sh SYSTEM INITRAMFS SUITE [PROGRAMS]
# SYSTEM holds Debian's packages unpacked. PROGRAMS is the folder of the built programs, for suites with a window: they see it
# and this system's own files, read-only. Environment: LIMIT seconds that the machine may run, MEMORY in MiB, PROCESSORS.
# KERNEL_ARGUMENTS are added to the kernel's command line ("verbose": every step's output).
set -euo pipefail
system="$1" initramfs="$2" suite="$3" programs="${4-}"
share=()
if [ -n "$programs" ]; then
  share=(-virtfs "local,path=/,mount_tag=host,security_model=none,readonly=on,multidevs=remap"
    -virtfs "local,path=$programs,mount_tag=programs,security_model=none,readonly=on,multidevs=remap")
fi
# Plain emulation wherever it runs: a /dev/kvm that is there need not work.
exec timeout --kill-after=10 "${LIMIT:-400}" qemu-system-x86_64 -nodefaults -no-user-config -display none -serial stdio -no-reboot \
  -accel tcg -m "${MEMORY:-512}" -smp "${PROCESSORS:-1}" "${share[@]}" \
  -kernel "$(compgen -G "$system/boot/vmlinuz-*")" -initrd "$initramfs" \
  -append "console=ttyS0 loglevel=1 panic=-1 rdinit=/init suite=$suite ${KERNEL_ARGUMENTS-}" </dev/null
