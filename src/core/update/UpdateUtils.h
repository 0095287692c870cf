// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "update/Association.h"

namespace kestrin::core::update {

class FontStore;

/// What a font's folder holds, and how a line of the server is read. A font is complete when its folder holds the
/// marker "fnt". All files go through the font store; failures are the store's.
class UpdateUtils {
 public:
  /// The store must outlive this object.
  explicit UpdateUtils(const FontStore& store) : m_store(store) {}

  /// Does nothing: the work is done on creation.
  void Initialize() {}
  /// The item's configuration file, as WriteDescriptor() writes it.
  [[nodiscard]] std::filesystem::path ConfigurationOf(const std::string& item) const;

  /// The lines of an answer, split at every CR LF. An empty text has none; a CR LF at the end leaves an empty last
  /// line.
  [[nodiscard]] static std::vector<std::string> SliceText(std::string_view text);
  /// Name and value of a line, split at its first ":". Both are empty without one, or when the line starts with it.
  [[nodiscard]] static Association ExtractPair(std::string_view line);
  /// Whether the line names a sound file: it contains ".lsu", in any letter case.
  [[nodiscard]] static bool NamesSound(std::string_view line);

  [[nodiscard]] bool FontExistsAndCompleted(const std::string& item) const;
  /// Makes the item's folder when it does not exist.
  base::Result<> CreateFont(const std::string& item) const;
  /// Marks the item as complete.
  base::Result<> CompleteFont(const std::string& item) const;
  /// Writes the descriptor (lines 2 and on of the answer, each ended by CR LF) and the item's configuration file (the
  /// same, with the full path of the item's folder before the names of sound files).
  base::Result<> WriteDescriptor(const std::string& item, std::span<const std::string> lines) const;
  [[nodiscard]] bool FontItemExists(const std::string& item, const std::string& fileName) const;

  // Part of the store's interface as the system defines it; the update itself needs it only together with the marker.
  [[nodiscard]] bool FontExists(const std::string& item) const;

 private:
  const FontStore& m_store;
};

}  // namespace kestrin::core::update
