# SPDX-License-Identifier: MIT
# Sourced by ./test: runs one section after the other and adds up what passed and what failed.
# shellcheck shell=bash

passed=0
failed=0
left_out=0
summary=()

# Checks report with these two; a failure is followed by what was wrong.
pass() { passed=$((passed + 1)); }
fail() {
  failed=$((failed + 1))
  echo "FAILED: $*"
}

# Runs a command; it counts as passed when its status is that of success, and else what it said is shown.
check() {  # WHAT COMMAND...
  local said
  if said="$("${@:2}" 2>&1)"; then
    pass
  else
    fail "$1"
    tail -n 20 <<<"$said" | cut -c -300
  fi
}

# What cannot be checked here, and why.
leave_out() {  # WHAT, WHY
  left_out=$((left_out + 1))
  echo "left out: $*"
}

# What is to be done on every way out, the last one first, so that nothing that a part has started outlives ./test. A command
# may come twice, or when there is nothing for it to do. What it says is not shown, since the total is the last line.
at_end_commands=()
at_end() {  # COMMAND
  at_end_commands=("$1" "${at_end_commands[@]}")
  trap end_all EXIT
  trap 'exit 130' INT
  trap 'exit 143' TERM
}
end_all() {
  local command
  for command in "${at_end_commands[@]}"; do "$command" >/dev/null 2>&1; done
}

section() {  # TITLE COMMAND...
  local title="$1" passed_before=$passed failed_before=$failed start=$SECONDS
  shift
  printf '\n==== %s\n' "$title"
  "$@"
  local seconds=$((SECONDS - start)) ok=$((passed - passed_before)) bad=$((failed - failed_before))
  # A section that checked nothing has not shown anything.
  if [ $((ok + bad)) -eq 0 ]; then
    fail "nothing was checked"
    bad=1
  fi
  report_section "$title" "$ok" "$bad" "$seconds"
}

report_section() {  # TITLE PASSED FAILED SECONDS
  printf -- '---- %s: %d passed, %d failed, %d s\n' "$@"
  summary+=("$(printf '%-60s %5d passed %4d failed %5d s' "$@")")
}

finish() {
  printf '\n==== Summary (%d s)\n' "$SECONDS"
  if [ ${#summary[@]} -gt 0 ]; then printf '%s\n' "${summary[@]}"; fi
  printf '\n%d passed, %d failed' "$passed" "$failed"
  if [ "$left_out" -gt 0 ]; then printf ', %d left out' "$left_out"; fi
  printf '\n'
  [ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
  exit
}

# Configures a preset and builds TARGETS of it (all by default); what that says is shown only when it fails.
build_preset() {  # PRESET "TARGETS" [cmake options]
  local preset="$1" log
  local -a targets
  read -ra targets <<<"$2"
  shift 2
  log="$(mktemp)"
  if { configure "$preset" -DKESTRIN_UNITY=ON -DKESTRIN_WERROR=ON "$@" &&
    "${steady[@]}" cmake --build "$project/build/$preset" -j "$jobs" --target "${targets[@]}"; } >"$log" 2>&1; then
    rm -f "$log"
    return 0
  fi
  # A new compiler's warnings are no reason to keep anybody from ./run, which goes on with what is configured here.
  if grep -qF '[-Werror' "$log"; then configure "$preset" -DKESTRIN_WERROR=OFF >/dev/null 2>&1; fi
  tail -n 60 "$log" | cut -c -400
  fail "the build of preset $preset; everything it said is in $log"
  return 1
}

# Sanitizers want the address space as they know it; where it is allowed, programs run with nothing moved about.
steady=()
if command -v setarch >/dev/null && setarch "$(uname -m)" -R true 2>/dev/null; then steady=(setarch "$(uname -m)" -R); fi

build_and_test() {  # PRESET [cmake options]
  build_preset "$1" all -DKESTRIN_TESTS=ON "${@:2}" && run_tests "$1" "$project/build/$1"
}

# Most tests wait more than they compute, so more of them run than there are processors. Fuzzing only computes, and what
# the sanitizers slow down is to stay well within its time limits.
tests_at_once() {  # PRESET
  case "$1" in
    fuzz) echo "$jobs" ;;
    asan-ubsan | tsan) echo $((jobs + 1)) ;;
    *) echo $((4 * jobs)) ;;
  esac
}

run_tests() {  # PRESET FOLDER-OF-THE-TESTS
  local results="$project/build/$1/test-results.xml"
  rm -f "$results"
  # Only what is worth reading: all but the lines of tests that start and pass.
  "${steady[@]}" ctest --test-dir "$2" -j "$(tests_at_once "$1")" --output-on-failure --no-tests=error --output-junit "$results" |
    grep -vE '^ *Start +[0-9]+: |^ *[0-9]+/[0-9]+ .* Passed '
  count_results "$results" "${PIPESTATUS[0]}"
}

count_results() {  # JUNIT-FILE CTEST-STATUS
  local total bad skipped
  if [ ! -s "$1" ]; then
    fail "ctest left no results"
    return
  fi
  total=$(suite_number tests "$1")
  bad=$(suite_number failures "$1")
  skipped=$(($(suite_number skipped "$1") + $(suite_number disabled "$1")))
  passed=$((passed + total - bad - skipped))
  failed=$((failed + bad))
  if [ "$skipped" -gt 0 ]; then echo "$skipped tests were skipped."; fi
  if [ "$2" -ne 0 ] && [ "$bad" -eq 0 ]; then fail "ctest ended with status $2"; fi
}

suite_number() {  # ATTRIBUTE JUNIT-FILE -> the number in the suite's opening tag
  tr '\n' ' ' <"$2" | sed -n "s/.*<testsuite [^>]*[[:space:]]$1=\"\([0-9]*\)\".*/\1/p"
}
