// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"

namespace kestrin::core::update {

/// A folder that holds one folder for each sound font: the font's sound files and one ".lscfg" file that names them. It
/// is read anew whenever it is asked, so a font may be changed while it is on offer.
class FontCollection {
 public:
  using Lines = std::vector<std::string>;

  /// One folder of the collection.
  struct Font {
    /// The folder's name, by which the font is known.
    std::string name;
    /// The lines of its ".lscfg" file, every sound file by its bare name; or why the font cannot be offered, with what
    /// to do about it, for its maker.
    base::Result<Lines> lines;
  };

  explicit FontCollection(std::filesystem::path folder) : m_folder(std::move(folder)) {}

  /// Every folder of the collection, in the order of the names; none when the collection cannot be read.
  [[nodiscard]] std::vector<Font> Fonts() const;
  /// The font of that name; nothing when there is none or it cannot be offered.
  [[nodiscard]] std::optional<Font> Find(std::string_view name) const;
  /// The sound file of that name; nothing unless the font's own lines name it.
  [[nodiscard]] std::optional<std::filesystem::path> SoundFile(std::string_view font, std::string_view name) const;

 private:
  std::filesystem::path m_folder;
};

}  // namespace kestrin::core::update
