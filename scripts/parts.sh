# SPDX-License-Identifier: MIT
# Sourced by ./test and .ci/run: the parts of ./test all. Each file NAME.sh in scripts/tests is one of them and defines
#   NAME_is_here            whether all that it needs is on this machine, so that nothing is installed, fetched or built for it
#   NAME_suites [SUITE...]  fetches and builds what it needs, and runs its sections
# shellcheck shell=bash

all_parts=()
for part_file in "$project"/scripts/tests/*.sh; do
  # shellcheck source=/dev/null
  . "$part_file"
  all_parts+=("$(basename "$part_file" .sh)")
done
unset part_file

is_a_part() {  # NAME
  local part
  for part in "${all_parts[@]}"; do [ "$part" != "$1" ] || return 0; done
  return 1
}
