# SPDX-License-Identifier: MIT
# Sourced by scripts/parts.sh: the built programs against Debian's own kernel, in virtual machines (tests/rig/kernel).
# shellcheck shell=bash disable=SC2154  # project, jobs: of who sources this

kernel_rig="$project/tests/rig/kernel"
# What is fetched once, what is made of it, and the logs.
kernel_folder="$project/build/kernel-rig"

kernel_is_fetched() { compgen -G "$kernel_folder/system/boot/vmlinuz-*" >/dev/null; }

# Whether the suites can run without anything being installed or fetched.
kernel_is_here() {
  command -v qemu-system-x86_64 >/dev/null && kernel_is_fetched && [ -z "$(missing_packages kernel 2>/dev/null)" ]
}

# Unpacked, not installed: the kernel, udevd, and systemd for the rules by which the person at a computer gets a device.
# Says in `reason` why not.
fetch_kernel() {
  local image package
  local -a packages=()
  if kernel_is_fetched; then return 0; fi
  image="$(apt-cache depends linux-image-amd64 2>/dev/null | awk '$1 == "Depends:" && $2 ~ /^linux-image-[0-9]/ { print $2; exit }')"
  if [ -z "$image" ]; then
    reason="this system offers no package linux-image-amd64"
    return 1
  fi
  for package in "$image" udev systemd libsystemd-shared; do
    if is_offered "$package"; then packages+=("$package"); fi
  done
  echo "Fetching $image and what belongs to it, about 75 MB, into build/kernel-rig; this happens once."
  rm -rf "$kernel_folder/packages" "$kernel_folder/system.part"
  mkdir -p "$kernel_folder/packages" "$kernel_folder/system.part"
  if ! (cd "$kernel_folder/packages" && apt-get download -q "${packages[@]}" 2>&1 | tail -n 3; exit "${PIPESTATUS[0]}"); then
    reason="the package $image could not be fetched"
    return 1
  fi
  for package in "$kernel_folder"/packages/*.deb; do
    dpkg -x "$package" "$kernel_folder/system.part" || { reason="$package could not be unpacked"; return 1; }
  done
  # Where everything is in /usr, the tools for modules still look for the old place.
  if [ ! -e "$kernel_folder/system.part/lib" ]; then ln -s usr/lib "$kernel_folder/system.part/lib"; fi
  rm -rf "$kernel_folder/packages" "$kernel_folder/system"
  mv "$kernel_folder/system.part" "$kernel_folder/system"
}

# The suites' names, those that take longest first, so that no machine runs alone at the end for long.
all_kernel_suites() {
  local file
  for file in "$kernel_rig"/machine/suites/*.sh; do
    printf '%s %s\n' "$(sed -n 's/^# takes: \([0-9]*\) s$/\1/p' "$file")" "$(basename "$file" .sh)"
  done | sort -rn | cut -d ' ' -f 2
}

kernel_suites() {  # [SUITE...]; all by default
  local suite seconds reason=""
  local -a suites=()
  if ! need_packages kernel; then
    leave_out "kernel suites, the packages of the section \"kernel\" in packaging/debian-packages.txt could not be installed"
    return
  fi
  if ! fetch_kernel; then
    leave_out "kernel suites, $reason"
    return
  fi
  if [ $# -eq 0 ]; then mapfile -t suites < <(all_kernel_suites); fi
  for suite in "$@"; do
    if [ -e "$kernel_rig/machine/suites/$suite.sh" ]; then
      suites+=("$suite")
    else
      fail "there is no suite $suite; there are: $(all_kernel_suites | xargs)"
    fi
  done
  [ ${#suites[@]} -gt 0 ] || return
  build_preset release kestrin_kernel_rig -DKESTRIN_TESTS=ON || return
  if ! "$kernel_rig/initramfs.sh" "$project/build/release" "$kernel_folder/system" "$kernel_folder/initramfs"; then
    fail "the machine's initramfs"
    return
  fi
  printf '\n==== Kernel suites: %s\n' "${suites[*]}"
  # As many machines at a time as there are processors.
  while read -r suite seconds; do
    count_suite "$suite" "$seconds"
  done < <(printf '%s\n' "${suites[@]}" | xargs -P "$jobs" -n 1 "$kernel_rig/suite.sh" "$kernel_folder" "$project/build/release/bin")
}

# A machine that dies prints no RESULT line, or one that does not agree with its own lines: what it lost is not known.
count_suite() {  # SUITE SECONDS
  local log="$kernel_folder/logs/$1.log" ok bad
  ok=$(grep -c '^ok ' "$log")
  bad=$(grep -c '^FAIL ' "$log")
  # Failed checks with what was seen.
  awk '/^(ok|--|RESULT) / { shown = 0 } /^FAIL / { shown = 1 } shown' "$log"
  if ! grep -qx "RESULT $ok $bad" "$log"; then
    tail -n 20 "$log"
    echo "FAILED: the machine of the suite $1 ended without its result"
    bad=$((bad + 1))
  fi
  if [ "$bad" -gt 0 ]; then echo "Everything that the machine said is in ${log#"$project/"}"; fi
  passed=$((passed + ok))
  failed=$((failed + bad))
  report_section "Kernel: $1" "$ok" "$bad" "$2"
}
