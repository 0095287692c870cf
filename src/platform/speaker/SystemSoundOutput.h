// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>

#include "core/sound/SoundOutput.h"

namespace kestrin::platform::speaker {

/// How much of a stream the system may hold. Little is heard sooner, more is played without gaps also by a computer
/// that is busy with other things; a stop is heard at once either way.
inline constexpr std::chrono::milliseconds kLiveBuffer{20};
inline constexpr std::chrono::milliseconds kFileBuffer{200};

/// The loudspeaker of the system that the program was built for. Several outputs sound side by side.
[[nodiscard]] std::unique_ptr<core::sound::SoundOutput> MakeSystemSoundOutput(std::chrono::milliseconds buffer);

}  // namespace kestrin::platform::speaker
