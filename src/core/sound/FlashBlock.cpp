// SPDX-License-Identifier: MIT
#include "sound/FlashBlock.h"

#include <algorithm>

#include "device/Protocol.h"

namespace kestrin::core::sound {

std::vector<FlashBlock> FlashBlocks(std::int32_t length) {
  constexpr auto kBlock = static_cast<std::int32_t>(device::kBlockSize);
  constexpr auto kRest = static_cast<std::int32_t>(device::kLargestRest);
  std::vector<FlashBlock> blocks;
  std::int32_t offset = 0;
  if (length > kBlock)
    for (; length - offset >= kBlock; offset += kBlock) blocks.push_back({offset, kBlock, true});
  while (offset < length) {
    const std::int32_t size = std::min(length - offset, kRest);
    blocks.push_back({offset, size, false});
    offset += size;
  }
  return blocks;
}

}  // namespace kestrin::core::sound
