#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A build that fails ends ./run there and then, with its first error, whatever an earlier build has left.
. "$(dirname "${BASH_SOURCE[0]}")/pretend.sh"
unset DISPLAY WAYLAND_DISPLAY

pretend dpkg-query <<<'echo installed'
pretend apt-get <<<'echo "apt-get was called"; exit 1'
pretend apt-cache <<<'exit 1'
pretend ccache <<<'exit 1'
# Fails where FAIL_AT says: to configure, or to build; or, of warnings only, as long as these are taken for errors.
pretend cmake <<'COMMAND'
case "$1" in
  --preset) step=configure ;;
  *) step=build ;;
esac
echo "[1/3] $step"
cache="${BASH_SOURCE[0]%/bin/*}/project/build/release/CMakeCache.txt"
case " $* " in *" -DKESTRIN_WERROR=OFF "*) echo 'KESTRIN_WERROR:BOOL=OFF' >"$cache" ;; esac
if [ $step = build ] && grep -qsx 'KESTRIN_WERROR:BOOL=ON' "$cache"; then
  echo "main.cpp:3:1: error: a new compiler's opinion [-Werror=opinion]"
  exit 1
fi
[ "$step" != "$FAIL_AT" ] || { echo "main.cpp:7:1: error: there is no such thing"; echo "main.cpp:9:1: error: nor this"; exit 1; }
COMMAND

# What an earlier build left must not be taken for this one's.
leave_an_old_program() {
  mkdir -p "$project/build/release/bin"
  printf '#!/bin/sh\necho "an old program ran"\n' >"$project/build/release/bin/kestrinctl"
  chmod +x "$project/build/release/bin/kestrinctl"
}

expect_stop() {  # STATUS: what was said is in $work/out
  expect "status $1 is one of failure" [ "$1" -ne 0 ]
  expect "it says that the build failed" grep -qF 'The build failed. Its first error:' "$work/out"
  expect "it shows the first error" grep -qF 'main.cpp:7:1: error: there is no such thing' "$work/out"
  expect "it names the file with all that was said" grep -qF "$project/build/run.log" "$work/out"
  expect "all that was said is there" grep -qF 'main.cpp:9:1: error: nor this' "$project/build/run.log"
  expect "nothing runs after it" [ "$(grep -cE 'an old program|demo set|No such file' "$work/out")" -eq 0 ]
}

for FAIL_AT in configure build; do
  export FAIL_AT
  for old in no yes; do
    rm -rf "$project/build"
    if [ $old = yes ]; then leave_an_old_program; fi
    for arguments in "" "info"; do
      echo "-- $FAIL_AT fails, an old program: $old, arguments: $arguments"
      status=0
      # shellcheck disable=SC2086
      "$project/run" $arguments >"$work/out" 2>&1 </dev/null || status=$?
      expect_stop $status
      if command -v script >/dev/null; then
        status=0
        script -qec "$project/run $arguments" /dev/null >"$work/out" 2>&1 </dev/null || status=$?
        expect_stop $status
      fi
      [ $failed -eq 0 ] || { cat "$work/out"; exit 1; }
    done
  done
done

echo "-- nothing fails"
export FAIL_AT=nowhere
leave_an_old_program
status=0
"$project/run" info >"$work/out" 2>&1 </dev/null || status=$?
expect "the program runs" [ "$(tail -n 1 "$work/out")" = "an old program ran" ]
expect "status $status is that of success" [ $status -eq 0 ]

# ./test configures the same folder, with warnings taken for errors.
configure_as_test() {
  leave_an_old_program
  printf 'CMAKE_HOME_DIRECTORY:INTERNAL=%s\nKESTRIN_WERROR:BOOL=ON\n' "$project" >"$project/build/release/CMakeCache.txt"
}

echo "-- a warning, after ./test"
configure_as_test
status=0
"$project/run" info >"$work/out" 2>&1 </dev/null || status=$?
expect "warnings keep nobody from the programs" [ "$(tail -n 1 "$work/out")" = "an old program ran" ]

echo "-- a warning and an error, after ./test"
configure_as_test
export FAIL_AT=build
status=0
"$project/run" info >"$work/out" 2>&1 </dev/null || status=$?
expect_stop $status
[ $failed -eq 0 ] || cat "$work/out"
exit $failed
