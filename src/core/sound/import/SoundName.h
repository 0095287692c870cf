// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace kestrin::core::sound {

/// The name of a sound to be made, without an ending, that every system can store.
struct SoundName {
  std::string name;
  /// Why it is not the one that was wanted, as the end of a sentence; "" when it is.
  std::string why;
};

/// Makes of any text (UTF-8) a name that Linux and Windows can store, also with a number behind it.
[[nodiscard]] SoundName NameForSound(std::string_view wanted);

}  // namespace kestrin::core::sound
