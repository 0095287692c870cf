// SPDX-License-Identifier: MIT
#pragma once

#include "base/Result.h"
#include "saber/SharedSamples.h"
#include "sound/LSU_SoundFile.h"

namespace kestrin::core::saber {

/// A sound as its file holds it, with the volume that it has in its set, but not coded for a board: levels that would
/// be louder than full scale are cut off there. Fails like coding does when the file cannot be read any more.
[[nodiscard]] base::Result<SharedSamples> FileSamples(const sound::LSU_SoundFile& file);

}  // namespace kestrin::core::saber
