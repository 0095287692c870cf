// SPDX-License-Identifier: MIT
#include "platform/audio/ChunkWalk.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace kestrin::platform::audio {

namespace {

using namespace std::string_view_literals;

/// How a kind of file writes its chunks.
struct Layout {
  std::string_view start;
  /// The chunk that holds the samples.
  std::string_view samples;
  std::uint64_t firstChunk;
  std::size_t nameBytes;
  std::size_t lengthBytes;
  bool isBigEndian;
  /// Whether a chunk's length counts its name and the length itself.
  bool countsHead;
  /// Chunks begin at multiples of it.
  std::uint64_t alignment;
};
constexpr std::array kLayouts{
    Layout{"RIFF"sv, "data"sv, 12, 4, 4, false, false, 2}, Layout{"RIFX"sv, "data"sv, 12, 4, 4, true, false, 2},
    Layout{"RF64"sv, "data"sv, 12, 4, 4, false, false, 2}, Layout{"FORM"sv, "SSND"sv, 12, 4, 4, true, false, 2},
    Layout{"caff"sv, "data"sv, 8, 4, 8, true, false, 1},   Layout{"riff"sv, "data"sv, 40, 16, 8, false, true, 8},
};

constexpr std::size_t kLongestHead = 24;
/// More chunks than any sound needs.
constexpr int kMostChunks = 1000;
/// What is written for a length that is not known yet: 32 bits, all of them set, or a little less than the lower 31.
constexpr std::uint64_t kNoLength = 0x7FFF0000;

std::uint64_t Number(std::span<const unsigned char> bytes, bool isBigEndian) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const std::uint64_t byte = bytes[isBigEndian ? i : bytes.size() - 1 - i];
    number = number << 8 | byte;
  }
  return number;
}

std::string_view Text(std::span<const unsigned char> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// Of the kind that has a head of fixed length and no chunks.
std::optional<std::uint64_t> EndInHead(std::span<const unsigned char> head) {
  const std::uint64_t length = Number(head.subspan(8, 4), true);
  if (length == 0 || length >= kNoLength) return std::nullopt;
  return Number(head.subspan(4, 4), true) + length;
}

/// The length of the samples where the chunk's own field is too small for it: a chunk in front of all others has it.
std::uint64_t LongLength(SourceFile& file) {
  constexpr std::uint64_t kPlace = 28;
  std::array<unsigned char, 8> field{};
  return file.ReadAt(kPlace, field.data(), field.size()) == field.size() ? Number(field, false) : 0;
}

}  // namespace

std::optional<std::uint64_t> ClaimedEndOfSamples(SourceFile& file) {
  std::array<unsigned char, kLongestHead> head{};
  if (file.ReadAt(0, head.data(), 12) < 12) return std::nullopt;
  const std::string_view start = Text(std::span(head).first(4));
  if (start == ".snd") return EndInHead(head);
  const auto* const layout =
      std::find_if(kLayouts.begin(), kLayouts.end(), [start](const Layout& one) { return one.start == start; });
  if (layout == kLayouts.end()) return std::nullopt;

  const std::size_t headBytes = layout->nameBytes + layout->lengthBytes;
  std::uint64_t place = layout->firstChunk;
  for (int chunk = 0; chunk < kMostChunks; ++chunk) {
    if (file.ReadAt(place, head.data(), headBytes) < headBytes) return std::nullopt;
    const auto lengthField = std::span(head).subspan(layout->nameBytes, layout->lengthBytes);
    std::uint64_t length = Number(lengthField, layout->isBigEndian);
    const std::uint64_t content = place + (layout->countsHead ? 0 : headBytes);
    const bool isSamples = Text(head).starts_with(layout->samples);
    if (isSamples && layout->start == "RF64" && length >= kNoLength)
      length = LongLength(file);
    else if (isSamples && layout->lengthBytes == 4 && length >= kNoLength)
      return std::nullopt;
    if (isSamples && length == 0) return std::nullopt;
    // Lengths of 64 bits can be anything.
    if (length > ~std::uint64_t{0} - content - layout->alignment) return std::nullopt;
    if (isSamples) return content + length;
    place = (content + length + layout->alignment - 1) / layout->alignment * layout->alignment;
  }
  return std::nullopt;
}

}  // namespace kestrin::platform::audio
