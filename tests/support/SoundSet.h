#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "core/sound/LSU_Configuration.h"
#include "support/TestFiles.h"

namespace kestrin::support {

/// Writes a sound file `name` of `samples` samples and adds it to the slot. True when it was taken.
inline bool AddSound(core::sound::LSU_Configuration& configuration, const TemporaryFolder& folder,
                     core::sound::SlotKind kind, const std::string& name, std::size_t samples = 100,
                     std::int16_t peak = 20000) {
  return configuration.AddFile(WriteSoundFile(folder / name, SomeSamples(samples, peak)), kind);
}

/// Fills every slot: the single ones with 100 + 2 * number samples, each list with `entries` files of 200 + 2 * number
/// samples. The files are named like "boot.lsu" and "motion 2.lsu".
inline void FillEverySlot(core::sound::LSU_Configuration& configuration, const TemporaryFolder& folder,
                          int entries = 1) {
  for (const core::sound::Slot& slot : core::sound::kSlots)
    for (int entry = 1; entry <= (slot.isList ? entries : 1); ++entry) {
      const std::string name = std::string(slot.name) + (slot.isList ? " " + std::to_string(entry) : "") + ".lsu";
      const auto samples = static_cast<std::size_t>((slot.isList ? 200 : 100) + 2 * static_cast<int>(slot.kind));
      ASSERT_TRUE(AddSound(configuration, folder, slot.kind, name, samples)) << name;
    }
}

}  // namespace kestrin::support
