# SPDX-License-Identifier: MIT
# Sourced by ./package: the package for Debian, in Debian's own way: debhelper, told by packaging/debian, packs what
# `cmake --install` installs, in a build folder of its own with Debian's flags. Nobody has to be root for it.
# shellcheck shell=bash disable=SC2034,SC2154  # project, packages_folder, results: of who sources this

# What this version's package is called on this kind of computer.
deb_name() {
  printf 'kestrin_%s_%s.deb' "$(sed -n 's/^project(kestrin VERSION \([0-9.]*\).*/\1/p' "$project/CMakeLists.txt")" \
    "$(dpkg --print-architecture)"
}

package_deb() {
  if ! command -v dpkg-deb >/dev/null; then
    echo "A package for Debian is made on Debian: dpkg and debhelper are needed." >&2
    return 1
  fi
  need_packages build deb || return 1
  local folder="$project/build/deb" log="$packages_folder/deb.log" name
  name="$(deb_name)"
  # debhelper wants the sources with "debian" among them, so it gets a copy. What is compiled from it stays where it is, so that
  # only what has changed is built; not that of a project which was moved since.
  if ! grep -qsxF "CMAKE_HOME_DIRECTORY:INTERNAL=$folder/kestrin" "$folder/cmake/CMakeCache.txt"; then rm -rf "$folder/cmake"; fi
  rm -rf "$folder/kestrin" "$folder"/kestrin_*
  mkdir -p "$folder/kestrin"
  tar -C "$project" --exclude ./.git --exclude ./build --exclude './build-*' -c . | tar -C "$folder/kestrin" -x
  cp -R "$project/packaging/debian" "$folder/kestrin/debian"
  echo "Building $name; everything that it says is in ${log#"$project/"} ..."
  if ! (cd "$folder/kestrin" && set_launcher && dpkg-buildpackage --build=binary --no-sign --no-check-builddeps --no-pre-clean) >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    echo "The package could not be built, see above; everything that was said is in $log" >&2
    return 1
  fi
  if [ ! -e "$folder/$name" ]; then
    echo "The first line of packaging/debian/changelog names another version than CMakeLists.txt." >&2
    return 1
  fi
  mv "$folder/$name" "$packages_folder/"
  results+=("$packages_folder/$name")
}

# With ccache, what has been compiled once is not compiled again. debhelper gives a build an empty home.
set_launcher() {
  if [ -z "$launcher" ]; then return 0; fi
  CCACHE_DIR="$(ccache --get-config cache_dir)"
  export CCACHE_DIR CMAKE_CXX_COMPILER_LAUNCHER="$launcher"
}
