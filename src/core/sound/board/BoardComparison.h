// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "base/EventPump.h"
#include "sound/board/ComparedPlace.h"
#include "sound/board/FlashSound.h"
#include "sound/board/KnownSet.h"
#include "sound/board/KnownSounds.h"

namespace kestrin::core::sound {

/// A file of this computer that a sound of a board may be.
struct SoundGuess {
  std::filesystem::path path;
  std::int16_t volume = 100;
  /// What the board has to confirm; nothing when that is not needed.
  std::optional<StreamSums> toConfirm;

  friend bool operator==(const SoundGuess&, const SoundGuess&) = default;
};

/// Finds out which sounds of this computer a board holds, as far as that can be told from what the board has said, and
/// compares them with a set place by place. It asks no board.
class BoardComparison {
 public:
  /// For each sound of the board the files that it may be, the likeliest first: the one that `here` has in its place,
  /// then those of `here` and of the known `sets` that have its length, and its checksum at the volume of the set or at
  /// any other. `pump` gets its turn on the way, and may throw.
  [[nodiscard]] static std::vector<std::vector<SoundGuess>> Guess(const KnownSet& here,
                                                                  const std::vector<KnownSet>& sets,
                                                                  const std::vector<FlashSound>& board,
                                                                  KnownSounds& known, const base::EventPump& pump = {});

  /// The set beside the board, of whose sounds `found` says what each of them is, if that is known.
  [[nodiscard]] static ComparedPlaces WithBoard(const KnownSet& here, const std::vector<FlashSound>& board,
                                                const std::vector<std::optional<SoundGuess>>& found);
  /// The set beside another one; the sounds of both have been read.
  [[nodiscard]] static ComparedPlaces WithSet(const LSU_Configuration& here, const LSU_Configuration& there,
                                              const base::EventPump& pump = {});

  /// The places that differ.
  [[nodiscard]] static std::vector<SetDifference> DifferencesIn(const ComparedPlaces& places);
};

}  // namespace kestrin::core::sound
