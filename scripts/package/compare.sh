#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Holds a list of files against the table in docs/packages.md:
#
#     (cd PREFIX && find . ! -type d) | scripts/package/compare.sh installed
#
# COLUMN is a head of the table: installed, deb or windows. The list has a path a line; "./", "/" and, for deb, "usr/" in front
# are ignored, as are lines that end with "/". What is missing or too much is printed, and the status is 1.
set -uo pipefail
project="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd -P)"
table="${PACKAGES_TABLE:-$project/docs/packages.md}"
column="${1:?usage: compare.sh COLUMN <list}"

# The places that a column names, one a line.
places() {
  awk -v column="$column" -F '|' '
    # One name for each word of the first pair of braces, and so on with the next.
    function expand(text,   front, back, words, count, i) {
      if (!match(text, /[{][^}]*[}]/)) { print text; return }
      front = substr(text, 1, RSTART - 1); back = substr(text, RSTART + RLENGTH)
      count = split(substr(text, RSTART + 1, RLENGTH - 2), words, ",")
      for (i = 1; i <= count; i++) expand(front words[i] back)
    }
    /^\| what / { for (i = 2; i < NF; i++) { name = $i; gsub(/ /, "", name); at[name] = i } next }
    /^\|/ && at[column] && !/^\|-/ {
      i = at[column]
      if ($i ~ /^ *same *$/) i--
      if (match($i, /`[^`]*`/)) expand(substr($i, RSTART + 1, RLENGTH - 2))
    }' "$table" | sort
}

listed() {
  sed -e 's,^\./,,' -e 's,^/*,,' -e '/\/$/d' -e '/^$/d' | if [ "$column" = deb ]; then sed 's,^usr/,,'; else cat; fi | sort -u
}

export LC_ALL=C
expected="$(places)"
found="$(listed)"
if [ -z "$expected" ]; then
  echo "$table has no column \"$column\"" >&2
  exit 2
fi
if [ "$expected" = "$found" ]; then exit 0; fi
comm -23 <(echo "$expected") <(echo "$found") | sed 's/^/in docs\/packages.md, but not there: /'
comm -13 <(echo "$expected") <(echo "$found") | sed 's/^/not in docs\/packages.md: /'
exit 1
