// SPDX-License-Identifier: MIT
#include "sound/MissingSounds.h"

#include <algorithm>
#include <optional>
#include <tuple>
#include <utility>

namespace kestrin::core::sound {

namespace {

bool IsBefore(const MissingSound& a, const MissingSound& b) {
  return std::tie(a.place.kind, a.place.position) < std::tie(b.place.kind, b.place.position);
}

}  // namespace

int MissingSounds::Count(SlotKind kind) const {
  return static_cast<int>(std::count_if(m_sounds.begin(), m_sounds.end(),
                                        [kind](const MissingSound& sound) { return sound.place.kind == kind; }));
}

const MissingSound* MissingSounds::At(const SoundPlace& place) const {
  const auto found = std::find_if(m_sounds.begin(), m_sounds.end(),
                                  [&place](const MissingSound& sound) { return sound.place == place; });
  return found == m_sounds.end() ? nullptr : &*found;
}

int MissingSounds::Above(const SoundPlace& place) const {
  return static_cast<int>(std::count_if(m_sounds.begin(), m_sounds.end(), [&place](const MissingSound& sound) {
    return sound.place.kind == place.kind && sound.place.position < place.position;
  }));
}

void MissingSounds::Put(MissingSound sound) {
  m_sounds.insert(std::upper_bound(m_sounds.begin(), m_sounds.end(), sound, IsBefore), std::move(sound));
}

void MissingSounds::Take(const SoundPlace& place) {
  std::erase_if(m_sounds, [&place](const MissingSound& sound) { return sound.place == place; });
}

void MissingSounds::OpenRow(const SoundPlace& place) {
  for (MissingSound& sound : m_sounds)
    if (sound.place.kind == place.kind && sound.place.position >= place.position) ++sound.place.position;
}

void MissingSounds::CloseRow(const SoundPlace& place) {
  Take(place);
  for (MissingSound& sound : m_sounds)
    if (sound.place.kind == place.kind && sound.place.position > place.position) --sound.place.position;
}

void MissingSounds::MoveRow(SlotKind kind, int from, int to) {
  const MissingSound* const found = At({kind, from});
  std::optional<MissingSound> moved;
  if (found != nullptr) moved = *found;
  CloseRow({kind, from});
  OpenRow({kind, to});
  if (!moved) return;
  moved->place.position = to;
  Put(std::move(*moved));
}

void MissingSounds::Forget(SlotKind kind) {
  std::erase_if(m_sounds, [kind](const MissingSound& sound) { return sound.place.kind == kind; });
}

}  // namespace kestrin::core::sound
