#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Writes what the setup installs, file by file, and what its uninstaller takes away again: these files and the folders that
# are then empty, so that whatever a person has put beside them stays.  list_files.sh FOLDER
# Of the files that people change, the uninstaller is told the time that the setup gives them: the one that they have here, but
# for odd seconds, which not every disk can keep; as Windows counts it, in steps of 100 ns since 1601.
set -euo pipefail
cd "$1"

echo "!define INSTALLED_KB $(du -sk --apparent-size . | cut -f 1)"
echo '!macro InstallFiles'
find . -type d | sort | while read -r folder; do
  folder="${folder#.}"
  printf '  SetOutPath "$INSTDIR%s"\n' "${folder//\//\\}"
  find ".$folder" -maxdepth 1 -type f -printf '%P\n' | sort | while read -r file; do
    printf '  File "%s%s/%s"\n' "$PWD" "$folder" "$file"
  done
done
echo '  SetOutPath "$INSTDIR"'
echo '!macroend'

echo '!macro UninstallFiles'
people_change() { find . -type f \( -path './Examples/*' -o -name '*.ldcfg' \) -printf '%P\n' | sort; }
# These first: when one of them cannot be kept, nothing has happened yet.
people_change | while read -r file; do
  time=$((($(stat -c %Y "$file") / 2 * 2 + 11644473600) * 10000000))
  printf '  !insertmacro DeleteUnchanged "%s" %d %d\n' "${file//\//\\}" $((time >> 32)) $((time & 0xffffffff))
done
comm -23 <(find . -type f -printf '%P\n' | sort) <(people_change) | while read -r file; do
  printf '  Delete "$INSTDIR\\%s"\n' "${file//\//\\}"
done
find . -mindepth 1 -type d -printf '%P\n' | sort -r | while read -r folder; do printf '  RMDir "$INSTDIR\\%s"\n' "${folder//\//\\}"; done
echo '!macroend'
