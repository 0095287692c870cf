// SPDX-License-Identifier: MIT
#include "ui/sound/FolderContents.h"

#include <algorithm>
#include <system_error>

#include "core/sound/LSU_SoundFile.h"
#include "core/sound/import/SoundEnding.h"
#include "ui/kit/PathText.h"
#include "ui/sound/NaturalOrder.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::sound {

namespace fs = std::filesystem;

namespace {

bool IsShown(const fs::path& file, SoundFilter filter) {
  if (filter == SoundFilter::Board) return core::sound::LSU_SoundFile::HasSoundName(file);
  return core::sound::EndingOf(file) != core::sound::SoundEnding::None;
}

}  // namespace

FolderContents FolderContents::Of(const fs::path& folder, const std::function<bool()>& goOn, SoundFilter filter) {
  FolderContents contents;
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    if (goOn && !goOn()) return contents;
    QString name = kit::TextOf(entry->path().filename());
    std::error_code ignored;
    if (entry->is_directory(ignored)) {
      if (!name.startsWith(QLatin1Char('.'))) contents.folders.push_back({entry->path(), std::move(name), 0});
    } else if (IsShown(entry->path(), filter) && entry->is_regular_file(ignored)) {
      const auto size = static_cast<qint64>(entry->file_size(ignored));
      contents.sounds.push_back({entry->path(), std::move(name), ignored ? 0 : size});
    }
  }
  contents.complete = !error;
  const auto before = [](const FolderEntry& a, const FolderEntry& b) { return NaturallyBefore(a.name, b.name); };
  std::sort(contents.folders.begin(), contents.folders.end(), before);
  std::sort(contents.sounds.begin(), contents.sounds.end(), before);
  return contents;
}

}  // namespace kestrin::ui::sound
