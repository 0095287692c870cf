#pragma once

#include <string>

#include "core/sound/LSU_Configuration.h"
#include "support/TestFiles.h"

namespace kestrin::support {

/// A complete configuration over sound files in a folder of its own.
class CompleteSet {
 public:
  /// The smallest: one file in every slot, of that many samples each.
  explicit CompleteSet(std::size_t samplesEach = 100) {
    unsigned seed = 1;
    for (const core::sound::Slot& slot : core::sound::kSlots) Add(slot.kind, samplesEach, seed++);
    configuration.SetMaxNrOfSamples(2793120);
  }

  /// Adds a file of that many samples to a slot.
  void Add(core::sound::SlotKind kind, std::size_t samples, unsigned seed = 99) {
    const std::filesystem::path path =
        folder / (std::string(core::sound::SlotOf(kind).name) + std::to_string(m_files++) + ".lsu");
    WriteSoundFile(path, SomeSamples(samples, 20000, seed));
    if (!configuration.AddFile(path, kind)) throw std::runtime_error("the test's own sound file is refused");
  }

  TemporaryFolder folder;
  core::sound::LSU_Configuration configuration;

 private:
  int m_files = 0;
};

}  // namespace kestrin::support
