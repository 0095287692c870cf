// SPDX-License-Identifier: MIT
#include "sound/MemoryUse.h"

#include <algorithm>
#include <limits>

#include "sound/Download.h"
#include "sound/FlashBlock.h"

namespace kestrin::core::sound {

MemoryUse MemoryUse::Of(const LSU_Configuration& configuration) {
  const auto blocks = [](std::int64_t bytes) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    return FlashBlocks(static_cast<std::int32_t>(std::min(bytes, kMost))).size();
  };

  MemoryUse use;
  use.capacity = configuration.MaxNrOfSamples();
  use.total = configuration.TotalNrOfSamples();
  std::size_t blockCount = 0;
  for (std::size_t place = 0; place < kSlots.size(); ++place) {
    const Slot& slot = kSlots[place];
    for (int position = 1; position <= configuration.Count(slot.kind); ++position) {
      const std::int32_t samples = configuration.FileAt(slot.kind, position).NrOfSamples();
      use.samples[place] += samples;
      if (use.Fits()) blockCount += blocks(LSU_SoundFile::CodedBytes(samples));
    }
  }
  if (!use.Fits()) return use;
  blockCount += blocks(static_cast<std::int64_t>(configuration.GetFileTable().size()));
  constexpr std::size_t kSecond = 1000;
  use.downloadSeconds =
      Download::kEraseSeconds + static_cast<int>((blockCount * kBlockMilliseconds + kSecond - 1) / kSecond);
  return use;
}

}  // namespace kestrin::core::sound
