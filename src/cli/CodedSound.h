// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

#include "cli/Syntax.h"
#include "core/base/EventPump.h"
#include "core/sound/LSU_SoundFile.h"

namespace kestrin::cli {

/// The largest volume in percent that configuration files hold.
inline constexpr std::int32_t kLargestVolume = 32767;

/// Declares `--volume`.
void DeclareVolume(Syntax& syntax, std::optional<std::int32_t>& volume);

/// Reads a sound file; `pump` gets its turn on the way. Throws CommandFailure when it is not usable.
[[nodiscard]] core::sound::LSU_SoundFile ReadSound(const std::filesystem::path& path,
                                                   const core::base::EventPump& pump);

/// Codes a file that was read, at `volume` if there is one. Throws CommandFailure when it cannot be coded.
void CodeSound(core::sound::LSU_SoundFile& file, std::optional<std::int32_t> volume, const core::base::EventPump& pump);

/// Throws CommandFailure when `output` names the file `source` itself, which would be lost; `what` is what it is.
void RequireOtherFile(const std::filesystem::path& source, const std::filesystem::path& output,
                      std::string_view what = "the sound file");

/// Throws CommandFailure when the output could not be written.
void RequireWritten(const core::base::Result<>& written);

}  // namespace kestrin::cli
