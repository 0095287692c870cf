// SPDX-License-Identifier: MIT
#include "cli/CodedSound.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "cli/CommandFailure.h"
#include "core/base/PathText.h"

namespace kestrin::cli {

using core::sound::LSU_SoundFile;

void DeclareVolume(Syntax& syntax, std::optional<std::int32_t>& volume) {
  syntax.Number("--volume V", volume, 0, kLargestVolume, "Playback volume in percent, 100 if not given");
}

LSU_SoundFile ReadSound(const std::filesystem::path& path, const core::base::EventPump& pump) {
  LSU_SoundFile file;
  if (!file.ReadFile(path, pump)) throw CommandFailure(ExitCode::Failed, file.WhyNotValid());
  return file;
}

void CodeSound(LSU_SoundFile& file, std::optional<std::int32_t> volume, const core::base::EventPump& pump) {
  if (volume) file.SetVolume(static_cast<std::int16_t>(*volume));
  try {
    if (!file.Code(pump)) throw CommandFailure(ExitCode::Failed, file.CheckCodable(pump).Text());
  } catch (const std::overflow_error& tooLoud) {
    throw CommandFailure(ExitCode::Failed, tooLoud.what());
  }
}

void RequireOtherFile(const std::filesystem::path& source, const std::filesystem::path& output, std::string_view what) {
  std::error_code noSuchFile;
  if (std::filesystem::equivalent(source, output, noSuchFile))
    throw CommandFailure(ExitCode::WrongUsage, core::base::TextOf(output) + " is " + std::string(what) +
                                                   " itself: choose another output file.");
}

void RequireWritten(const core::base::Result<>& written) {
  if (!written)
    throw CommandFailure(ExitCode::Failed, written.Text() +
                                               "\nWhat was there before is unchanged. Check that the folder is "
                                               "there and has room, or choose another place with --output.");
}

}  // namespace kestrin::cli
