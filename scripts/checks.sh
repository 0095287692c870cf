# Sourced by ./test: the checks that are no test programs.
# shellcheck shell=bash

longest_file=500

project_files() { (cd "$project" && find . \( -name .git -o -name build -o -name 'build-*' \) -prune -o -type f -print); }
source_files() { project_files | grep -E '^\./(src|demo|tests|benchmarks|fuzz)/.*\.(cpp|h)$'; }

check_files() {
  local twins file lines long=""
  twins="$(project_files | sort | tr '[:upper:]' '[:lower:]' | uniq -d)"
  if [ -z "$twins" ]; then pass; else fail "these names differ by letter case only: $twins"; fi

  while read -r file; do
    lines=$(wc -l <"$project/$file")
    [ "$lines" -le $longest_file ] || long="$long $file ($lines)"
  done < <(source_files)
  if [ -z "$long" ]; then pass; else fail "longer than $longest_file lines:$long"; fi

  if (cd "$project" && source_files | xargs clang-format-14 --dry-run --Werror); then
    pass
  else
    fail "the layout; clang-format-14 -i puts it right"
  fi
}

# Not even by way of another library.
check_no_qt() {
  local program="$project/build/release/bin/kestrinctl" libraries
  if ! libraries="$(ldd "$program")"; then
    fail "there is no $program"
  elif grep -i qt <<<"$libraries"; then
    fail "kestrinctl is linked with the above"
  else
    pass
  fi
}

# An empty search path hides every outside library from CMake, as on a machine that has none. This is also the build
# without optimisation, in which the standard library looks after its own preconditions.
core_only() {
  PKG_CONFIG_LIBDIR=/nonexistent build_and_test core-only -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_FLAGS_DEBUG="-O0 -D_GLIBCXX_ASSERTIONS"
}

# What runs beside the one thread: the command line with its signals. Its tests start the built program.
thread_tests() {
  build_preset tsan "kestrinctl kestrin_cli_tests" -DKESTRIN_TESTS=ON && run_tests tsan "$project/build/tsan/tests/cli"
}

# Built by clang, so this is also where the second compiler has its say. Every target is a test known to ctest.
fuzz_all() {
  build_preset fuzz all && run_tests fuzz "$project/build/fuzz/fuzz"
}

check_tidy() {
  local log
  log="$(mktemp)"
  # clang does not know every warning that g++ is told to leave out. Its analyzer takes as long as all other checks
  # together; it is for the editor, where it looks at one file.
  if run-clang-tidy-14 -quiet -checks='-clang-analyzer-*' -p "$project/build/release" -j "$jobs" \
    -extra-arg=-Wno-unknown-warning-option "^$project/(src|demo)/" >"$log" 2>&1; then
    pass
  else
    grep -E '(error|warning):' "$log" | sort -u
    fail "clang-tidy; everything it said is in $log"
  fi
}
