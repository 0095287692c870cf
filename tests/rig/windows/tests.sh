# SPDX-License-Identifier: MIT
# Sourced by scripts/tests/windows.sh: the test programs, each run as a whole. left-out.txt names the tests that cannot pass.
# shellcheck shell=bash disable=SC2154  # project, jobs and the names that begin with windows_: of who sources this

windows_results="$windows_build/results"

# On the drive of the temporary folder, which relative paths of the tests begin or end in.
tests_stand_in="$windows_build/wine/drive_c"

windows_unit_programs=(kestrin_core_tests kestrin_simulator_tests kestrin_board_store_tests kestrin_platform_tests
  kestrin_writer_tests kestrin_demo_tests kestrin_import_crew_tests kestrin_live_saber_tests help_file_test)
windows_command_programs=(kestrin_cli_tests)
windows_window_programs=(kestrin_kit_tests help_window_test kestrin_sound_ui_tests kestrin_import_ui_tests kestrin_stage_ui_tests
  kestrin_board_ui_tests kestrin_window_tests kestrin_application_tests kestrin_desktop_tests kestrin_programs_tests)

windows_units_suite() { section "Windows: unit tests" run_windows_tests "${windows_unit_programs[@]}"; }
windows_commands_suite() { section "Windows: the command line's tests" run_windows_tests "${windows_command_programs[@]}"; }
# There paths of this system lead to files of this system.
windows_window_suite() {
  local tests_stand_in="$windows_build"
  section "Windows: the window's tests, without a screen" run_windows_tests "${windows_window_programs[@]}"
}

# Each program that has tests is in one suite, or stands in left-out.txt with "*" for all its tests.
each_program_has_its_suite() {
  diff <(grep -rhoE '\b(kestrin_(ui_)?test|kestrin_rig|(kestrin|gtest)_discover_tests)\([a-z_]+' "$project/tests" --include=CMakeLists.txt |
    sed 's/.*(//' | sort) \
    <({ printf '%s\n' "${windows_unit_programs[@]}" "${windows_command_programs[@]}" "${windows_window_programs[@]}"
      awk '$2 == "*" { print $1 }' "$windows_rig/left-out.txt"; } | sort)
}

leave_out_whole_programs() {
  local program test reason
  while read -r program test reason; do
    if [ "$test" = "*" ]; then leave_out "$program, $reason"; fi
  done <"$windows_rig/left-out.txt"
}

# Qt and the compiler's libraries lie where they were built or installed; Wine keeps variables that begin with QT_ from the
# programs, unless it is told this way.
tests_environment() {
  local runtime qt="$windows_libraries/qt"
  runtime="$(dirname "$("$windows_target-g++-posix" -print-file-name=libstdc++-6.dll)")"
  export WINEPATH
  WINEPATH="$(windows_path "$qt/bin");$(windows_path "$runtime");$(windows_path "/usr/$windows_target/lib")"
  export WINEQT_QPA_PLATFORM=offscreen WINEQT_PLUGIN_PATH WINEQT_QPA_FONTDIR
  WINEQT_PLUGIN_PATH="$(windows_path "$qt/plugins")"
  # Of a system that has more of them, others might be chosen.
  rm -rf "$windows_build/letters"
  mkdir -p "$windows_build/letters"
  cp /usr/share/fonts/truetype/dejavu/DejaVu{Sans,SansMono,Serif}{,-Bold}.ttf "$windows_build/letters/"
  WINEQT_QPA_FONTDIR="$(windows_path "$windows_build/letters")"
}

left_out_rows() {  # PROGRAM -> lines "TEST REASON"
  awk -v program="$1" '$1 == program { $1 = ""; sub(/^ /, ""); print }' "$windows_rig/left-out.txt"
}

run_windows_tests() {  # PROGRAM...
  local program test reason
  mkdir -p "$windows_results"
  # What an earlier run left is not to be counted.
  for program in "$@"; do rm -f "$windows_results/$program".*; done
  (
    tests_environment
    export -f run_test_program plain_name run_wine windows_path left_out_rows
    export windows_results windows_build windows_rig wine_program
    cd "$tests_stand_in" || exit
    printf '%s\n' "$@" | xargs -P "$jobs" -I '{}' bash -c 'run_test_program {}'
  ) || fail "not every test program was run"
  for program in "$@"; do
    count_windows_results "$program"
    while read -r test reason; do
      if [ "$(cat "$windows_results/$program.$(plain_name "$test").status")" = 0 ]; then
        fail "$program $test passes, although left-out.txt says that it cannot: $reason"
      else
        leave_out "$test, $reason"
      fi
    done < <(left_out_rows "$program")
  done
}

# For a file: names of tests with values have slashes.
plain_name() { echo "${1//[^[:alnum:].]/_}"; }  # TEST

# Leaves NAME.xml, NAME.status and for each test that is left out NAME.TEST.status.
run_test_program() {  # NAME
  local out="$windows_results/$1" test reason one left_out=""
  local file="$windows_build/bin/$1.exe"
  while read -r test reason; do
    left_out+=":$test"
    one="$out.$(plain_name "$test")"
    # Where there is no such test, it ends with 0, and the row is reported too.
    timeout -k 5 60 "$wine_program" "$file" --gtest_filter="$test" >"$one.log" 2>&1 </dev/null
    echo $? >"$one.status"
  done < <(left_out_rows "$1")
  LC_ALL=C.UTF-8 timeout -k 5 600 "$wine_program" "$file" --gtest_filter="*-${left_out#:}" \
    --gtest_output="xml:$(windows_path "$out.xml")" >"$out.log" 2>&1 </dev/null
  echo $? >"$out.status"
}

count_windows_results() {  # NAME
  local out="$windows_results/$1" total bad skipped status
  status="$(cat "$out.status")"
  if [ ! -s "$out.xml" ]; then
    tail -n 15 "$out.log"
    fail "$1 ended with status $status before its last test"
    return
  fi
  total="$(root_number tests "$out.xml")"
  bad=$(($(root_number failures "$out.xml") + $(root_number errors "$out.xml")))
  skipped="$(grep -c 'result="skipped"' "$out.xml")"
  passed=$((passed + total - bad - skipped))
  failed=$((failed + bad))
  if [ "$bad" -gt 0 ]; then grep -B 25 '^\[  FAILED  \] .* ms)' "$out.log" | cut -c -300; fi
  if [ "$skipped" -gt 0 ]; then leave_out "$skipped tests of $1, which skip themselves"; fi
  if [ "$status" -ne 0 ] && [ "$bad" -eq 0 ]; then fail "$1 ended with status $status"; fi
}

root_number() { sed -n "s/^<testsuites.*[[:space:]]$1=\"\([0-9]*\)\".*/\1/p" "$2"; }  # ATTRIBUTE FILE
