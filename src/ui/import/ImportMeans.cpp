// SPDX-License-Identifier: MIT
#include "ui/import/ImportMeans.h"

#include <utility>

#include "core/base/PathText.h"
#include "core/sound/LSU_SoundFile.h"
#include "core/sound/import/KeepSound.h"
#include "core/sound/import/PlainCopy.h"
#include "core/sound/import/SourceList.h"

namespace kestrin::ui::imports {

namespace fs = std::filesystem;

using core::sound::ImportCrew;
using core::sound::ImportedSound;
using core::sound::ImportSource;
using core::sound::LSU_SoundFile;
using core::sound::SourceList;

namespace {

/// Whether it is a file of the board's own format; one in an archive has no place of its own.
bool IsOfTheBoard(const ImportSource& source) {
  return LSU_SoundFile::HasSoundName(source.file) && core::base::TextOf(source.file) == source.shownAs;
}

ListedSounds List(core::base::Archives& archives, const std::vector<fs::path>& named, const ImportMeans::GoOn& goOn) {
  auto list = std::make_shared<SourceList>(archives);
  for (const fs::path& path : named)
    if (!list->Add(path, goOn)) break;
  return {list->Sources(), list};
}

/// A sound of the board's own format as it is.
ImportedSound Measured(const ImportSource& source) {
  ImportedSound sound;
  sound.source = source.shownAs;
  LSU_SoundFile file;
  if (!file.ReadFile(source.file)) {
    sound.reason = file.WhyNotValid();
    return sound;
  }
  sound.path = source.file;
  sound.rate = LSU_SoundFile::kSamplesPerSecond;
  sound.channels = 1;
  sound.samples = file.NrOfSamples();
  sound.seconds = sound.sourceSeconds = static_cast<double>(file.NrOfSamples()) / LSU_SoundFile::kSamplesPerSecond;
  return sound;
}

void Convert(ImportCrew& crew, const std::vector<ImportCrew::Order>& orders, const fs::path& folder,
             const ImportCrew::Done& done, const ImportMeans::GoOn& goOn) {
  std::vector<ImportCrew::Order> others;
  std::vector<std::size_t> numbers;
  for (std::size_t i = 0; i < orders.size(); ++i) {
    if (IsOfTheBoard(orders[i].source)) {
      done(i, Measured(orders[i].source));
      continue;
    }
    others.push_back(orders[i]);
    numbers.push_back(i);
  }
  crew.Import(
      others, folder, [&](std::size_t i, ImportedSound sound) { done(numbers.at(i), std::move(sound)); }, goOn);
}

}  // namespace

ImportMeans MeansOver(core::sound::AudioTools& tools, core::base::Archives& archives, core::base::Disk& disk) {
  ImportMeans means;
  means.list = [&archives](const std::vector<fs::path>& named, const ImportMeans::GoOn& goOn) {
    return List(archives, named, goOn);
  };
  means.convert = [&tools, &disk](const std::vector<ImportCrew::Order>& orders, const fs::path& folder,
                                  const ImportCrew::Done& done, const ImportMeans::GoOn& goOn) {
    ImportCrew crew(tools, disk);
    Convert(crew, orders, folder, done, goOn);
  };
  means.copy = [&tools](const fs::path& sound, const fs::path& copy, const ImportMeans::GoOn& goOn) {
    return core::sound::PlainCopy::Write(tools, sound, copy, goOn);
  };
  means.measure = [&tools](const std::vector<core::sound::Levelling::Sound>& sounds, const ImportMeans::GoOn& goOn) {
    return core::sound::Levelling::Measure(
        sounds, [&tools] { return tools.MakeMeter(); }, [&goOn](int) { return goOn(); });
  };
  means.keep = [&disk](const fs::path& made, const fs::path& folder) {
    return core::sound::KeepSound(made, folder, disk);
  };
  return means;
}

}  // namespace kestrin::ui::imports
