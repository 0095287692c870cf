// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace kestrin::rig {

/// The program's pictures and help in a folder of the test's own.
struct ProgramFolder {
  explicit ProgramFolder(const std::filesystem::path& folder) {
    for (const auto& file : std::filesystem::directory_iterator(KESTRIN_PROGRAM_FOLDER)) {
      const std::filesystem::path kind = file.path().extension();
      if (kind == ".bmp" || kind == ".chm")
        std::filesystem::create_symlink(file.path(), folder / file.path().filename());
    }
  }
};

}  // namespace kestrin::rig
