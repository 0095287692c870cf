// SPDX-License-Identifier: MIT
#pragma once

#include "sound/SlotKind.h"

namespace kestrin::core::sound {

/// Where a sound sits: a slot, and in a list the row from 1. Rows of sounds that are missing count like all others.
struct SoundPlace {
  SlotKind kind = SlotKind::Boot;
  int position = 1;

  friend bool operator==(const SoundPlace&, const SoundPlace&) = default;
};

}  // namespace kestrin::core::sound
