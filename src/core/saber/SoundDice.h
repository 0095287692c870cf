// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <random>

#include "sound/SlotKind.h"

namespace kestrin::core::saber {

/// Chooses the sounds of a list in random order, none of them twice in a row. The same seed gives the same order on
/// every computer.
class SoundDice {
 public:
  explicit SoundDice(std::uint32_t seed) : m_random(seed) {}

  /// A position of the slot, 1 .. `count`; `count` is at least 1.
  [[nodiscard]] int Throw(sound::SlotKind kind, int count);

 private:
  /// What it gives is laid down by the language, unlike what its distributions make of it.
  std::mt19937 m_random;
  /// The last position of each slot.
  std::map<sound::SlotKind, int> m_last;
};

}  // namespace kestrin::core::saber
