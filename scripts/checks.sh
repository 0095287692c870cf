# SPDX-License-Identifier: MIT
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

  if (cd "$project" && find src -name '*.h' -o -name '*.cpp' | sort | xargs awk -f scripts/layers.awk scripts/layers.txt); then
    pass
  else
    fail "includes that scripts/layers.txt does not allow"
  fi

  local bare
  bare="$(source_files | (cd "$project" && xargs grep -L 'SPDX-License-Identifier: MIT'))"
  if [ -z "$bare" ]; then pass; else fail "without the line that names the licence: $bare"; fi

  check_docs
  check "each test program is in a suite for Windows, or left out there for a reason" each_program_has_its_suite

  # Each version lays out a few things in its own way, so only the one that the code was laid out with can judge.
  if ! command -v clang-format-14 >/dev/null; then
    echo "Left out: the layout of the code, since clang-format-14 is not here; Debian 12 has it."
  elif (cd "$project" && source_files | xargs clang-format-14 --dry-run --Werror); then
    pass
  else
    fail "the layout; clang-format-14 -i puts it right"
  fi
}

# The documents for developers name files by their path, from the project's folder or beside a path named just before. Each
# path must be there, and each folder of the sources must be named.
check_docs() {
  local gone="" unnamed="" document name folder
  while IFS=: read -r document name; do
    name="${name#\`}" name="${name%%[\`#)]*}"
    compgen -G "$project/$name" >/dev/null || gone="$gone $document: $name;"
  done < <(cd "$project" && grep -oE '`(src|tests|demo|assets|fuzz|benchmarks|packaging|scripts|docs|cmake)(/[^` ]*)?`' CONTRIBUTING.md docs/*.md)
  while IFS=: read -r document name; do
    name="${name#*](}" name="${name%%[#)]*}"
    [ -z "$name" ] || [ -e "$project/$(dirname "$document")/$name" ] || gone="$gone $document: $name;"
  done < <(cd "$project" && grep -oE '\]\([^):]*\)' README.md CONTRIBUTING.md docs/*.md)
  while IFS=: read -r document name; do
    name="${name//\`/}"
    [ -n "$(cd "$project" && find src tests demo assets packaging scripts -name "$name" -print -quit)" ] || gone="$gone $document: $name;"
  done < <(cd "$project" && grep -oE '`[A-Za-z_]+\.(cpp|h|sh)`' CONTRIBUTING.md docs/*.md)
  if [ -z "$gone" ]; then pass; else fail "named in the documents, but not there:$gone"; fi

  while read -r folder; do
    grep -F -e "| \`$folder\`" -e "| \`${folder%/*}\`" "$project/CONTRIBUTING.md" | grep -qF -e "\`$folder\`" -e "\`${folder##*/}\`" ||
      unnamed="$unnamed $folder"
  done < <(cd "$project" && find src/*/ -type f | sed 's,/[^/]*$,,' | sort -u)
  if [ -z "$unnamed" ]; then pass; else fail "folders that CONTRIBUTING.md does not name:$unnamed"; fi
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

# What runs beside the one thread: folders and waveforms that are read, sounds that are played, tried, levelled or
# imported, sets that are kept, and reports that are written. Qt itself is not built for this, so what it does among its own threads does not count.
thread_tests() {
  local -x TSAN_OPTIONS="suppressions=$project/tests/support/tsan.supp"
  local tests programs="kestrin_writer_tests kestrin_sound_ui_tests kestrin_player_tests kestrin_import_crew_tests"
  programs="$programs kestrin_live_saber_tests kestrin_stage_ui_tests kestrin_window_tests kestrin_application_tests"
  build_preset tsan "$programs" -DKESTRIN_TESTS=ON || return
  for tests in platform/hid ui/sound rig/sound core/sound/import core/saber ui/stage ui/window; do
    run_tests tsan "$project/build/tsan/tests/$tests"
  done
}

# Built by clang, so this is also where the second compiler has its say. Every target is a test known to ctest.
fuzz_all() {
  build_preset fuzz kestrin_fuzz_targets && run_tests fuzz "$project/build/fuzz/fuzz"
}

# The analyzer and the whole of the bugprone and misc families take longer than all the rest together; they are for the
# editor, where they look at one file.
quick_checks='-clang-analyzer-*,-misc-*,-bugprone-*,bugprone-use-after-move,bugprone-unused-return-value'

check_tidy() {
  local log runner generated
  log="$(mktemp)"
  runner="$(first_that is_a_command "run-clang-tidy-14|run-clang-tidy")" || { fail "clang-tidy is not installed"; return; }
  # Several sources at a time, as the build takes them: most of the work is in the headers that they share.
  if ! configure release -B "$project/build/tidy" -DKESTRIN_TESTS=OFF -DKESTRIN_UNITY=ON -DKESTRIN_WERROR=ON \
    -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON >"$log" 2>&1; then
    tail -n 20 "$log"
    fail "configuring for clang-tidy; everything it said is in $log"
    return
  fi
  # Newer versions of CMake name among them what Qt makes of the headers. That is not looked at, and may stay empty.
  while read -r generated; do
    mkdir -p "${generated%/*}"
    [ -e "$generated" ] || : >"$generated"
  done < <(grep -rhoE '/[^"]*/mocs_compilation\.cpp' "$project/build/tidy" --include='unity_*' | sort -u)
  # clang does not know every warning that g++ is told to leave out.
  if "$runner" -quiet -checks="$quick_checks" -p "$project/build/tidy" -j "$jobs" \
    -extra-arg=-Wno-unknown-warning-option "^$project/(src|demo|build/tidy/.*/Unity)/" >"$log" 2>&1; then
    pass
  else
    grep -E '(error|warning):' "$log" | sort -u
    fail "clang-tidy; everything it said is in $log"
  fi
}
