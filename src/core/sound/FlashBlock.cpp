#include "sound/FlashBlock.h"

#include <algorithm>

#include "device/TLS.h"

namespace kestrin::core::sound {

std::vector<FlashBlock> FlashBlocks(std::int32_t length) {
  constexpr std::int32_t kBlock = device::TLS::kBlockSize;
  std::vector<FlashBlock> blocks;
  std::int32_t offset = 0;
  if (length > kBlock)
    for (; length - offset >= kBlock; offset += kBlock) blocks.push_back({offset, kBlock, true});
  while (offset < length) {
    const std::int32_t size = std::min<std::int32_t>(length - offset, device::TLS::kLargestRest);
    blocks.push_back({offset, size, false});
    offset += size;
  }
  return blocks;
}

}  // namespace kestrin::core::sound
