// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "sound/board/FlashSound.h"
#include "sound/board/SetComparison.h"

namespace kestrin::core::sound {

/// What a board holds, in one line for the person.
class HoldingText {
 public:
  /// "Motion 2", "Idle".
  [[nodiscard]] static std::string NameOf(const SoundPlace& place);
  /// What `set` ("This set", or a set's name) is on the board with these differences: "This set", "This set, but Motion
  /// 2 and Idle differ". `most` places are named, the others counted: "This set, but Motion 2, Idle and 3 more differ".
  [[nodiscard]] static std::string Of(const std::string& set, const std::vector<SetDifference>& differences,
                                      std::size_t most);
  /// Of sounds that nobody here knows: "A set this computer does not know: 6 motion sounds, 1 impact sound, 2 lock-up
  /// sounds, 31.4 s in all"; of none: "Nothing yet: its memory is empty".
  [[nodiscard]] static std::string Of(const std::vector<FlashSound>& sounds);
};

}  // namespace kestrin::core::sound
