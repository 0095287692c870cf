// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "core/sound/SoundOutput.h"

namespace kestrin::platform::speaker {

/// The loudspeaker of the system that the program was built for. Several outputs sound side by side.
[[nodiscard]] std::unique_ptr<core::sound::SoundOutput> MakeSystemSoundOutput();

}  // namespace kestrin::platform::speaker
