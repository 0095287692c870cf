#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Which packages are installed on systems that have different ones.
. "$(dirname "${BASH_SOURCE[0]}")/pretend.sh"
. "$project/scripts/packages.sh"

cat >"$project/packaging/debian-packages.txt" <<'LIST'
# section  package            tool        why
test       plain              -           every system has it
test       tidy-14|tidy       tidy-14|no-such-tool  it carries its version in its name
test       format-14|-        no-such-format|-      one version only, or none
other      elsewhere          -           another section
LIST

# What the pretended system has on offer, and what is installed there; each a list of names between blanks.
pretend apt-cache <<'COMMAND'
[ "$1" = show ] || exit 2
for package in "${@:2}"; do
  case "$package" in -*) continue ;; esac
  case " $OFFERED " in
    *" $package "*) echo "Package: $package" ;;
    # Only a name that another package stands in for.
    *" ($package) "*) echo "N: Can't select versions from package '$package' as it is purely virtual" >&2 ;;
    *) exit 100 ;;
  esac
done
COMMAND
pretend dpkg-query <<'COMMAND'
case " $INSTALLED " in *" ${*: -1} "*) printf installed ;; *) exit 1 ;; esac
COMMAND
pretend apt-get <<'COMMAND'
if [ "$1" = update ]; then echo update >>"$CALLS"; exit 0; fi
for word in "$@"; do case "$word" in -* | install) ;; *) echo "$word" >>"$CALLS" ;; esac; done
COMMAND
pretend sudo <<<'exec "$@"'
export OFFERED INSTALLED CALLS="$work/calls"

installs() {  # WHAT OFFERED INSTALLED EXPECTED: the words of all calls
  OFFERED="$2" INSTALLED="$3"
  rm -f "$CALLS"
  touch "$CALLS"
  expect "$1: the call succeeds" install_missing test >"$work/out"
  expect "$1: '$(xargs <"$CALLS")' is '$4'" [ "$(xargs <"$CALLS")" = "$4" ]
}

installs "the older system" "plain tidy-14 tidy format-14" "" "update plain tidy-14 format-14"
installs "the newer system" "plain tidy" "" "update plain tidy"
installs "a system on which the old name is left for others" "plain (tidy-14) tidy" "" "update plain tidy"
installs "all is there" "plain tidy" "plain tidy" ""
installs "the other alternative is there" "plain tidy-14 tidy format-14" "plain tidy format-14" ""
installs "one is missing" "plain tidy" "tidy" "update plain"
# apt-get is to say it in its own words.
installs "a package that no system has" "plain" "" "update plain tidy-14"

# Every line of the real list has its three columns, and the alternatives of tools are as many as those of packages.
while read -r section package tool why; do
  case "$section" in "" | "#"*) continue ;; esac
  expect "$package has a reason" [ -n "$why" ]
  if [ "$tool" != - ]; then
    expect "$package: as many tools as packages" [ "$(tr -cd '|' <<<"$package")" = "$(tr -cd '|' <<<"$tool")" ]
  fi
done <"$real/packaging/debian-packages.txt"

# Where there are no Debian packages: "-" at the end means that it can be done without.
printf 'test  format-14|-  no-such-format|-  optional\ntest  plain  no-such-tool|sh  the second is there\n' \
  >"$project/packaging/debian-packages.txt"
expect "nothing lacks" name_missing_tools test
printf 'test  plain|more  no-such-tool|no-such-one  nowhere\n' >"$project/packaging/debian-packages.txt"
expect "it lacks" [ "$(name_missing_tools test 2>&1 | grep -c 'plain')" -eq 1 ]
if name_missing_tools test 2>/dev/null; then expect "a lacking tool is a failure" false; fi
exit $failed
