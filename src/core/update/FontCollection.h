// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "update/PackedFonts.h"

namespace kestrin::core::update {

/// A folder that holds one folder for each sound font: the font's sound files and one ".lscfg" file that names them; a
/// packed set is a font as well. It is read anew whenever it is asked, so a font may be changed while it is on offer.
class FontCollection {
 public:
  using Lines = std::vector<std::string>;

  /// One folder of the collection, or one packed set.
  struct Font {
    /// The folder's name, or that of the packed set without its ending: by this the font is known.
    std::string name;
    /// Where its files lie; empty when a packed set could not be unpacked.
    std::filesystem::path folder;
    /// The lines of its ".lscfg" file, every sound file by its bare name; or why the font cannot be offered, with what
    /// to do about it, for its maker.
    base::Result<Lines> lines;
  };

  /// `packed` unpacks packed sets; without it they are left alone.
  explicit FontCollection(std::filesystem::path folder, std::shared_ptr<PackedFonts> packed = nullptr)
      : m_folder(std::move(folder)), m_packed(std::move(packed)) {}

  /// Every folder of the collection and every packed set, in the order of the names; none when the collection cannot be
  /// read.
  [[nodiscard]] std::vector<Font> Fonts() const;
  /// The font of that name; nothing when there is none or it cannot be offered.
  [[nodiscard]] std::optional<Font> Find(std::string_view name) const;
  /// The sound file of that name; nothing unless the font's own lines name it.
  [[nodiscard]] std::optional<std::filesystem::path> SoundFile(std::string_view font, std::string_view name) const;

 private:
  /// Folders and packed sets, in the order of the names; of two of one name the folder first.
  [[nodiscard]] std::vector<std::filesystem::path> Places() const;
  /// The name of the font there.
  [[nodiscard]] std::string NameAt(const std::filesystem::path& place) const;
  [[nodiscard]] bool IsPacked(const std::filesystem::path& place) const;
  [[nodiscard]] Font Read(const std::filesystem::path& place) const;

  std::filesystem::path m_folder;
  std::shared_ptr<PackedFonts> m_packed;
};

}  // namespace kestrin::core::update
