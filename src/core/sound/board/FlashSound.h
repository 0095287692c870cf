// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "sound/SoundPlace.h"

namespace kestrin::core::sound {

/// A coded stream in a board's flash.
struct FlashSound {
  SoundPlace place;
  /// Flash byte address of its first byte.
  std::int32_t address = 0;
  /// In bytes.
  std::int32_t length = 0;
  /// The sum of its bytes modulo 65536.
  std::uint16_t checksum = 0;

  friend bool operator==(const FlashSound&, const FlashSound&) = default;
};

}  // namespace kestrin::core::sound
