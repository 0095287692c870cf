// SPDX-License-Identifier: MIT
#include "sound/PreviewFile.h"

#include <optional>
#include <system_error>

#include "base/FirstThatTakes.h"
#include "base/PathText.h"
#include "base/Text.h"
#include "base/WholeFile.h"
#include "sound/WavStream.h"
#include "sound/level/BoardSound.h"

namespace kestrin::core::sound {

namespace {

namespace fs = std::filesystem;

/// Writes what a board plays. An older copy is gone in any case.
bool WriteBoardWav(const LSU_SoundFile& sound, const fs::path& wav) {
  std::error_code ignored;
  if (fs::is_regular_file(wav, ignored)) fs::remove(wav, ignored);
  return static_cast<bool>(base::WriteWholeFile(wav, [&sound](const base::AppendBytes& append) -> base::Result<> {
    BoardSound board(sound);
    if (!append(WavStream::Header(board.Samples()))) return {};
    for (auto block = board.Next(); !block.empty(); block = board.Next())
      if (!WavStream::Append(block, append)) return {};
    return board.Ended();
  }));
}

}  // namespace

base::Result<fs::path> PreviewFile::Write(const HeardSound& sound, std::span<const fs::path> folders) {
  const std::optional<LSU_SoundFile> file = sound.Measured();
  if (!file)
    return base::Failure{base::FailureKind::NotValid, base::LastPathPiece(base::TextOf(sound.path)) +
                                                          " cannot be played: it is missing or holds no sound."};
  if (sound.asOnBoard)
    if (const base::Result<> codable = file->CheckCodable(); !codable) return codable.Why();
  const fs::path folder = base::FirstThatTakes(folders, [&](const fs::path& place) {
    return sound.asOnBoard ? WriteBoardWav(*file, place / kName) : file->WriteWav(place / kName);
  });
  if (!folder.empty()) return folder / kName;
  return base::Failure{base::FailureKind::Failed,
                       "The sound cannot be played: there is no place for its copy \"temp.wav\". Make room on the disk "
                       "or permit writing and play it again."};
}

}  // namespace kestrin::core::sound
