// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "core/base/Clock.h"
#include "core/sound/SoundPlayer.h"

namespace kestrin::platform::desktop {

/// The player for the system that the program was built for. `clock` must outlive it.
[[nodiscard]] std::unique_ptr<core::sound::SoundPlayer> MakeSystemSoundPlayer(const core::base::Clock& clock);

}  // namespace kestrin::platform::desktop
