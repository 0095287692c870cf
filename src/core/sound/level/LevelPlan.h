// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "sound/SoundPlace.h"
#include "sound/level/Balance.h"

namespace kestrin::core::sound {

/// How loud a sound of a set is.
struct MeasuredSound {
  SoundPlace place;
  std::filesystem::path path;
  /// What it has now, in percent.
  std::int16_t volume = 100;
  /// How loud the board would play it at 100 %, in LUFS; nothing when that cannot be told.
  std::optional<double> lufs;
  /// Why it could not be measured, a text for the person; "" when it could, or has no loudness.
  std::string reason;
};

/// What levelling makes of a sound.
struct LevelledSound {
  SoundPlace place;
  std::filesystem::path path;
  /// Volumes in percent. A sound whose loudness is not known keeps its own.
  std::int16_t from = 100;
  std::int16_t to = 100;
  /// Whether its loudness is known.
  bool isMeasured = false;
  /// Why it could not be measured, as in MeasuredSound.
  std::string reason;
  /// How far above its share of the loudness it stays, in LU: more than nothing where no lower volume exists, and a
  /// little to either side because volumes are whole percents.
  double excess = 0;

  friend bool operator==(const LevelledSound&, const LevelledSound&) = default;
};

/// The volumes that make the sounds of a set equally loud, each in the balance of its slot: the quietest one is played
/// at 100 %, the others at less.
struct LevelPlan {
  /// What a sound may be off its share of the loudness without a word about it, in LU.
  static constexpr double kTolerance = 0.5;

  /// In the order of those that were measured.
  std::vector<LevelledSound> sounds;

  /// Works the volumes out. The sounds may have any volume now, also above 100 %.
  [[nodiscard]] static LevelPlan Of(const std::vector<MeasuredSound>& sounds, const Balance& balance);

  /// How many volumes change.
  [[nodiscard]] int Changes() const;
  /// What the plan does, in one sentence for the person.
  [[nodiscard]] std::string Headline() const;
  /// What cannot be reached and why, a text for the person for each sound; none when everything can.
  [[nodiscard]] std::vector<std::string> OutOfReach() const;
};

}  // namespace kestrin::core::sound
