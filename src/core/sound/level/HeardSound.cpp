// SPDX-License-Identifier: MIT
#include "sound/level/HeardSound.h"

#include <tuple>

namespace kestrin::core::sound {

namespace {

/// What a board makes of a sound depends on these.
auto KeyOf(const HeardSound& sound) {
  const LSU_SoundFile none;
  const LSU_SoundFile& file = sound.asOnBoard && sound.placed ? *sound.placed : none;
  return std::tuple(sound.path, sound.asOnBoard, file.NrOfSamples(), file.Peak(), file.Volume());
}

}  // namespace

std::optional<LSU_SoundFile> HeardSound::Measured(const base::EventPump& pump) const {
  if (asOnBoard && placed) return placed;
  LSU_SoundFile file;
  if (!file.ReadFile(path, pump)) return std::nullopt;
  return file;
}

bool operator==(const HeardSound& a, const HeardSound& b) { return KeyOf(a) == KeyOf(b); }

}  // namespace kestrin::core::sound
