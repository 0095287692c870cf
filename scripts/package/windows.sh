# SPDX-License-Identifier: MIT
# Sourced by ./package: what people with Windows install, built on Debian 12. The steps stand in packaging/windows; all
# that they make but the results lies in build/windows.
# shellcheck shell=bash disable=SC2034,SC2154  # project, packages_folder, results: of who sources this

windows_build="$project/build/windows"
windows_libraries="$windows_build/libraries"
windows_version="$(sed -n 's/^project(kestrin VERSION \([0-9.]*\).*/\1/p' "$project/CMakeLists.txt")"
# What people get, as it lies on their disk.
windows_folder="$windows_build/folder/kestrin-$windows_version"

. "$project/packaging/windows/libraries.sh"
. "$project/packaging/windows/programs.sh"

package_windows() {  # [cmake options]
  need_packages build windows || return 1
  build_windows_libraries && build_windows_tools || return 1
  echo "Building the programs for Windows; everything that is said is in ${windows_build#"$project/"}/build.log ..."
  build_for_windows -DKESTRIN_TESTS=OFF "$@" && make_windows_folder && make_windows_zip && make_windows_setup
}
