// SPDX-License-Identifier: MIT
#include "platform/audio/BrokenOff.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/audio/ChunkWalk.h"

namespace kestrin::platform::audio {

namespace {

using namespace std::string_view_literals;

std::string ReadText(SourceFile& file, std::uint64_t offset, std::size_t most) {
  std::string bytes(most, '\0');
  bytes.resize(file.ReadAt(offset, bytes.data(), most));
  return bytes;
}

std::uint64_t Byte(std::string_view bytes, std::size_t index) { return static_cast<unsigned char>(bytes[index]); }

// Pages of Ogg.
constexpr std::size_t kPageHead = 27;
constexpr std::size_t kSerialAt = 14;
constexpr std::size_t kLongestPage = 65307;
constexpr unsigned kLastOfItsSound = 4;

/// Bytes of the page that `page` begins with; 0 when it does not hold the whole head.
std::size_t PageBytes(std::string_view page) {
  if (page.size() < kPageHead) return 0;
  const auto pieces = static_cast<std::size_t>(Byte(page, kPageHead - 1));
  if (page.size() < kPageHead + pieces) return 0;
  std::size_t bytes = kPageHead + pieces;
  for (std::size_t piece = 0; piece < pieces; ++piece) bytes += Byte(page, kPageHead + piece);
  return bytes;
}

/// The last page says of itself that it is the last.
FileEnd EndOfOgg(SourceFile& file, std::string_view start) {
  const std::uint64_t from = file.Size() - std::min<std::uint64_t>(file.Size(), 2 * kLongestPage);
  const std::string end = ReadText(file, from, 2 * kLongestPage);
  const std::size_t found = end.rfind("OggS");
  if (found == end.npos) return FileEnd::BrokenOff;
  const std::string_view last = std::string_view(end).substr(found);
  const std::size_t bytes = PageBytes(last);
  if (bytes == 0 || bytes > last.size() || (Byte(last, 5) & kLastOfItsSound) == 0) return FileEnd::BrokenOff;
  return last.substr(kSerialAt, 4) == start.substr(kSerialAt, 4) ? FileEnd::Whole : FileEnd::OneOfSeveral;
}

/// The first frame of most MP3 files holds no sound but the length of the file.
FileEnd EndOfMp3(SourceFile& file, std::string_view start) {
  std::uint64_t first = 0;
  // Names and pictures come before it; their length has seven bits a byte.
  if (start.starts_with("ID3")) {
    for (std::size_t i = 6; i < 10; ++i) first = first << 7 | (Byte(start, i) & 0x7F);
    first += 10;
  }
  const std::string frame = ReadText(file, first, 256);
  for (const std::string_view name : {"Xing"sv, "Info"sv}) {
    const std::size_t found = frame.find(name);
    if (found == frame.npos || found > 40 || frame.size() < found + 16) continue;
    constexpr unsigned kHasFrames = 1;
    constexpr unsigned kHasBytes = 2;
    const auto has = static_cast<unsigned>(Byte(frame, found + 7));
    if ((has & kHasBytes) == 0) break;
    std::uint64_t bytes = 0;
    const std::size_t field = found + ((has & kHasFrames) != 0 ? 12 : 8);
    for (std::size_t i = 0; i < 4; ++i) bytes = bytes << 8 | Byte(frame, field + i);
    return first + bytes > file.Size() ? FileEnd::BrokenOff : FileEnd::Whole;
  }
  return FileEnd::Whole;
}

}  // namespace

FileEnd EndOf(SourceFile& file) {
  const std::string start = ReadText(file, 0, kPageHead);
  if (start.size() < kPageHead) return FileEnd::BrokenOff;
  if (start.starts_with("OggS")) return EndOfOgg(file, start);
  if (start.starts_with("ID3") || start.starts_with('\xFF')) return EndOfMp3(file, start);
  const std::optional<std::uint64_t> end = ClaimedEndOfSamples(file);
  return end && *end > file.Size() ? FileEnd::BrokenOff : FileEnd::Whole;
}

}  // namespace kestrin::platform::audio
