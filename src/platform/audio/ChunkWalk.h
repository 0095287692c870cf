// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "platform/audio/SourceFile.h"

namespace kestrin::platform::audio {

/// Where the samples of a file end that consists of chunks, each with a name and a length (WAV, AIFF, CAF and their
/// like), as the file itself says: the offset behind their last byte. Nothing for other files, and where the file does
/// not say it, as one that was written into a pipe.
[[nodiscard]] std::optional<std::uint64_t> ClaimedEndOfSamples(SourceFile& file);

}  // namespace kestrin::platform::audio
