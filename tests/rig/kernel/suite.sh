#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs one suite in a virtual machine of the kind that it needs, keeps what the machine prints in logs/SUITE.log of the
# folder, and prints "SUITE SECONDS" when the machine has ended.
#   suite.sh FOLDER PROGRAMS SUITE
# FOLDER holds the kernel's packages and the initramfs, PROGRAMS is the folder of the built programs.
set -uo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)"
folder="$1" programs="$2" suite="$3"
if ! grep -q '^# needs: window' "$here/machine/suites/$suite.sh"; then programs=""; fi
# Next to a display, a session with its services and the window, everything else is small.
if [ -n "$programs" ]; then export MEMORY="${MEMORY:-1024}" PROCESSORS="${PROCESSORS:-2}"; fi
mkdir -p "$folder/logs"
"$here/machine.sh" "$folder/system" "$folder/initramfs" "$suite" "$programs" 2>&1 | tr -d '\r' >"$folder/logs/$suite.log"
status=${PIPESTATUS[0]}
if [ "$status" -eq 124 ]; then echo "The machine was ended after its time was up." >>"$folder/logs/$suite.log"; fi
echo "$suite $SECONDS"
