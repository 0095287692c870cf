# SPDX-License-Identifier: MIT
# Sourced by the tests of what is installed. Arguments: the folder of the sources, that of the build.
# shellcheck shell=bash

set -euo pipefail
# Paths as they are: the programs tell theirs without links.
sources="$(cd "$1" && pwd -P)"
build="$(cd "$2" && pwd -P)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

failed=0
expect() {  # WHAT COMMAND...
  if "${@:2}"; then return 0; fi
  echo "FAILED: $1"
  failed=1
}

# Whether a tool is here that a check needs; says what is left out where it is not.
has() {  # TOOL WHAT
  if command -v "$1" >/dev/null; then return 0; fi
  echo "left out: $2, since $1 is not here"
  return 1
}

# Runs a command that must succeed and, with it, say nothing at all.
quiet() {
  local said
  if said="$("$@" 2>&1)" && [ -z "$said" ]; then return 0; fi
  printf '%s\n' "$said"
  return 1
}
