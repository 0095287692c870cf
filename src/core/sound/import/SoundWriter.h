// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "base/WholeFile.h"

namespace kestrin::core::sound {

/// Gives the bytes of a ".lsu" file.
class SoundWriter {
 public:
  /// Writes the header word. `append` must outlive the object.
  explicit SoundWriter(const base::AppendBytes& append, std::uint32_t headerWord = 0);

  /// The next samples. False when the disk refuses them.
  [[nodiscard]] bool Add(std::span<const std::int16_t> samples);

  [[nodiscard]] std::uint64_t Count() const { return m_count; }
  /// Whether all samples so far are 0.
  [[nodiscard]] bool IsSilent() const { return m_isSilent; }

 private:
  const base::AppendBytes& m_append;
  std::string m_bytes;
  std::uint64_t m_count = 0;
  bool m_isSilent = true;
  bool m_isWritten;
};

}  // namespace kestrin::core::sound
