// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace kestrin::platform::audio {

/// What is known of a format of the sound library by its number.
struct SoundFormat {
  /// What people call it.
  std::string_view name;
  /// Bits of a sample; 0 where these are no whole numbers or not those that were recorded.
  int bits = 0;
  bool isLossy = false;
};

/// `format`: the library's number, container and coding in one.
[[nodiscard]] SoundFormat FormatOf(int format);

}  // namespace kestrin::platform::audio
