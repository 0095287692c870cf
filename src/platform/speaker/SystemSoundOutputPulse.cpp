// SPDX-License-Identifier: MIT
#include "platform/speaker/PulseOutput.h"
#include "platform/speaker/SystemSoundOutput.h"

namespace kestrin::platform::speaker {

std::unique_ptr<core::sound::SoundOutput> MakeSystemSoundOutput(std::chrono::milliseconds buffer) {
  return std::make_unique<PulseOutput>(buffer);
}

}  // namespace kestrin::platform::speaker
