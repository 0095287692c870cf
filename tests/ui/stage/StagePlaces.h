// SPDX-License-Identifier: MIT
#pragma once

#include "core/sound/SoundPlace.h"

namespace kestrin::ui::stage {

/// Places whose sounds the tests of the stage speak of.
inline constexpr core::sound::SoundPlace kHum{core::sound::SlotKind::Idle, 1};
inline constexpr core::sound::SoundPlace kSwing{core::sound::SlotKind::Motion, 3};

}  // namespace kestrin::ui::stage
