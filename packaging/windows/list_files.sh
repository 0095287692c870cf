#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Writes what the setup installs, file by file, and what its uninstaller takes away again: these files and the folders that
# are then empty, so that whatever a person has put beside them stays.  list_files.sh FOLDER
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
find . -type f -printf '%P\n' | sort | while read -r file; do printf '  Delete "$INSTDIR\\%s"\n' "${file//\//\\}"; done
find . -mindepth 1 -type d -printf '%P\n' | sort -r | while read -r folder; do printf '  RMDir "$INSTDIR\\%s"\n' "${folder//\//\\}"; done
echo '!macroend'
