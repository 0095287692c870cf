# SPDX-License-Identifier: MIT
# Sourced by the tests of the scripts: a project folder of their own and commands that only pretend.
# shellcheck shell=bash

set -euo pipefail
real="$1"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/bin" "$work/project"
cp -R "$real/run" "$real/scripts" "$real/packaging" "$work/project/"
project="$work/project"
PATH="$work/bin:$PATH"

# Makes a command whose body comes from standard input.
pretend() {  # NAME
  { echo '#!/usr/bin/env bash'; cat; } >"$work/bin/$1"
  chmod +x "$work/bin/$1"
}

failed=0
expect() {  # WHAT COMMAND...
  if "${@:2}"; then return 0; fi
  echo "FAILED: $1"
  failed=1
}
