// SPDX-License-Identifier: MIT
#include "saber/SaberSounds.h"

#include <algorithm>
#include <utility>

#include "sound/level/BoardSound.h"

namespace kestrin::core::saber {

base::Result<SharedSamples> SaberSounds::Of(const sound::LSU_SoundFile& file, const base::EventPump& pump) {
  sound::BoardSound heard(file);
  std::vector<std::int16_t> samples;
  samples.reserve(static_cast<std::size_t>(heard.Samples()));
  for (auto block = heard.Next(); !block.empty(); block = heard.Next()) {
    samples.insert(samples.end(), block.begin(), block.end());
    base::Pump(pump);
  }
  if (base::Result<> ended = heard.Ended(); !ended) return ended.Why();
  return std::make_shared<const std::vector<std::int16_t>>(std::move(samples));
}

base::Result<SaberSounds> SaberSounds::Of(const sound::LSU_Configuration& set, const base::EventPump& pump) {
  SaberSounds sounds;
  for (const sound::Slot& slot : sound::kSlots) {
    for (int position = 1; position <= set.Count(slot.kind); ++position) {
      base::Result<SharedSamples> samples = Of(set.FileAt(slot.kind, position), pump);
      if (!samples) return samples.Why();
      sounds.m_sounds.push_back({{slot.kind, position}, std::move(*samples)});
    }
  }
  return sounds;
}

SharedSamples SaberSounds::At(const sound::SoundPlace& place) const {
  const auto found = std::ranges::find(m_sounds, place, &Sound::place);
  return found == m_sounds.end() ? nullptr : found->samples;
}

int SaberSounds::Count(sound::SlotKind kind) const {
  return static_cast<int>(std::ranges::count_if(m_sounds, [kind](const Sound& one) { return one.place.kind == kind; }));
}

void SaberSounds::Add(sound::SlotKind kind, std::vector<std::int16_t> samples) {
  m_sounds.push_back({{kind, Count(kind) + 1}, std::make_shared<const std::vector<std::int16_t>>(std::move(samples))});
}

void SaberSounds::Exchange(const sound::SoundPlace& place, SharedSamples samples) {
  const auto found = std::ranges::find(m_sounds, place, &Sound::place);
  if (found != m_sounds.end()) found->samples = std::move(samples);
}

}  // namespace kestrin::core::saber
