# SPDX-License-Identifier: MIT
# Sourced by scripts/package/windows.sh: builds the programs for Windows and puts them together with what they need.
# shellcheck shell=bash disable=SC2154  # project and the names that begin with windows_: of who sources this

# Says what went wrong in a step whose output went into a file.
windows_step() {  # WHAT LOG COMMAND...
  local what="$1" log="$2"
  shift 2
  if "$@" >"$log" 2>&1; then return 0; fi
  tail -n 30 "$log" | cut -c -400 >&2
  echo "$what failed; everything that was said is in ${log#"$project/"}" >&2
  return 1
}

# What draws the pictures and makes the demo set runs here, so it comes from the build for this system.
build_windows_tools() {
  mkdir -p "$windows_build"
  windows_step "Building the tools that run here" "$windows_build/tools.log" build_windows_tools_quietly
}
build_windows_tools_quietly() {
  if [ ! -e "$project/build/release/build.ninja" ]; then configure release -DKESTRIN_UNITY=ON -DKESTRIN_TESTS=OFF || return; fi
  cmake --build "$project/build/release" -j "$jobs" --target render_pictures render_icons make_demo_set
}

build_for_windows() {  # [cmake options]
  windows_step "The build for Windows" "$windows_build/build.log" build_for_windows_quietly "$@"
}
build_for_windows_quietly() {
  configure windows "$@" || return
  cmake --build "$windows_build" -j "$jobs" && return
  # ./test takes warnings for errors, and what it has configured stays so. That is to keep nobody from the package.
  if [[ " $* " == *" -DKESTRIN_WERROR=ON "* ]] || ! grep -qsx 'KESTRIN_WERROR:BOOL=ON' "$windows_build/CMakeCache.txt"; then return 1; fi
  configure windows "$@" -DKESTRIN_WERROR=OFF && cmake --build "$windows_build" -j "$jobs"
}

# A folder that runs wherever it is put.
make_windows_folder() {
  rm -rf "$windows_build/folder"
  windows_step "Putting the programs together" "$windows_build/folder.log" \
    cmake --install "$windows_build" --prefix "$windows_folder" || return
  mkdir -p "$windows_folder"/{platforms,styles,imageformats,icons}
  cp "$windows_build"/icons/application-x-kestrin-*.ico "$windows_folder/icons/" || return
  cp "$windows_libraries/qt/plugins/platforms/qwindows.dll" "$windows_folder/platforms/" || return
  cp "$windows_libraries/qt/plugins/styles/qwindowsvistastyle.dll" "$windows_folder/styles/" || return
  cp "$windows_libraries/qt/plugins/imageformats/qico.dll" "$windows_folder/imageformats/" || return
  copy_needed_libraries "$windows_folder" || return
  find "$windows_folder" -name '*.dll' -o -name '*.exe' | xargs -d '\n' "$windows_target-strip" --strip-unneeded || return
  bash "$project/packaging/windows/licences.sh" "$windows_libraries" "$windows_folder/licences" "$project"
}

# The libraries that the programs and plug-ins ask for, and those that these ask for, as far as they are not Windows' own.
copy_needed_libraries() {  # FOLDER
  local name folder found=1
  local -a places=("$windows_libraries/qt/bin" "/usr/$windows_target/lib"
    "$(dirname "$("$windows_target-g++-posix" -print-file-name=libstdc++-6.dll)")")
  while [ $found -eq 1 ]; do
    found=0
    while read -r name; do
      [ -e "$1/$name" ] && continue
      for folder in "${places[@]}"; do
        if [ -e "$folder/$name" ]; then
          cp "$folder/$name" "$1/" || return
          found=1
          break
        fi
      done
    done < <(find "$1" \( -name '*.exe' -o -name '*.dll' \) -exec "$windows_target-objdump" -p {} + |
      sed -n 's/^\tDLL Name: //p' | sort -u)
  done
}

make_windows_zip() {
  local zip="$packages_folder/kestrin-$windows_version-windows.zip"
  mkdir -p "$packages_folder"
  rm -f "$zip"
  (cd "$windows_build/folder" && cmake -E tar cf "$zip" --format=zip "kestrin-$windows_version") || return
  results+=("$zip")
}

make_windows_setup() {
  local setup="$packages_folder/kestrin-$windows_version-setup.exe"
  mkdir -p "$packages_folder"
  bash "$project/packaging/windows/list_files.sh" "$windows_folder" >"$windows_build/files.nsh" || return
  windows_step "Making the setup" "$windows_build/setup.log" makensis -V3 -DVERSION="$windows_version" \
    -DFILES="$windows_build/files.nsh" -DSETUP="$setup" -DLICENCE="$project/LICENSE" "$project/packaging/windows/setup.nsi" || return
  results+=("$setup")
}
