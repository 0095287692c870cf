# SPDX-License-Identifier: MIT
# Sourced by scripts/parts.sh: the packages for Windows, built here and run under Wine (tests/rig/windows).
# shellcheck shell=bash disable=SC2154  # project, jobs: of who sources this

windows_rig="$project/tests/rig/windows"
packages_folder="$project/build/packages"
. "$project/scripts/package/windows.sh"
. "$project/scripts/fonts-host.sh"
. "$windows_rig/wine.sh"
. "$windows_rig/tests.sh"
. "$windows_rig/board.sh"
. "$windows_rig/fonts.sh"
. "$windows_rig/setup.sh"
. "$windows_rig/sound.sh"

# Their order is that of the sections.
all_windows_suites=(units commands window board fonts sound setup)

# Whether the suites can run without anything being installed, fetched or built but the project itself.
windows_is_here() {
  local name
  [ -z "$(missing_packages build windows windows-test 2>/dev/null)" ] || return 1
  for name in "${windows_library_names[@]}"; do library_is_built "$name" || return 1; done
}

windows_suites() {  # [SUITE...]; all by default
  local suite
  local -a suites=()
  for suite in "$@"; do
    if [[ " ${all_windows_suites[*]} " == *" $suite "* ]]; then
      suites+=("$suite")
    else
      fail "there is no suite $suite; there are: ${all_windows_suites[*]}"
    fi
  done
  if [ $# -eq 0 ]; then suites=("${all_windows_suites[@]}"); fi
  [ ${#suites[@]} -gt 0 ] || return
  if ! need_packages build windows windows-test; then
    leave_out "Windows, the packages of the sections \"windows\" and \"windows-test\" in packaging/debian-packages.txt could not be installed"
    return
  fi
  section "Windows: packages and test programs" build_all_for_windows
  if [ -z "$windows_is_built" ]; then return; fi
  at_end stop_wine
  if start_wine; then
    for suite in "${suites[@]}"; do "windows_${suite}_suite"; done
  else
    fail "Wine did not start; what it said is in ${wine_log#"$project/"}"
  fi
  stop_wine
}

windows_is_built=""
largest_setup=20000000

build_all_for_windows() {
  local -a results=()
  mkdir -p "$packages_folder"
  if ! package_windows -DKESTRIN_WERROR=ON; then
    fail "./package windows"
    return
  fi
  check "the setup is no larger than 20 MB" \
    [ "$(stat -c %s "$packages_folder/kestrin-$windows_version-setup.exe")" -le "$largest_setup" ]
  check "the zip holds the programs" zip_holds_programs
  leave_out_whole_programs
  # Only the tests' own sources are compiled now: nothing else is configured otherwise. What they compare with is made by the programs for this system.
  if build_for_windows -DKESTRIN_TESTS=ON -DKESTRIN_WERROR=ON &&
    windows_step "The build for this system" "$windows_build/tools.log" \
      cmake --build "$project/build/release" -j "$jobs" --target kestrinctl; then
    pass
    windows_is_built=yes
  else
    fail "the test programs for Windows"
  fi
}

zip_holds_programs() {
  local name held
  held="$(cmake -E tar tf "$packages_folder/kestrin-$windows_version-windows.zip")" || return
  for name in kestrin.exe kestrinctl.exe kestrinusb.chm Examples/demo.lscfg platforms/qwindows.dll licences/README.txt; do
    grep -qxF "kestrin-$windows_version/$name" <<<"$held" || { echo "there is no $name"; return 1; }
  done
}
