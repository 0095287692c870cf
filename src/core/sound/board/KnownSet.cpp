// SPDX-License-Identifier: MIT
#include "sound/board/KnownSet.h"

#include <algorithm>

#include "base/PathText.h"
#include "sound/board/FileTable.h"

namespace kestrin::core::sound {

KnownSet KnownSet::Of(const LSU_Configuration& configuration, const std::filesystem::path& path, KnownSounds& known,
                      const base::EventPump& pump) {
  KnownSet set{path, base::TextOf(path.stem()), {}};
  for (const Slot& slot : kSlots) {
    for (int position = 1; position <= configuration.Count(slot.kind); ++position) {
      const LSU_SoundFile& file = configuration.FileAt(slot.kind, position);
      SetSound sound{{slot.kind, position},
                     file.FileNameAndPath(),
                     file.Volume(),
                     static_cast<std::int32_t>(LSU_SoundFile::CodedBytes(file.NrOfSamples())),
                     {}};
      if (const std::optional<StreamSums> sums = known.SumsOf(file, pump)) sound.checksum = sums->Whole();
      set.sounds.push_back(std::move(sound));
    }
  }
  return set;
}

std::optional<KnownSet> KnownSet::Load(const std::filesystem::path& path, KnownSounds& known,
                                       const base::EventPump& pump) {
  const auto named = known.SoundsOf(path, pump);
  if (!named) return std::nullopt;
  KnownSet set{path, base::TextOf(path.stem()), {}};
  for (const KnownSounds::Named& one : *named) {
    const std::optional<StreamSums> sums = known.SumsOf(one.path, one.volume, pump);
    if (!sums) return std::nullopt;
    set.sounds.push_back({one.place, one.path, one.volume, sums->length, sums->Whole()});
  }
  return set;
}

std::optional<SetImage> KnownSet::Image() const {
  SetImage image{path, {}, {}};
  std::int64_t address = LSU_Configuration::kFirstStream;
  for (const SetSound& sound : sounds) {
    if (!sound.checksum || address + sound.length > LSU_Configuration::kAddressSpace) return std::nullopt;
    image.sounds.push_back({sound.place, static_cast<std::int32_t>(address), sound.length, *sound.checksum});
    // A byte that nobody writes stands between two sounds.
    address += sound.length + 1;
  }
  const auto isFilled = [this](const Slot& slot) { return At({slot.kind, 1}) != nullptr; };
  if (!std::ranges::all_of(kSlots, isFilled)) return std::nullopt;
  image.table = FileTable::Of(image.sounds);
  return image;
}

const SetSound* KnownSet::At(const SoundPlace& place) const {
  const auto found = std::ranges::find(sounds, place, &SetSound::place);
  return found == sounds.end() ? nullptr : &*found;
}

}  // namespace kestrin::core::sound
