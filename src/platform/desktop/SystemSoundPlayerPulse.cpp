#include "platform/desktop/PulsePlayer.h"
#include "platform/desktop/SystemSoundPlayer.h"

namespace kestrin::desktop {

std::unique_ptr<sound::SoundPlayer> MakeSystemSoundPlayer(const base::Clock& clock) {
  return std::make_unique<PulsePlayer>(clock);
}

}  // namespace kestrin::desktop
