// SPDX-License-Identifier: MIT
#include "platform/desktop/SystemSoundPlayer.h"
#include "platform/desktop/WaveOutPlayer.h"

namespace kestrin::platform::desktop {

std::unique_ptr<core::sound::SoundPlayer> MakeSystemSoundPlayer(const core::base::Clock&) {
  return std::make_unique<WaveOutPlayer>();
}

}  // namespace kestrin::platform::desktop
