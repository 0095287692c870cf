// SPDX-License-Identifier: MIT
#include "core/sound/board/KnownSet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "support/SoundSet.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;

/// A set of nine sounds with its file, and what is known of it.
class KnownSetTest : public ::testing::Test {
 protected:
  KnownSetTest() {
    m_set.AddOneEach(100);
    m_set.Add(SlotKind::Motion, 131, {.volume = 60});
    m_set.Add(SlotKind::Lockup, 90);
    m_file = m_set.WriteConfiguration("Ember.lscfg");
  }

  [[nodiscard]] fs::path Cache() const { return m_folder / "data" / KnownSounds::kFileName; }
  /// What a download would send.
  [[nodiscard]] SetImage LaidOut() {
    m_configuration = {};
    for (const support::SoundSet::Sound& sound : m_set.sounds) {
      const auto slot = std::ranges::find(kSlots, sound.slot, &Slot::name);
      EXPECT_TRUE(m_configuration.AddFile(sound.path, slot->kind));
      m_configuration.SetVolume(slot->kind, sound.position, static_cast<std::int16_t>(sound.volume));
    }
    EXPECT_TRUE(m_configuration.MakeMemoryMap({}));
    return SetImage::Of(m_configuration, m_file);
  }

  support::TemporaryFolder m_folder;
  support::SoundSet m_set{m_folder.Path()};
  fs::path m_file;
  LSU_Configuration m_configuration;
  int m_turns = 0;
};

void ExpectSame(const std::optional<SetImage>& image, const SetImage& laidOut) {
  ASSERT_TRUE(image);
  EXPECT_EQ(image->path, laidOut.path);
  EXPECT_EQ(image->table, laidOut.table);
  EXPECT_EQ(image->sounds, laidOut.sounds);
}

TEST_F(KnownSetTest, ASetOnDiskLooksAsADownloadSendsIt) {
  KnownSounds known(Cache());
  const auto set = KnownSet::Load(m_file, known);
  ASSERT_TRUE(set);
  EXPECT_EQ(set->name, "Ember");
  ExpectSame(set->Image(), LaidOut());
}

TEST_F(KnownSetTest, TheOpenSetLooksAsADownloadSendsIt) {
  const SetImage laidOut = LaidOut();
  KnownSounds known(Cache());
  ExpectSame(KnownSet::Of(m_configuration, m_file, known).Image(), laidOut);
}

// What counts is the time that is saved; nothing but the disk's word on the file is asked for the second time.
TEST_F(KnownSetTest, WhatIsKnownIsNotReadAgain) {
  {
    KnownSounds known(Cache());
    ASSERT_TRUE(KnownSet::Load(m_file, known));
    known.Keep();
  }
  KnownSounds known(Cache());
  const auto set = KnownSet::Load(m_file, known, [this] { ++m_turns; });
  ASSERT_TRUE(set);
  EXPECT_EQ(m_turns, 0) << "a file was read";
  ExpectSame(set->Image(), LaidOut());
  EXPECT_EQ(known.SumsOf(m_set.sounds[0].path, 100, [this] { ++m_turns; })->length, 150);
  EXPECT_EQ(m_turns, 0);
}

TEST_F(KnownSetTest, WhatHasChangedIsReadAgain) {
  KnownSounds known(Cache());
  ASSERT_TRUE(KnownSet::Load(m_file, known));
  const fs::path path = m_set.sounds[5].path;
  const fs::file_time_type time = fs::last_write_time(path);
  support::WriteSoundFile(path, support::SomeSamples(100, 20000, 77));
  fs::last_write_time(path, time + std::chrono::seconds(1));
  ExpectSame(KnownSet::Load(m_file, known)->Image(), LaidOut());
  m_set.Add(SlotKind::Impact, 50);
  fs::last_write_time(m_set.WriteConfiguration("Ember.lscfg"), time + std::chrono::seconds(1));
  const auto grown = KnownSet::Load(m_file, known);
  ASSERT_TRUE(grown);
  EXPECT_EQ(grown->sounds.size(), 10U);
}

TEST_F(KnownSetTest, ADamagedMemoryIsFoundOutAgain) {
  const SetImage laidOut = LaidOut();
  std::string bytes;
  {
    KnownSounds known(Cache());
    ASSERT_TRUE(KnownSet::Load(m_file, known));
    known.Keep();
    bytes = support::ReadBytes(Cache());
  }
  for (std::size_t length = 1; length < bytes.size(); length += 53) {
    support::WriteBytes(Cache(), bytes.substr(0, length) + "\nsums x\n");
    KnownSounds known(Cache());
    const auto set = KnownSet::Load(m_file, known);
    ASSERT_TRUE(set) << length;
    ExpectSame(set->Image(), laidOut);
  }
}

TEST_F(KnownSetTest, AMemoryThatNobodyCanHaveWrittenIsNotBelieved) {
  const SetImage laidOut = LaidOut();
  std::string bytes;
  {
    KnownSounds known(Cache());
    ASSERT_TRUE(KnownSet::Load(m_file, known));
    known.Keep();
    bytes = support::ReadBytes(Cache());
  }
  // A sound of 100 samples has 150 bytes; one of the lists has no place of that number.
  for (const auto& [from, to] : {std::pair<std::string, std::string>{" 150 ", " -150 "},
                                 {"holds motion 1 ", "holds motion 0 "},
                                 {"holds motion 1 ", "holds motion 13 "},
                                 {"holds motion 1 ", "holds blade 1 "},
                                 {"holds motion 1 ", "holds motion 1000000000000 "}}) {
    std::string bent = bytes;
    ASSERT_NE(bent.find(from), std::string::npos) << from;
    bent.replace(bent.find(from), from.size(), to);
    support::WriteBytes(Cache(), bent);
    KnownSounds known(Cache());
    const auto set = KnownSet::Load(m_file, known);
    ASSERT_TRUE(set) << to;
    ExpectSame(set->Image(), laidOut);
  }
}

TEST_F(KnownSetTest, TheMemoryDoesNotGrowWithoutEnd) {
  {
    KnownSounds known(Cache());
    ASSERT_TRUE(KnownSet::Load(m_file, known));
    known.Keep();
  }
  // Sounds that nobody asks for any more, and a set that is gone.
  std::string bytes = support::ReadBytes(Cache());
  for (std::size_t i = 0; i < KnownSounds::kMost; ++i)
    bytes += "sound 1 1 100 20000 /gone/" + std::to_string(i) + ".lsu\n";
  support::WriteBytes(Cache(), bytes + "set 1 1 /gone/set.lscfg\nholds boot 1 100 /gone/1.lsu\n");
  KnownSounds known(Cache());
  ASSERT_TRUE(KnownSet::Load(m_file, known, [this] { ++m_turns; }));
  EXPECT_EQ(m_turns, 0) << "the memory was not read";
  ASSERT_TRUE(known.SumsOf(m_set.sounds[0].path, 99));
  known.Keep();
  const std::string kept = support::ReadBytes(Cache());
  EXPECT_EQ(kept.find("/gone/"), kept.npos);
  EXPECT_NE(kept.find(m_set.sounds[8].path.string()), kept.npos);
  EXPECT_NE(kept.find(m_file.string()), kept.npos);
}

TEST_F(KnownSetTest, ASetOfWhichSoundsAreMissingIsNotKnown) {
  fs::remove(m_set.sounds[3].path);
  KnownSounds known(Cache());
  EXPECT_FALSE(KnownSet::Load(m_file, known));
  EXPECT_FALSE(KnownSet::Load(m_folder / "none.lscfg", known));
}

TEST_F(KnownSetTest, ASetThatNoDownloadTakesHasNoImage) {
  static_cast<void>(LaidOut());
  KnownSounds known({});
  m_configuration.SetVolume(SlotKind::Boot, 1, 103);
  EXPECT_FALSE(KnownSet::Of(m_configuration, {}, known).Image()) << "too loud";
  m_configuration.SetVolume(SlotKind::Boot, 1, 100);
  EXPECT_TRUE(KnownSet::Of(m_configuration, {}, known).Image());
  m_configuration.RemoveFile(1, SlotKind::Idle);
  EXPECT_FALSE(KnownSet::Of(m_configuration, {}, known).Image()) << "without an idle sound";
}

TEST(StreamSums, QuartersAreThoseOfTheStream) {
  const support::TemporaryFolder folder;
  LSU_SoundFile sound;
  ASSERT_TRUE(sound.ReadFile(support::WriteSoundFile(folder / "a.lsu", support::SomeSamples(101, 20000, 3))));
  ASSERT_TRUE(sound.Code());
  std::vector<std::uint8_t> bytes;
  ASSERT_TRUE(sound.GetBytes(bytes, 0, 153));
  const StreamSums sums = StreamSums::Of(sound);
  EXPECT_EQ(sums.length, 153);
  // 153 bytes in quarters: 38, 38, 38 and 39.
  const std::ptrdiff_t bounds[] = {0, 38, 76, 114, 153};
  for (std::size_t part = 0; part < 4; ++part)
    EXPECT_EQ(sums.parts.at(part),
              std::accumulate(bytes.begin() + bounds[part], bytes.begin() + bounds[part + 1], 0) % 65536)
        << part;
  EXPECT_EQ(sums.Whole(), std::accumulate(bytes.begin(), bytes.end(), 0) % 65536);
}

}  // namespace
}  // namespace kestrin::core::sound
