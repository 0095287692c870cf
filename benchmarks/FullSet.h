// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdlib>

#include "core/device/BoardIdentity.h"
#include "core/sound/LSU_Configuration.h"
#include "core/sound/SlotKind.h"
#include "support/SoundSet.h"

namespace kestrin::core::sound {

/// A set that fills the smaller board to the last sample: 40 files of noise.
class FullSet {
 public:
  FullSet() {
    support::SoundSet files(m_folder.Path());
    int remaining = device::kDefaultMemoryCapacity;
    int left = 40;
    for (const Slot& slot : kSlots)
      for (int position = 1; position <= (slot.isList ? kListCapacity : 1); ++position) {
        const int samples = remaining / left--;
        remaining -= samples;
        if (!configuration.AddFile(files.Add(slot.kind, static_cast<std::size_t>(samples)).path, slot.kind))
          std::abort();
      }
    configuration.SetMaxNrOfSamples(device::kDefaultMemoryCapacity);
  }

  LSU_Configuration configuration;

 private:
  support::TemporaryFolder m_folder;
};

}  // namespace kestrin::core::sound
