// SPDX-License-Identifier: MIT
#include "sound/board/FileTable.h"

#include <algorithm>

#include "base/Bytes.h"
#include "sound/LSU_Configuration.h"

namespace kestrin::core::sound {

namespace {

constexpr std::size_t kAddressBytes = 3;
constexpr std::size_t kEntryBytes = 2 * kAddressBytes;
constexpr std::size_t kSingles = 4;

std::int32_t Get24(std::span<const std::uint8_t> bytes) {
  return static_cast<std::int32_t>(base::GetBig24(bytes.first<kAddressBytes>()));
}

}  // namespace

std::optional<std::size_t> FileTable::BytesOf(std::span<const std::uint8_t, kHeadBytes> head) {
  const auto counts = head.first<3>();
  if (head[3] != 0 || std::ranges::any_of(counts, [](int count) { return count > kListCapacity; })) return std::nullopt;
  const std::size_t sounds = kSingles + counts[0] + counts[1] + counts[2];
  return kHeadBytes + sounds * kEntryBytes + kChecksumBytes;
}

std::vector<std::uint8_t> FileTable::Of(std::span<const FlashSound> sounds) {
  std::vector<std::uint8_t> table;
  const auto put = [&table](std::int64_t value, int bytes) {
    while (bytes-- > 0) table.push_back(static_cast<std::uint8_t>(value >> 8 * bytes & 0xFF));
  };
  for (const Slot& slot : kSlots)
    if (slot.isList)
      put(std::ranges::count_if(sounds, [&](const FlashSound& one) { return one.place.kind == slot.kind; }), 1);
  put(0, 1);
  for (const FlashSound& sound : sounds) {
    put(sound.address, kAddressBytes);
    put(sound.length, kAddressBytes);
  }
  put(base::ByteSum(table), kChecksumBytes);
  return table;
}

std::optional<std::vector<FlashSound>> FileTable::Read(std::span<const std::uint8_t> table, std::int32_t flash) {
  if (table.size() < kHeadBytes || table.size() != BytesOf(table.first<kHeadBytes>())) return std::nullopt;
  if (base::ByteSum(table.first(table.size() - kChecksumBytes)) != base::GetBig16(table.last<kChecksumBytes>()))
    return std::nullopt;

  std::vector<FlashSound> sounds;
  std::span<const std::uint8_t> counts = table.first(kHeadBytes);
  std::span<const std::uint8_t> entries = table.subspan(kHeadBytes);
  std::int64_t end = LSU_Configuration::kFirstStream;
  for (const Slot& slot : kSlots) {
    const int count = slot.isList ? counts.front() : 1;
    if (slot.isList) counts = counts.subspan(1);
    for (int position = 1; position <= count; ++position) {
      const FlashSound sound{{slot.kind, position}, Get24(entries), Get24(entries.subspan(kAddressBytes)), 0};
      entries = entries.subspan(kEntryBytes);
      if (sound.length == 0 || sound.address < end) return std::nullopt;
      end = std::int64_t{sound.address} + sound.length;
      if (end > flash) return std::nullopt;
      sounds.push_back(sound);
    }
  }
  return sounds;
}

}  // namespace kestrin::core::sound
