// SPDX-License-Identifier: MIT
#include "sound/level/SampleDecoder.h"

#include <algorithm>
#include <cstddef>

#include "sound/LSU_SoundFile.h"

namespace kestrin::core::sound {

namespace {

std::int16_t SampleOf(int magnitude, bool isBelowZero) {
  constexpr int kLargest = LSU_SoundFile::kLargestMagnitude;
  // Above the largest one, quarters that ran over would lead beyond full scale.
  const int sample = (std::min(magnitude, kLargest) * SampleDecoder::kFullScale + kLargest / 2) / kLargest;
  return static_cast<std::int16_t>(isBelowZero ? -sample : sample);
}

}  // namespace

void SampleDecoder::Decode(std::span<const std::uint8_t> stream, std::span<std::int16_t> samples) {
  for (std::size_t pair = 0; pair < stream.size() / 3; ++pair) {
    const int middle = stream[3 * pair + 1];
    const int sum = middle & 0b0011'1111;
    samples[2 * pair] = SampleOf(4 * stream[3 * pair] + sum / 4, (middle & 0b1000'0000) != 0);
    samples[2 * pair + 1] = SampleOf(4 * stream[3 * pair + 2] + sum % 4, (middle & 0b0100'0000) != 0);
  }
}

}  // namespace kestrin::core::sound
