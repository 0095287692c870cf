// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>

namespace kestrin::core::sound {

/// A WAV file of plain 16-bit samples in memory.
struct WavFile {
  std::uint32_t samplesPerSecond = 0;
  std::uint8_t channels = 0;
  /// The samples as they stand in the file, little-endian.
  std::string samples;

  /// Empty when there is no such file, or it holds something else.
  [[nodiscard]] static std::optional<WavFile> Read(const std::filesystem::path& path);
  /// The same of an open file.
  [[nodiscard]] static std::optional<WavFile> Read(std::istream& file);
};

}  // namespace kestrin::core::sound
