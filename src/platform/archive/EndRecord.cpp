// SPDX-License-Identifier: MIT
#include "platform/archive/EndRecord.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace kestrin::platform::archive {

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;

namespace {

constexpr std::string_view kEnd("PK\5\6", 4);
constexpr std::string_view kLongEndPlace("PK\6\7", 4);
constexpr std::string_view kLongEnd("PK\6\6", 4);
constexpr std::size_t kEndBytes = 22;
constexpr std::size_t kLongEndPlaceBytes = 20;
constexpr std::size_t kLongEndBytes = 56;
/// Behind the end there is a comment of at most so many bytes.
constexpr std::size_t kMostComment = 0xFFFF;

/// The number of `size` bytes, least significant first, at `at`.
std::uint64_t NumberAt(std::string_view bytes, std::size_t at, std::size_t size) {
  std::uint64_t number = 0;
  for (std::size_t i = size; i > 0; --i) number = number << 8 | static_cast<unsigned char>(bytes[at + i - 1]);
  return number;
}

/// What an end says of its directory.
struct Directory {
  std::uint64_t entries = 0;
  std::uint64_t bytes = 0;
};

Directory DirectoryOf(std::string_view end) { return {NumberAt(end, 10, 2), NumberAt(end, 12, 4)}; }

/// A large archive has a second, longer end somewhere, and its place in front of the first.
Result<Directory> LongDirectory(const files::RegularFile& file, std::string_view place) {
  std::string end(kLongEndBytes, '\0');
  const Result<std::size_t> read = file.ReadAt(NumberAt(place, 8, 8), end);
  if (!read) return read.Why();
  if (*read != end.size() || !end.starts_with(kLongEnd)) return Directory();
  return Directory{NumberAt(end, 32, 8), NumberAt(end, 40, 8)};
}

/// The last bytes of the file, with room for whatever can stand in front of and behind its end.
Result<std::string> TailOf(const files::RegularFile& file) {
  const std::uint64_t most = kLongEndPlaceBytes + kEndBytes + kMostComment;
  std::string tail(static_cast<std::size_t>(std::min(file.Size(), most)), '\0');
  const Result<std::size_t> read = file.ReadAt(file.Size() - tail.size(), tail);
  if (!read) return read.Why();
  tail.resize(*read);
  return tail;
}

bool IsWithin(const Directory& all) { return all.entries <= kMostEntries && all.bytes <= kMostDirectoryBytes; }

/// Adds without going round.
std::uint64_t Sum(std::uint64_t a, std::uint64_t b) { return a + std::min(b, ~a); }

}  // namespace

Result<> CheckEndRecord(const files::RegularFile& file) {
  const Result<std::string> whole = TailOf(file);
  if (!whole) return whole.Why();
  const std::string_view tail = *whole;
  // Whatever looks like an end is one that the library may take, so all of them together have to be within the limits.
  Directory all;
  bool found = false;
  for (std::size_t at = tail.find(kEnd); at != tail.npos; at = tail.find(kEnd, at + 1)) {
    if (tail.size() - at < kEndBytes) break;
    found = true;
    Directory directory = DirectoryOf(tail.substr(at));
    if (at >= kLongEndPlaceBytes && tail.substr(at - kLongEndPlaceBytes).starts_with(kLongEndPlace)) {
      const Result<Directory> longer = LongDirectory(file, tail.substr(at - kLongEndPlaceBytes));
      if (!longer) return longer.Why();
      directory = *longer;
    }
    all = {Sum(all.entries, directory.entries), Sum(all.bytes, directory.bytes)};
    if (!IsWithin(all))
      return Failure{FailureKind::Full, "it holds more than can be taken at once. Unpack it, then take its folder"};
  }
  if (!found)
    return Failure{FailureKind::NotValid, "it is no ZIP file, or only the beginning of one. Fetch or copy it again"};
  return {};
}

}  // namespace kestrin::platform::archive
