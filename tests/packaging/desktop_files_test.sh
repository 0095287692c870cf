#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# What desktops are told of the programs holds together and is what their own tools call valid.
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"
linux="$sources/packaging/linux"
metainfo="$build/example.kestrin.launcher.metainfo.xml"

types() { grep -oE 'mime-type type="[^"]*"' "$linux/kestrin.xml" | cut -d '"' -f 2; }
expect "there are three kinds of files" [ "$(types | wc -l)" -eq 3 ]
for type in $(types); do
  expect "$type has a drawing" [ -e "$sources/assets/icons/${type/\//-}.svg" ]
done
for ending in lscfg ldset lsu; do
  expect "one kind ends in .$ending" [ "$(grep -cF "<glob pattern=\"*.$ending\"/>" "$linux/kestrin.xml")" -eq 1 ]
done
# Every type that the window says it opens is one that is defined here, or one that every system has.
while read -r type; do
  expect "$type is known" grep -qxF -e "$type" <(types; echo inode/directory)
done < <(sed -n 's/^MimeType=//p' "$linux/kestrin.desktop" | tr ';' '\n' | sed '/^$/d')
while read -r picture; do
  expect "the screenshot $picture is there" [ -e "$sources/docs/pictures/$picture" ]
done < <(grep -oE '/pictures/[^<]*' "$metainfo" | sed 's,.*/,,')
expect "there are screenshots" [ "$(grep -c '<screenshot' "$metainfo")" -ge 4 ]

if has desktop-file-validate "a look at the entry in the menu"; then
  expect "the entry in the menu is valid" quiet desktop-file-validate "$linux/kestrin.desktop"
fi
if has appstreamcli "a look at the metainfo"; then
  expect "the metainfo is valid" appstreamcli validate --no-net "$metainfo"
fi
if has xmllint "a look at the kinds of files"; then
  expect "the kinds of files are XML" quiet xmllint --noout "$linux/kestrin.xml" "$metainfo"
fi
if has update-mime-database "a look at the kinds of files as desktops know them"; then
  mkdir -p "$work/mime/packages"
  cp "$linux/kestrin.xml" "$work/mime/packages/"
  update-mime-database "$work/mime" >/dev/null 2>&1
  expect "files are told by their names" grep -qxF 'application/x-kestrin-led-settings:*.ldset' "$work/mime/globs"
fi
exit "$failed"
