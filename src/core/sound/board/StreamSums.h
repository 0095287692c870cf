// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "sound/LSU_SoundFile.h"

namespace kestrin::core::sound {

/// What a coded stream is known by: its length and the sum of each quarter of it, modulo 65536. The sum of all of it
/// alone would not tell two streams apart in which the same bytes stand in another order.
struct StreamSums {
  static constexpr std::size_t kParts = 4;
  /// The highest volume in percent at which a sound's magnitudes still fit into ten bits: 999 at 100 %, 1,018 here.
  static constexpr std::int16_t kLoudest = 102;

  /// In bytes.
  std::int32_t length = 0;
  std::array<std::uint16_t, kParts> parts{};

  /// Where part 0 .. 3 of so many bytes begins and ends.
  [[nodiscard]] static std::pair<std::int32_t, std::int32_t> Part(std::int32_t length, std::size_t part);
  /// Of a sound that Code() has coded.
  [[nodiscard]] static StreamSums Of(const LSU_SoundFile& coded);

  /// The sum of all bytes modulo 65536.
  [[nodiscard]] std::uint16_t Whole() const;

  friend bool operator==(const StreamSums&, const StreamSums&) = default;
};

}  // namespace kestrin::core::sound
