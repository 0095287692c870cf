// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sound/SlotKind.h"

namespace kestrin::core::sound {

/// The words by which people name sounds, in several languages, and the slots that they mean.
class SlotWords {
 public:
  /// How much a word says.
  enum class Weight {
    Hint,   ///< it may mean the slot
    Short,  ///< it means the slot where nothing else is said: "in", "on"
    Name,   ///< it names the slot
  };
  /// What a text says.
  struct Meaning {
    /// Nothing for a text that names another kind of sound than a saber plays: music, words.
    std::optional<SlotKind> slot;
    Weight weight = Weight::Hint;
    /// Words of as much weight mean other slots, or one says that it may be something else.
    bool isDoubtful = false;
  };

  /// The words of a UTF-8 text: small letters A to Z, without accents. Words end at whatever is no letter, and where a
  /// small letter is followed by a capital one: "PwrOn_2" is "pwr" and "on".
  [[nodiscard]] static std::vector<std::string> In(std::string_view text);

  /// What the words say; nothing when no word of the text is known.
  [[nodiscard]] static std::optional<Meaning> MeaningOf(std::string_view text);
};

}  // namespace kestrin::core::sound
