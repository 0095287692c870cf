#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# first_paint.sh BIN-FOLDER WATCH [ROUNDS]: how long after its start the window is painted, beside a bare Qt window of the
# same libraries; both in turn, medians. Fails above 1.5 times. QT_QPA_PLATFORM says on what it is shown.
set -euo pipefail
bin="$1" watch="$2" rounds="${3:-15}"
most=150

home="$(mktemp -d)"
trap 'rm -rf "$home"' EXIT
export HOME="$home" XDG_DATA_HOME="$home" XDG_RUNTIME_DIR="$home"
chmod 700 "$home"

microseconds() {  # PROGRAM [argument...]
  FIRST_PAINT_START="${EPOCHREALTIME/[.,]/}" LD_PRELOAD="$watch" "$@" 2>/dev/null
}
median() { printf '%s\n' "$@" | sort -n | sed -n "$((($# + 1) / 2))p"; }

window=() bare=()
for ((round = 0; round <= rounds; ++round)); do
  w="$(microseconds "$bin/kestrin" --board sim)"
  b="$(microseconds "$bin/bare_window")"
  # The first round only fills the caches.
  if [ "$round" -gt 0 ]; then window+=("$w") bare+=("$b"); fi
done
w="$(median "${window[@]}")" b="$(median "${bare[@]}")"
percent=$((100 * w / b))
printf 'first paint, median of %d: window %d.%d ms, bare window %d.%d ms, %d.%02d times\n' "$rounds" \
  $((w / 1000)) $((w % 1000 / 100)) $((b / 1000)) $((b % 1000 / 100)) $((percent / 100)) $((percent % 100))
[ "$percent" -le "$most" ]
