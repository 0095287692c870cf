// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

namespace kestrin::core::sound {

/// The way back from the board's coding of samples, see SampleCoder: what a board plays of the bytes that it holds.
///
/// Not all of a sample comes back. Bits 5-0 of the middle byte are one sum: the first magnitude's distance from four
/// times byte 0, in quarters, and the second magnitude's low two bits. A reader takes the whole quarters of four in it
/// for the first sample, bits 5 and 4 included, since nothing else runs over into them, and what is left for the
/// second. So of what was coded
///   - the first magnitude comes back with an error of at most 1.5: the second's bits may have carried into it, and of
///     one that was rounded up to a multiple of four nobody can tell that it lay below;
///   - the second magnitude comes back with an error of at most 3.5: the first one's quarters stand in its low bits;
///   - both keep their signs, but for what is coded as 0.
class SampleDecoder {
 public:
  /// What the largest magnitude of ten bits, 1,023, becomes. A sound at 100 % has its peak at 999 of them.
  static constexpr std::int16_t kFullScale = 32767;

  /// Decodes triples of bytes: `samples` has room for two samples for every three bytes of `stream`.
  static void Decode(std::span<const std::uint8_t> stream, std::span<std::int16_t> samples);
};

}  // namespace kestrin::core::sound
