// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

#include "base/EventPump.h"
#include "base/Result.h"
#include "sound/LSU_Configuration.h"
#include "sound/SoundPlace.h"
#include "sound/board/BoardInquiry.h"
#include "sound/board/FlashSound.h"

namespace kestrin::core::sound {

/// How a place of one set differs from the same place of another.
enum class Differs { Volume, Sound, OnlyInFirst, OnlyInSecond };

/// A place in which two sets differ.
struct SetDifference {
  SoundPlace place;
  Differs kind = Differs::Sound;

  friend bool operator==(const SetDifference&, const SetDifference&) = default;
};

/// Compares sets place by place, in the order of kSlots.
class SetComparison {
 public:
  /// Two sets on this computer. Sounds are the same when their samples are, wherever their files lie; one whose file
  /// cannot be read is another. `pump` gets its turn after every sound.
  [[nodiscard]] static std::vector<SetDifference> Of(const LSU_Configuration& first, const LSU_Configuration& second,
                                                     const base::EventPump& pump = {});

  /// A set that is laid out, and what a board holds. Fails like the inquiry, which is asked about sounds that differ.
  [[nodiscard]] static base::Result<std::vector<SetDifference>> WithBoard(LSU_Configuration& set,
                                                                          const std::vector<FlashSound>& board,
                                                                          BoardInquiry& inquiry);

  /// The word for it in JSON: "volume", "sound", "only-a", "only-b".
  [[nodiscard]] static std::string_view NameOf(Differs kind);
};

}  // namespace kestrin::core::sound
