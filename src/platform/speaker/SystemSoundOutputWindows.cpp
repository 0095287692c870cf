// SPDX-License-Identifier: MIT
#include "platform/speaker/SystemSoundOutput.h"
#include "platform/speaker/WasapiOutput.h"

namespace kestrin::platform::speaker {

std::unique_ptr<core::sound::SoundOutput> MakeSystemSoundOutput(std::chrono::milliseconds buffer) {
  return std::make_unique<WasapiOutput>(buffer);
}

}  // namespace kestrin::platform::speaker
