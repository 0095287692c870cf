// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <vector>

namespace kestrin::core::sound {

/// Reads the samples of a ".lsu" file from the first to the last, in blocks.
class SampleReader {
 public:
  /// Samples in a block: small enough to stay in the processor's cache while they are worked on, large enough that the
  /// calls to the system do not count.
  static constexpr std::size_t kBlock = 16384;

  /// How the reader stands.
  enum class State {
    /// Open, and every read so far went well.
    Good,
    /// There is nothing of that name.
    Missing,
    /// What has that name is a folder, a device or the like.
    NotAFile,
    /// The file cannot be opened, or a read failed half way.
    Failed,
  };

  /// Opens the file for reading, behind its four-byte header word. Never creates one.
  explicit SampleReader(const std::filesystem::path& path);

  [[nodiscard]] State GetState() const { return m_state; }

  /// The next samples, at most `most` and at most a block; they stay valid until the next call. Fewer than asked for
  /// only at the end of the file or when a read failed (see GetState()); half a sample at the end is none.
  [[nodiscard]] std::span<const std::int16_t> Next(std::size_t most = kBlock);

 private:
  std::ifstream m_file;
  State m_state = State::Failed;
  std::vector<std::int16_t> m_block;
};

}  // namespace kestrin::core::sound
