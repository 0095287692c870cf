// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cli/Report.h"
#include "core/sound/ConfigurationFile.h"
#include "core/sound/LSU_Configuration.h"

namespace kestrin::cli {

/// What loading a configuration file left to say.
struct LoadedFiles {
  /// Paths of the sound files that could not be used.
  std::vector<std::string> failed;
  /// The text about them; "" when there are none.
  std::string message;
};

/// What is left to say of a load. Throws CommandFailure when it was no configuration file.
[[nodiscard]] LoadedFiles LoadedFilesOf(const core::sound::LoadResult& result);

/// Loads a configuration file; `pump` gets its turn while sounds are read. Throws CommandFailure when it is none.
[[nodiscard]] LoadedFiles LoadConfiguration(const std::filesystem::path& path,
                                            core::sound::LSU_Configuration& configuration,
                                            const core::base::EventPump& pump);

/// Loads a configuration file, which must be complete, and lays it out in the board's flash. Throws CommandFailure when
/// it is no configuration file, a piece is missing, or a file cannot be used or coded.
void LoadMemoryMap(const std::filesystem::path& path, core::sound::LSU_Configuration& configuration,
                   const core::base::EventPump& pump);

/// Throws CommandFailure when what is written as `output` would be the end of one of the configuration's sounds.
void RequireOutputOfItsOwn(const std::filesystem::path& output, core::sound::LSU_Configuration& configuration);

/// A configuration as `config show` prints it.
[[nodiscard]] Report ReportOf(const core::sound::LSU_Configuration& configuration, const LoadedFiles& loaded);

}  // namespace kestrin::cli
