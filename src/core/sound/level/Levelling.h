// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "base/Result.h"
#include "sound/LSU_SoundFile.h"
#include "sound/SoundPlace.h"
#include "sound/import/LoudnessMeter.h"
#include "sound/level/LevelPlan.h"

namespace kestrin::core::sound {

class SoundSet;

/// Makes the sounds of a set equally loud by their volumes alone: no file is changed. The board's format lifts every
/// sound to its full height, so what differs is how dense it is.
///
/// Measuring needs no set, so it can go on beside whatever else happens; what it was told is compared with the set
/// before anything is changed.
class Levelling {
 public:
  /// What the step is called that takes it back.
  static constexpr const char* kUndoText = "Level the volumes";

  /// A sound of a set as it was when levelling began.
  struct Sound {
    SoundPlace place;
    /// Without a coded stream.
    LSU_SoundFile file;
  };
  using MakeMeter = std::function<std::unique_ptr<LoudnessMeter>()>;
  /// How much has been measured, 0 .. 100; called after every block of samples. False stops.
  using Progress = std::function<bool(int percent)>;

  /// The sounds of a set, without those that are missing.
  [[nodiscard]] static std::vector<Sound> SoundsOf(const SoundSet& set);

  /// Measures how loud the board plays each of them at 100 %. One that cannot be measured has its reason. Fails with
  /// Cancelled when `progress` says so.
  [[nodiscard]] static base::Result<std::vector<MeasuredSound>> Measure(const std::vector<Sound>& sounds,
                                                                        const MakeMeter& makeMeter,
                                                                        const Progress& progress);

  /// Sets the volumes: one step to undo, or none when nothing changes. Fails with Busy while the set is loading, with
  /// Changed when other sounds sit in those places by now; then nothing has changed.
  [[nodiscard]] static base::Result<> Apply(const LevelPlan& plan, SoundSet& set);
};

}  // namespace kestrin::core::sound
