// SPDX-License-Identifier: MIT
#include "sound/PreviewFile.h"

#include "base/FirstThatTakes.h"
#include "base/PathText.h"
#include "base/Text.h"
#include "sound/LSU_SoundFile.h"

namespace kestrin::core::sound {

base::Result<std::filesystem::path> PreviewFile::Write(const std::filesystem::path& sound,
                                                       std::span<const std::filesystem::path> folders) {
  LSU_SoundFile file;
  if (!file.ReadFile(sound))
    return base::Failure{base::FailureKind::NotValid, base::LastPathPiece(base::TextOf(sound)) +
                                                          " cannot be played: it is missing or holds no sound."};
  const std::filesystem::path folder =
      base::FirstThatTakes(folders, [&](const std::filesystem::path& place) { return file.WriteWav(place / kName); });
  if (!folder.empty()) return folder / kName;
  return base::Failure{base::FailureKind::Failed,
                       "The sound cannot be played: there is no place for its copy \"temp.wav\". Make room on the disk "
                       "or permit writing and play it again."};
}

}  // namespace kestrin::core::sound
