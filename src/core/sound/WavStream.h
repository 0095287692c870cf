// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "base/WholeFile.h"

namespace kestrin::core::sound {

/// What a WAV file consists of: the header, then the samples, one channel of 16 bits, 48,000 a second.
class WavStream {
 public:
  /// The samples that a WAV file holds at most: the sizes in its header have 32 bits.
  static constexpr std::int64_t kMostSamples = (std::int64_t{0xFFFFFFFF} - 36) / 2;

  /// The 44 bytes in front of that many samples, 0 .. kMostSamples.
  [[nodiscard]] static std::string Header(std::int64_t samples);
  /// Appends samples, little-endian. False when they are refused.
  static bool Append(std::span<const std::int16_t> samples, const base::AppendBytes& append);
};

}  // namespace kestrin::core::sound
