// SPDX-License-Identifier: MIT
#include "platform/desktop/PulsePlayer.h"
#include "platform/desktop/SystemSoundPlayer.h"

namespace kestrin::platform::desktop {

std::unique_ptr<core::sound::SoundPlayer> MakeSystemSoundPlayer(const core::base::Clock& clock) {
  return std::make_unique<PulsePlayer>(clock);
}

}  // namespace kestrin::platform::desktop
