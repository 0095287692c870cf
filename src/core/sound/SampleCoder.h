// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace kestrin::core::sound {

/// The largest absolute value among the samples, 0 .. 32768; 0 when there are none.
[[nodiscard]] std::int32_t LargestMagnitude(std::span<const std::int16_t> samples);

/// The board's coding of samples: a magnitude of ten bits and a sign, two samples in three bytes.
///
///     byte 0   bits 9-2 of the first magnitude
///     byte 1   bit 7 sign of the first sample, bit 6 sign of the second,
///              bits 3-2 low bits of the first magnitude, bits 1-0 low bits of the second
///     byte 2   bits 9-2 of the second magnitude
///
/// The second magnitude is rounded once. Of the first, byte 0 comes from the rounded value, but the low bits come from
/// the unrounded one: its distance from four times byte 0, in quarters and rounded to whole quarters. These quarters
/// are added to the second magnitude's low bits as they are, so the sum may run over into bits 4 and 5. All rounding is
/// to the nearest whole number, halves to even.
class SampleCoder {
 public:
  /// The processor's instructions to code with; the stream is the same with either.
  enum class Instructions {
    /// The fastest that the processor has.
    Best,
    /// Those that every processor of its kind has.
    Baseline,
  };

  /// A coder for a sound whose loudest sample has the magnitude `peak`, played at `volume` percent: at 100 % the peak
  /// becomes 999. With a peak of 0 every sample becomes 0.
  SampleCoder(std::int32_t peak, std::int16_t volume, Instructions instructions = Instructions::Best);

  /// Whether a sample of this magnitude stays within the ten bits.
  [[nodiscard]] bool CanCode(std::int32_t magnitude) const;

  /// Codes pairs of samples. `samples` holds an even number of them, all of which CanCode(); `stream` three bytes for
  /// each pair.
  void Code(std::span<const std::int16_t> samples, std::span<std::uint8_t> stream) const;

 private:
  double m_factor;
  Instructions m_instructions;
};

}  // namespace kestrin::core::sound
