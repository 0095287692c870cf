// SPDX-License-Identifier: MIT
#include "sound/SampleCoder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>

#include "base/Numbers.h"
#include "sound/LSU_SoundFile.h"

// One coding loop, compiled twice where the compiler can: for every processor of the kind, and for those that have
// wider vectors. Being inlined into both is what makes it two.
#if defined(__GNUC__) && defined(__x86_64__)
#define KESTRIN_HAS_AVX2
#define KESTRIN_INLINED [[gnu::always_inline]] inline
#else
#define KESTRIN_INLINED inline
#endif

namespace kestrin::core::sound {

namespace {

// Added to a double of less than 2^51, this leaves no bits behind the point: the processor itself rounds the sum to the
// nearest whole number, halves to even, which then stands in the low bits. Unlike a call to a rounding function it
// works on several numbers at once everywhere. (This file must be compiled without contracting a * b + c into one
// step.)
constexpr double kToWhole = 6755399441055744.0;  // 1.5 * 2^52
// The same for whole numbers of fours: these low bits hold a quarter of the rounded sum.
constexpr double kToFours = 4 * kToWhole;

std::int32_t LowBits(double sum) { return static_cast<std::int32_t>(std::bit_cast<std::int64_t>(sum)); }

/// Two samples as one word, the first in the low half: loaded in one piece where that is how memory holds them.
std::uint32_t PairAt(const std::int16_t* samples) {
  if constexpr (std::endian::native == std::endian::little) {
    std::uint32_t word;
    std::memcpy(&word, samples, sizeof word);
    return word;
  } else {
    return static_cast<std::uint16_t>(samples[0]) | std::uint32_t{static_cast<std::uint16_t>(samples[1])} << 16;
  }
}

/// Writes the eight bytes of `value`, least significant first.
void PutLittle64(std::uint8_t* out, std::uint64_t value) {
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(out, &value, sizeof value);
  } else {
    for (int i = 0; i < 8; ++i) out[i] = static_cast<std::uint8_t>(value >> (8 * i));
  }
}

/// Pairs that are coded into words before the words are packed into bytes: compilers turn each of the two loops into
/// vector instructions, but not both in one.
constexpr std::size_t kGroup = 64;

/// Codes each pair into the low three bytes of a word. Branches are written as masks, for the same reason.
KESTRIN_INLINED void CodeWords(const std::int16_t* samples, std::size_t pairs, double factor, std::uint32_t* words) {
  const double scale = std::fabs(factor);
  const double scaleToQuarters = 4 * scale;                      // exact: only the exponent changes
  const std::int32_t negate = factor < 0 ? -1 : 0;               // x ^ -1 - -1 is -x
  const std::int32_t firstSign = factor != 0 ? 0b1000'0000 : 0;  // at volume 0 nothing is below 0
  for (std::size_t i = 0; i < pairs; ++i) {
    const std::uint32_t pair = PairAt(samples + 2 * i);
    const std::int32_t first = static_cast<std::int32_t>(pair << 16) >> 16;
    const std::int32_t second = static_cast<std::int32_t>(pair) >> 16;

    const double quarters = std::fabs(first * scaleToQuarters);
    const std::int32_t a = LowBits(quarters + kToFours);
    const std::int32_t b = LowBits(std::fabs(second * scale) + kToWhole);
    // The rounded magnitude may lie above the unrounded one, so this may be negative.
    const std::int32_t rest = LowBits(quarters + kToWhole) - 16 * (a >> 2);
    const std::int32_t belowZero = rest >> 31;
    const std::int32_t restMagnitude = (rest ^ belowZero) - belowZero;

    // The first sign is that of the unrounded value, the second that of the rounded one, which is none at 0.
    const std::int32_t signs =
        ((((first ^ negate) - negate) >> 31) & firstSign) | (((second ^ negate) >> 31) & (-b >> 31) & 0b0100'0000);
    const std::int32_t middle = restMagnitude + (b & 3) + signs;
    words[i] = static_cast<std::uint32_t>((a >> 2) | middle << 8 | (b >> 2) << 16);
  }
}

/// Packs words of three bytes each.
KESTRIN_INLINED void PackWords(const std::uint32_t* words, std::size_t count, std::uint8_t* out) {
  std::size_t i = 0;
  // Two words at once fill six bytes; the two zeros behind them are overwritten by the next, so the last words are not
  // written like this.
  for (; i + 2 < count; i += 2, out += 6) PutLittle64(out, words[i] | std::uint64_t{words[i + 1]} << 24);
  for (; i < count; ++i)
    for (int byte = 0; byte < 3; ++byte) *out++ = static_cast<std::uint8_t>(words[i] >> (8 * byte));
}

KESTRIN_INLINED void CodePairs(const std::int16_t* samples, std::size_t pairs, double factor, std::uint8_t* out) {
  std::array<std::uint32_t, kGroup> words;
  for (std::size_t pair = 0; pair < pairs; pair += kGroup) {
    const std::size_t count = std::min(kGroup, pairs - pair);
    CodeWords(samples + 2 * pair, count, factor, words.data());
    PackWords(words.data(), count, out + 3 * pair);
  }
}

#ifdef KESTRIN_HAS_AVX2
/// The same for processors that work on four doubles at once, which not every x86-64 can.
[[gnu::target("avx2")]] void CodePairsAvx2(const std::int16_t* samples, std::size_t pairs, double factor,
                                           std::uint8_t* out) {
  CodePairs(samples, pairs, factor, out);
}

bool HasAvx2() {
  static const bool has = __builtin_cpu_supports("avx2") != 0;
  return has;
}
#endif

}  // namespace

std::int32_t LargestMagnitude(std::span<const std::int16_t> samples) {
  std::int16_t lowest = 0;
  std::int16_t highest = 0;
  for (const std::int16_t sample : samples) {
    lowest = std::min(lowest, sample);
    highest = std::max(highest, sample);
  }
  return std::max<std::int32_t>(-lowest, highest);
}

SampleCoder::SampleCoder(std::int32_t peak, std::int16_t volume, Instructions instructions)
    : m_factor(peak == 0 ? 0.0 : 999.0 / peak * volume / 100), m_instructions(instructions) {}

bool SampleCoder::CanCode(std::int32_t magnitude) const {
  // Rounding keeps the order of numbers, so the largest magnitude speaks for all.
  return base::RoundHalfEven(std::fabs(magnitude * m_factor)) <= LSU_SoundFile::kLargestMagnitude;
}

void SampleCoder::Code(std::span<const std::int16_t> samples, std::span<std::uint8_t> stream) const {
  const std::size_t pairs = samples.size() / 2;
#ifdef KESTRIN_HAS_AVX2
  if (m_instructions == Instructions::Best && HasAvx2())
    return CodePairsAvx2(samples.data(), pairs, m_factor, stream.data());
#endif
  CodePairs(samples.data(), pairs, m_factor, stream.data());
}

}  // namespace kestrin::core::sound
