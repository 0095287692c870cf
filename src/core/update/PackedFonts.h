// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>

#include "base/PrivateFolder.h"
#include "base/Result.h"

namespace kestrin::core::update {

/// Fonts that lie in a collection as packed sets: each is unpacked once into a private folder, and again when its file
/// has changed. The folder goes with the object.
class PackedFonts {
 public:
  /// Unpacks a packed set into a new folder; the text of a failure is for the font's maker.
  using Unpack = std::function<base::Result<std::filesystem::path>(const std::filesystem::path& file,
                                                                   const std::filesystem::path& folder)>;

  PackedFonts(base::PrivateFolder folder, Unpack unpack) : m_folder(std::move(folder)), m_unpack(std::move(unpack)) {}

  /// Whether a file of that name is taken for a packed set.
  [[nodiscard]] static bool HasPackedName(const std::filesystem::path& file);
  /// The folder in which the font of the packed set lies, named like the file without its ending; or why there is none.
  [[nodiscard]] base::Result<std::filesystem::path> FolderOf(const std::filesystem::path& file);

 private:
  /// What a file was when it was unpacked, and what came of it.
  struct Unpacked {
    std::uintmax_t size = 0;
    std::filesystem::file_time_type time;
    base::Result<std::filesystem::path> folder;
  };

  [[nodiscard]] base::Result<std::filesystem::path> UnpackAnew(const std::filesystem::path& file);

  base::PrivateFolder m_folder;
  Unpack m_unpack;
  std::map<std::filesystem::path, Unpacked> m_unpacked;
  int m_count = 0;
};

}  // namespace kestrin::core::update
