// SPDX-License-Identifier: MIT
#include "sound/MemoryUse.h"

#include <algorithm>
#include <limits>

#include "sound/Download.h"
#include "sound/FlashBlock.h"

namespace kestrin::core::sound {

MemoryUse MemoryUse::Of(const LSU_Configuration& configuration) {
  std::vector<Sound> sounds;
  for (const Slot& slot : kSlots)
    for (int position = 1; position <= configuration.Count(slot.kind); ++position)
      sounds.push_back({slot.kind, configuration.FileAt(slot.kind, position).NrOfSamples()});
  return Of(sounds, configuration.MaxNrOfSamples());
}

MemoryUse MemoryUse::Of(const std::vector<Sound>& sounds, std::int64_t capacity) {
  const auto blocks = [](std::int64_t bytes) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    return FlashBlocks(static_cast<std::int32_t>(std::min(bytes, kMost))).size();
  };
  MemoryUse use;
  use.capacity = capacity;
  for (const Sound& sound : sounds) {
    use.samples[static_cast<std::size_t>(&SlotOf(sound.kind) - kSlots.data())] += sound.samples;
    use.total += sound.samples;
  }
  if (!use.Fits()) return use;
  // The file table takes one block, however many files there are.
  std::size_t blockCount = 1;
  for (const Sound& sound : sounds) blockCount += blocks(LSU_SoundFile::CodedBytes(sound.samples));
  constexpr std::size_t kSecond = 1000;
  use.downloadSeconds =
      Download::kEraseSeconds + static_cast<int>((blockCount * kBlockMilliseconds + kSecond - 1) / kSecond);
  return use;
}

}  // namespace kestrin::core::sound
