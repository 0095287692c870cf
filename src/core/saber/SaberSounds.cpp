// SPDX-License-Identifier: MIT
#include "saber/SaberSounds.h"

#include <algorithm>
#include <utility>

#include "sound/level/BoardSound.h"

namespace kestrin::core::saber {

base::Result<SaberSounds> SaberSounds::Of(const sound::LSU_Configuration& set, const base::EventPump& pump) {
  SaberSounds sounds;
  for (const sound::Slot& slot : sound::kSlots) {
    for (int position = 1; position <= set.Count(slot.kind); ++position) {
      sound::BoardSound heard(set.FileAt(slot.kind, position));
      std::vector<std::int16_t> samples;
      samples.reserve(static_cast<std::size_t>(heard.Samples()));
      for (auto block = heard.Next(); !block.empty(); block = heard.Next())
        samples.insert(samples.end(), block.begin(), block.end());
      if (base::Result<> ended = heard.Ended(); !ended) return ended.Why();
      sounds.Add(slot.kind, std::move(samples));
      base::Pump(pump);
    }
  }
  return sounds;
}

std::span<const std::int16_t> SaberSounds::At(const sound::SoundPlace& place) const {
  const auto found = std::ranges::find(m_sounds, place, &Sound::place);
  return found == m_sounds.end() ? std::span<const std::int16_t>() : std::span<const std::int16_t>(found->samples);
}

int SaberSounds::Count(sound::SlotKind kind) const {
  return static_cast<int>(std::ranges::count_if(m_sounds, [kind](const Sound& one) { return one.place.kind == kind; }));
}

void SaberSounds::Add(sound::SlotKind kind, std::vector<std::int16_t> samples) {
  m_sounds.push_back({{kind, Count(kind) + 1}, std::move(samples)});
}

}  // namespace kestrin::core::saber
