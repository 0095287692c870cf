// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "sound/LSU_Configuration.h"

namespace kestrin::core::sound {

/// What the sounds of a configuration take in the board's memory.
struct MemoryUse {
  /// Samples of each slot, in the order of kSlots.
  std::array<std::int64_t, kSlots.size()> samples{};
  /// Samples of all slots.
  std::int64_t total = 0;
  /// The samples that the board holds.
  std::int64_t capacity = 0;
  /// Seconds that a download takes on full-speed USB, the erase included; 0 while the sounds do not fit.
  int downloadSeconds = 0;

  /// Milliseconds that a block of 1,024 bytes takes on full-speed USB: its report goes in 17 packets, one a
  /// millisecond, and its answer in one.
  static constexpr int kBlockMilliseconds = 18;

  /// A sound of that many samples in a slot.
  struct Sound {
    SlotKind kind;
    std::int32_t samples = 0;
  };

  [[nodiscard]] static MemoryUse Of(const LSU_Configuration& configuration);
  /// The same of sounds that are in no configuration yet.
  [[nodiscard]] static MemoryUse Of(const std::vector<Sound>& sounds, std::int64_t capacity);

  [[nodiscard]] bool Fits() const { return total <= capacity; }
  /// Samples beyond what the board holds, 0 when all fit.
  [[nodiscard]] std::int64_t Excess() const { return Fits() ? 0 : total - capacity; }
  /// The part of the board's memory that so many samples take, 1 for all of it.
  [[nodiscard]] double Share(std::int64_t ofSamples) const {
    return capacity <= 0 ? 0 : static_cast<double>(ofSamples) / static_cast<double>(capacity);
  }
  /// How long so many samples play.
  [[nodiscard]] static double Seconds(std::int64_t ofSamples) {
    return static_cast<double>(ofSamples) / LSU_SoundFile::kSamplesPerSecond;
  }
};

}  // namespace kestrin::core::sound
