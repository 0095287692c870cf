// SPDX-License-Identifier: MIT
#include "sound/import/SoundEdit.h"

#include <algorithm>

namespace kestrin::core::sound {

void SoundEdit::Apply(std::uint64_t first, std::span<double> block) const {
  if (!ChangesSamples()) return;
  const std::uint64_t length = kept.Length();
  // Of a sound that is shorter than two fades each takes a half.
  const std::uint64_t fade = std::min(kFade, length / 2);
  for (std::size_t i = 0; i < block.size(); ++i) {
    const std::uint64_t place = first + i;
    const std::uint64_t behind = length - place;
    if (place < beginning.size()) block[i] = beginning[static_cast<std::size_t>(place)];
    if (fadesIn && place < fade) block[i] *= (static_cast<double>(place) + 0.5) / static_cast<double>(fade);
    if (fadesOut && behind <= fade) block[i] *= (static_cast<double>(behind) - 0.5) / static_cast<double>(fade);
  }
}

}  // namespace kestrin::core::sound
