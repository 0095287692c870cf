// SPDX-License-Identifier: MIT
#include "core/sound/board/FileTable.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <numeric>

namespace kestrin::core::sound {
namespace {

using Bytes = std::vector<std::uint8_t>;

/// All that 24 bits can name.
constexpr std::int32_t kFlash = 1 << 24;

/// Two motion sounds, one impact sound and one lock-up sound, each sound of 75 bytes, one byte free between two.
Bytes SomeTable() {
  Bytes table = {2, 1, 1, 0};
  for (int sound = 0; sound < 8; ++sound) {
    const int address = 512 + 76 * sound;
    for (const int byte : {0, address >> 8, address & 0xFF, 0, 0, 75}) table.push_back(static_cast<std::uint8_t>(byte));
  }
  return table;
}

Bytes WithChecksum(Bytes table) {
  const unsigned sum = std::accumulate(table.begin(), table.end(), 0U);
  table.push_back(static_cast<std::uint8_t>(sum >> 8));
  table.push_back(static_cast<std::uint8_t>(sum & 0xFF));
  return table;
}

TEST(FileTable, TellsItsLengthByItsCounts) {
  using Head = std::array<std::uint8_t, 4>;
  EXPECT_EQ(FileTable::BytesOf(Head{0, 0, 0, 0}), 30U);
  EXPECT_EQ(FileTable::BytesOf(Head{1, 1, 1, 0}), 48U);
  EXPECT_EQ(FileTable::BytesOf(Head{12, 12, 12, 0}), 246U);
  EXPECT_EQ(FileTable::BytesOf(Head{13, 1, 1, 0}), std::nullopt);
  EXPECT_EQ(FileTable::BytesOf(Head{1, 13, 1, 0}), std::nullopt);
  EXPECT_EQ(FileTable::BytesOf(Head{1, 1, 13, 0}), std::nullopt);
  EXPECT_EQ(FileTable::BytesOf(Head{1, 1, 1, 1}), std::nullopt);
}

TEST(FileTable, NamesItsSoundsInFlashOrder) {
  const auto sounds = FileTable::Read(WithChecksum(SomeTable()), kFlash);
  ASSERT_TRUE(sounds);
  const std::array<SoundPlace, 8> places = {{{SlotKind::Boot, 1},
                                             {SlotKind::PwrOn, 1},
                                             {SlotKind::PwrOff, 1},
                                             {SlotKind::Idle, 1},
                                             {SlotKind::Motion, 1},
                                             {SlotKind::Motion, 2},
                                             {SlotKind::Impact, 1},
                                             {SlotKind::Lockup, 1}}};
  ASSERT_EQ(sounds->size(), places.size());
  for (std::size_t i = 0; i < places.size(); ++i)
    EXPECT_EQ((*sounds)[i], (FlashSound{places[i], 512 + 76 * static_cast<std::int32_t>(i), 75, 0})) << i;
}

TEST(FileTable, ReadsAddressesOf24Bits) {
  Bytes table = SomeTable();
  // The last sound: 0x123456, 0x010203 bytes.
  std::ranges::copy(Bytes{0x12, 0x34, 0x56, 0x01, 0x02, 0x03}, table.end() - 6);
  const auto sounds = FileTable::Read(WithChecksum(table), kFlash);
  ASSERT_TRUE(sounds);
  EXPECT_EQ(sounds->back().address, 0x123456);
  EXPECT_EQ(sounds->back().length, 0x010203);
}

TEST(FileTable, WhatIsNoTableOfACompleteSetIsRefused) {
  struct Case {
    const char* why;
    std::function<void(Bytes&)> spoil;
  };
  const std::array<Case, 7> cases = {{
      {"a sound of no length", [](Bytes& table) { table[9] = 0; }},
      {"a sound in front of the first address", [](Bytes& table) { table[5] = 1, table[6] = 255; }},
      {"a sound inside the one before", [](Bytes& table) { table[12] = static_cast<std::uint8_t>(table[12] - 2); }},
      {"a sound that reaches beyond the flash",
       [](Bytes& table) {
         std::ranges::copy(Bytes{0xFF, 0xFF, 0xFF, 0, 0, 2}, table.end() - 6);
       }},
      {"a list that is too long", [](Bytes& table) { table[0] = 13; }},
      {"a count that does not fit the length", [](Bytes& table) { table[0] = 3; }},
      {"a byte that is always 0", [](Bytes& table) { table[3] = 1; }},
  }};
  for (const Case& one : cases) {
    Bytes table = SomeTable();
    one.spoil(table);
    EXPECT_FALSE(FileTable::Read(WithChecksum(table), kFlash)) << one.why;
  }
}

TEST(FileTable, ASoundMayEndWithTheFlash) {
  Bytes table = SomeTable();
  std::ranges::copy(Bytes{0xFF, 0xFF, 0xFF, 0, 0, 1}, table.end() - 6);
  EXPECT_TRUE(FileTable::Read(WithChecksum(table), kFlash));
}

TEST(FileTable, NoSoundLiesBeyondASmallerFlash) {
  Bytes table = SomeTable();
  std::ranges::copy(Bytes{0x3F, 0xFF, 0xFF, 0, 0, 1}, table.end() - 6);
  EXPECT_TRUE(FileTable::Read(WithChecksum(table), 4 << 20));
  table.back() = 2;
  EXPECT_FALSE(FileTable::Read(WithChecksum(table), 4 << 20));
  EXPECT_TRUE(FileTable::Read(WithChecksum(table), 8 << 20));
}

TEST(FileTable, AWrongChecksumIsNoTable) {
  Bytes table = WithChecksum(SomeTable());
  table.back() ^= 1;
  EXPECT_FALSE(FileTable::Read(table, kFlash));
}

TEST(FileTable, FewBytesAreNoTable) {
  const Bytes table = WithChecksum(SomeTable());
  for (std::size_t size = 0; size < table.size(); ++size)
    EXPECT_FALSE(FileTable::Read(std::span(table).first(size), kFlash)) << size;
}

}  // namespace
}  // namespace kestrin::core::sound
