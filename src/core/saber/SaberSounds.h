// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "base/EventPump.h"
#include "base/Result.h"
#include "saber/SharedSamples.h"
#include "sound/LSU_Configuration.h"
#include "sound/SoundPlace.h"

namespace kestrin::core::saber {

/// The sounds of a set as a board plays them: coded, decoded, with their volumes. 48,000 samples a second.
class SaberSounds {
 public:
  /// Reads every sound of the set; `pump` gets its turn again and again. Fails like coding does when one cannot be read
  /// or is too loud.
  [[nodiscard]] static base::Result<SaberSounds> Of(const sound::LSU_Configuration& set,
                                                    const base::EventPump& pump = {});

  /// A single sound as a board plays it, with its volume of now. Fails like `Of`.
  [[nodiscard]] static base::Result<SharedSamples> Of(const sound::LSU_SoundFile& file,
                                                      const base::EventPump& pump = {});

  /// The samples of a sound; none when there is none.
  [[nodiscard]] SharedSamples At(const sound::SoundPlace& place) const;
  /// The sounds of a slot: 0 or 1, in a list 0 .. 12.
  [[nodiscard]] int Count(sound::SlotKind kind) const;

  /// Puts a sound behind the others of its slot.
  void Add(sound::SlotKind kind, std::vector<std::int16_t> samples);
  /// Puts other samples in place of a sound's. Nothing happens when there is no such sound.
  void Exchange(const sound::SoundPlace& place, SharedSamples samples);

 private:
  struct Sound {
    sound::SoundPlace place;
    SharedSamples samples;
  };
  std::vector<Sound> m_sounds;
};

}  // namespace kestrin::core::saber
