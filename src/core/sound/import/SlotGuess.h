// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "sound/SlotKind.h"

namespace kestrin::core::sound {

/// A sound that is to find its slot.
struct NamedSound {
  /// Its name, UTF-8, with its ending, and with the folders that it lies in as far as the person has named them.
  std::string name;
  /// How long it plays; 0 when that is not known.
  double seconds = 0;
};

/// How many sounds each slot can take still, in the order of kSlots; a single slot takes one.
using SlotRoom = std::array<int, kSlots.size()>;
inline constexpr SlotRoom kRoomOfAnEmptySet{1, 1, 1, 1, kListCapacity, kListCapacity, kListCapacity};

/// Which slot a sound is meant for, as its name, its folder and its length let one think.
struct SlotGuess {
  /// Nothing when it is meant for none.
  std::optional<SlotKind> slot;
  /// Whether there is little doubt about it.
  bool isSure = false;
  /// The slot has no room for it: others come first.
  bool isLeftOut = false;

  friend bool operator==(const SlotGuess&, const SlotGuess&) = default;

  /// A guess for each of the sounds. Of several for one place those come first of which one can be sure; of two for
  /// Idle the longer one, of all others the one that comes first as people count.
  [[nodiscard]] static std::vector<SlotGuess> Of(const std::vector<NamedSound>& sounds,
                                                 const SlotRoom& room = kRoomOfAnEmptySet);
  /// The numbers of the sounds in the order in which they go into the set: slot by slot, each as people count; those
  /// that one cannot be sure of, and then those for no slot, at the end.
  [[nodiscard]] static std::vector<std::size_t> Order(const std::vector<NamedSound>& sounds,
                                                      const std::vector<SlotGuess>& guesses);
};

}  // namespace kestrin::core::sound
