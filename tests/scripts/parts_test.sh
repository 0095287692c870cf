#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Each file of scripts/tests is a part of ./test; .ci/run adds up those that need nothing that is not there.
. "$(dirname "${BASH_SOURCE[0]}")/pretend.sh"
cp -R "$real/test" "$real/.ci" "$work/project/"
rm -f "$project"/scripts/tests/*.sh
printf 'need_packages() { :; }\n' >"$project/scripts/packages.sh"
# What ./test does by itself passes one check, or two with all sections.
cat >>"$project/scripts/checks.sh" <<'CHECKS'
build_and_test() { [ "$1" != release ] || pass; }
check_files() { pass; }
check_no_qt() { :; }
core_only() { :; }
thread_tests() { :; }
fuzz_all() { :; }
check_tidy() { :; }
section() { "${@:2}"; }
CHECKS

part() {  # NAME IS-HERE CHECKS
  printf '%s_is_here() { %s; }\n%s_suites() { echo "%s ($*)"; %s; }\n' "$1" "$2" "$1" "$1" "$3" >"$project/scripts/tests/$1.sh"
}

run() { status=0; "$@" >"$work/out" 2>&1 </dev/null || status=$?; }
ends_with() {  # WHAT STATUS LAST-LINE
  expect "$1: status $status is $2" [ "$status" -eq "$2" ]
  expect "$1: '$(tail -n 1 "$work/out")' is '$3'" [ "$(tail -n 1 "$work/out")" = "$3" ]
  [ $failed -eq 0 ] || { cat "$work/out"; exit 1; }
}

part moon true 'pass; pass; pass'
part sun false 'pass; leave_out "light, it is night"'

run "$project/test"
ends_with "no part by itself" 0 "2 passed, 0 failed"
run "$project/test" quick
ends_with "quick" 0 "1 passed, 0 failed"
run "$project/test" all
ends_with "all" 0 "6 passed, 0 failed, 1 left out"
run "$project/test" moon dark side
ends_with "one part" 0 "3 passed, 0 failed"
expect "its suites are passed on" grep -qx "moon (dark side)" "$work/out"
run "$project/test" mars
expect "no such part" [ "$status" -eq 2 ]
expect "those that there are" grep -qxF "usage: ./test [quick | all | moon | sun [SUITE...]]" "$work/out"

run "$project/.ci/run"
ends_with "the server leaves out what is not there" 0 "5 passed, 0 failed, 1 left out"
expect "and names it" grep -q "^left out: ./test sun, " "$work/out"
part sun true 'pass; leave_out "light, it is night"'
run "$project/.ci/run"
ends_with "the server adds up" 0 "6 passed, 0 failed, 1 left out"
KESTRIN_CI_LAST_BEGIN=0 run "$project/.ci/run"
ends_with "the server begins nothing too late" 0 "2 passed, 0 failed, 2 left out"
expect "and says so" [ "$(grep -c "^left out: ./test .* time" "$work/out")" = 2 ]
part moon true 'pass; fail "no light"'
run "$project/.ci/run"
ends_with "a part fails" 1 "4 passed, 1 failed, 1 left out"
run "$project/.ci/run" quick
ends_with "words are passed on" 0 "1 passed, 0 failed"
part moon true 'echo dying; exit 0'
run "$project/.ci/run"
ends_with "a part without a total" 1 "3 passed, 1 failed, 1 left out"

# What a part has started ends with ./test, however that ends.
part moon true 'at_end put_out; at_end draw_curtain; pass; [ -z "${KILLED-}" ] || kill -TERM $$'
printf 'put_out() { echo light >>"%s"; }\ndraw_curtain() { echo curtain >>"%s"; }\n' "$work/ended" "$work/ended" >>"$project/scripts/tests/moon.sh"
run "$project/test" moon
ends_with "a part with an end" 0 "1 passed, 0 failed"
expect "all was ended, the last first" [ "$(xargs <"$work/ended")" = "curtain light" ]
rm "$work/ended"
KILLED=1 run "$project/test" moon
expect "killed: status $status" [ "$status" -eq 143 ]
expect "killed, all was ended" [ "$(xargs <"$work/ended")" = "curtain light" ]
exit $failed
