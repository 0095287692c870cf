// SPDX-License-Identifier: MIT
#include "sound/board/StreamSums.h"

#include <numeric>
#include <vector>

#include "base/Bytes.h"

namespace kestrin::core::sound {

std::pair<std::int32_t, std::int32_t> StreamSums::Part(std::int32_t length, std::size_t part) {
  const auto at = [length](std::size_t number) {
    return static_cast<std::int32_t>(std::int64_t{length} * static_cast<std::int64_t>(number) / std::int64_t{kParts});
  };
  return {at(part), at(part + 1)};
}

StreamSums StreamSums::Of(const LSU_SoundFile& coded) {
  StreamSums sums{coded.NrOfBytes(), {}};
  std::vector<std::uint8_t> bytes;
  for (std::size_t part = 0; part < kParts; ++part) {
    const auto [begin, end] = Part(sums.length, part);
    if (coded.GetBytes(bytes, static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin)))
      sums.parts[part] = base::ByteSum(bytes);
  }
  return sums;
}

std::uint16_t StreamSums::Whole() const {
  return static_cast<std::uint16_t>(std::accumulate(parts.begin(), parts.end(), 0U));
}

}  // namespace kestrin::core::sound
