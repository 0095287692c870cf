#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# What is fetched and built for Windows, and when it is built again; the compiler only pretends.
. "$(dirname "${BASH_SOURCE[0]}")/pretend.sh"
set +e
# What somebody has given for the builds of this computer is not for this one.
unset KESTRIN_WINDOWS_QT KESTRIN_HIDAPI
jobs=1
windows_libraries="$work/libraries"
. "$project/packaging/windows/libraries.sh"
pretend x86_64-w64-mingw32-gcc-posix <<<'echo "${GCC_VERSION:-12}"'

# Two libraries whose recipes note that they ran.
cat >"$project/packaging/windows/recipes.sh" <<RECIPES
windows_target=x86_64-w64-mingw32
. "\$project/packaging/windows/sources.sh"
build_curl() { echo curl >>"$work/built"; }
build_qt() { echo qt >>"$work/built"; [ -z "\${BROKEN-}" ]; echo "went on" >>"$work/built"; }
if [ \$# -gt 0 ] && [ "\$0" = "\${BASH_SOURCE[0]}" ]; then "build_\$1"; fi
RECIPES
. "$project/packaging/windows/recipes.sh"
windows_library_names=(curl qt)

builds() {  # WHAT EXPECTED: what was built
  : >"$work/built"
  build_windows_libraries >"$work/out" 2>&1
  expect "$1: '$(xargs <"$work/built")' is '$2'" [ "$(xargs <"$work/built")" = "$2" ]
}

builds "nothing is there" "curl qt went on"
builds "all is there" ""
GCC_VERSION=13 builds "another compiler" "curl qt went on"
builds "the first one again" "curl qt went on"
echo one >"$work/one.tar"
echo two >"$work/two.tar"
KESTRIN_WINDOWS_QT="$work/one.tar" builds "an archive is given" "qt went on"
KESTRIN_WINDOWS_QT="$work/one.tar" builds "the same archive" ""
builds "it is no longer given, but was taken" ""
KESTRIN_WINDOWS_QT="$work/two.tar" builds "another archive" "qt went on"
sed -i '/^qt /s/[0-9a-f]$/x/' "$project/packaging/windows/sources.txt"
BROKEN=1 builds "another source, and a step of the recipe fails" "qt"
expect "it is not taken for built" [ ! -e "$windows_libraries/stamps/qt" ]
builds "it is built the next time" "qt went on"

# Of an archive that somebody gives only the contents count.
mkdir "$work/hidapi-1"
echo hello >"$work/hidapi-1/file"
tar -C "$work" -cf "$work/given.tar" hidapi-1
expect "an unknown archive is refused" [ "$(unpack_source hidapi "$work/given.tar" 2>&1 | grep -c 'checksum is another')" = 1 ]
echo "hidapi - - any.tar $(sha256sum "$work/given.tar" | cut -d ' ' -f 1)" >>"$project/packaging/windows/sources.txt"
expect "a known one is unpacked" unpack_source hidapi "$work/given.tar"
expect "without its outermost folder" [ "$(cat "$windows_libraries/sources/hidapi/file")" = hello ]

# Of the entries for packages, in any order, that of the system's own suite.
printf 'URIs: a\nSuites: other\n\nURIs: b\nSuites: moon-updates\n\nURIs: c\nSuites: moon-backports moon\nSigned-By: key\n\nURIs: d\nSuites: moon\n' >"$work/entries"
expect "the system's own suite" [ "$(entry_of moon <"$work/entries" | xargs)" = "URIs: c Suites: moon-backports moon Signed-By: key" ]
expect "or the first" [ "$(entry_of sun <"$work/entries" | xargs)" = "URIs: a Suites: other" ]

# Every line of the real list is whole.
expect "each line of sources.txt has five columns, the last a checksum" \
  awk '/^[^#]/ && (NF != 5 || $5 !~ /^[0-9a-f]+$/ || length($5) != 64) { print; bad = 1 } END { exit bad }' "$real/packaging/windows/sources.txt"

# What the setup installs, its uninstaller takes away: files one by one, and folders that are empty then, the inner ones first.
mkdir -p "$work/folder/in side/deep"
touch "$work/folder/a.exe" "$work/folder/in side/b c.txt" "$work/folder/in side/deep/d"
# 1970-01-01 00:00:01 is kept as its even second: 11644473600 s after 1601, which is 27111902 * 2^32 + 3577643008 steps of 100 ns.
mkdir "$work/folder/Examples"
touch -d @1 "$work/folder/Examples/my set.lscfg"
touch -d @2 "$work/folder/LEDs.ldcfg"
bash "$real/packaging/windows/list_files.sh" "$work/folder" >"$work/list"
expect "what is taken away" [ "$(sed -n '/^!macro UninstallFiles/,$p' "$work/list" | sed '1d;$d' | sed 's/^ *//')" = \
  '!insertmacro DeleteUnchanged "Examples\my set.lscfg" 27111902 3577643008
!insertmacro DeleteUnchanged "LEDs.ldcfg" 27111902 3597643008
Delete "$INSTDIR\a.exe"
Delete "$INSTDIR\in side\b c.txt"
Delete "$INSTDIR\in side\deep\d"
RMDir "$INSTDIR\in side\deep"
RMDir "$INSTDIR\in side"
RMDir "$INSTDIR\Examples"' ]
expect "what is installed" [ "$(grep -c '^  File ' "$work/list")" = 5 ]
expect "where" grep -qF 'SetOutPath "$INSTDIR\in side\deep"' "$work/list"
exit $failed
