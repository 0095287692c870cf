#pragma once

#include <memory>

#include "base/Clock.h"
#include "sound/SoundPlayer.h"

namespace kestrin::desktop {

/// The player for the system that the program was built for. `clock` must outlive it.
[[nodiscard]] std::unique_ptr<sound::SoundPlayer> MakeSystemSoundPlayer(const base::Clock& clock);

}  // namespace kestrin::desktop
