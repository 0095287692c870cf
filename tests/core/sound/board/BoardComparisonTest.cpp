// SPDX-License-Identifier: MIT
#include "core/sound/board/BoardComparison.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/sound/board/BoardInquiry.h"
#include "support/FlashBoard.h"
#include "support/SoundSet.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;

/// A board that holds a complete set, which this computer may have changed since.
class BoardComparisonTest : public ::testing::Test {
 protected:
  BoardComparisonTest() {
    EXPECT_TRUE(m_set.configuration.AddFile(Write("second.lsu", 130, 21), SlotKind::Motion));
    EXPECT_TRUE(m_set.configuration.AddFile(Write("third.lsu", 130, 22), SlotKind::Motion));
    EXPECT_TRUE(m_set.configuration.MakeMemoryMap({}));
    m_board.Hold(m_set.configuration);
    auto sounds = BoardInquiry(m_board.tls).Read();
    EXPECT_TRUE(sounds);
    m_onBoard = *sounds;
  }

  [[nodiscard]] fs::path Write(const std::string& name, std::size_t samples, unsigned seed) const {
    return support::WriteSoundFile(m_folder / name, support::SomeSamples(samples, 20000, seed));
  }
  [[nodiscard]] LSU_Configuration& Set() { return m_set.configuration; }
  [[nodiscard]] KnownSet Here() { return KnownSet::Of(Set(), {}, m_known); }
  /// What comes out when the board confirms what it is asked about.
  [[nodiscard]] ComparedPlaces Compare(const std::vector<KnownSet>& sets = {}) {
    const KnownSet here = Here();
    const auto guesses = BoardComparison::Guess(here, sets, m_onBoard, m_known);
    BoardInquiry inquiry(m_board.tls);
    std::vector<std::optional<SoundGuess>> found(m_onBoard.size());
    for (std::size_t i = 0; i < guesses.size(); ++i)
      for (const SoundGuess& guess : guesses[i])
        if (!found[i] && (!guess.toConfirm || *inquiry.Matches(m_onBoard[i], *guess.toConfirm))) found[i] = guess;
    return BoardComparison::WithBoard(here, m_onBoard, found);
  }
  [[nodiscard]] static const ComparedPlace& At(const ComparedPlaces& places, SlotKind kind, int position = 1) {
    return *std::ranges::find(places, SoundPlace{kind, position}, &ComparedPlace::place);
  }

  support::CompleteSet m_set{100};
  support::TemporaryFolder m_folder;
  support::FlashBoard m_board;
  KnownSounds m_known{{}};
  std::vector<FlashSound> m_onBoard;
};

TEST_F(BoardComparisonTest, TheSetThatTheBoardHoldsIsTheSameEverywhere) {
  const ComparedPlaces places = Compare();
  EXPECT_EQ(places.size(), m_onBoard.size());
  for (const ComparedPlace& place : places) {
    EXPECT_EQ(place.differs, std::nullopt);
    EXPECT_EQ(place.here, place.there);
  }
  EXPECT_EQ(At(places, SlotKind::Motion, 2).there->path, m_folder / "second.lsu");
  EXPECT_EQ(At(places, SlotKind::Motion, 2).there->samples, 130);
  EXPECT_TRUE(BoardComparison::DifferencesIn(places).empty());
}

TEST_F(BoardComparisonTest, AnotherVolumeIsFoundOut) {
  Set().SetVolume(SlotKind::Motion, 2, 41);
  const ComparedPlaces places = Compare();
  const ComparedPlace& motion = At(places, SlotKind::Motion, 2);
  EXPECT_EQ(motion.differs, Differs::Volume);
  EXPECT_EQ(motion.here->volume, 41);
  EXPECT_EQ(motion.there->volume, 100);
  EXPECT_EQ(BoardComparison::DifferencesIn(places),
            (std::vector<SetDifference>{{{SlotKind::Motion, 2}, Differs::Volume}}));
}

TEST_F(BoardComparisonTest, ASoundFromElsewhereInTheSetHasItsName) {
  Set().MoveFile(SlotKind::Motion, 2, 3);
  const ComparedPlaces places = Compare();
  EXPECT_EQ(At(places, SlotKind::Motion, 2).differs, Differs::Sound);
  EXPECT_EQ(At(places, SlotKind::Motion, 2).there->path, m_folder / "second.lsu");
  EXPECT_EQ(At(places, SlotKind::Motion, 3).there->path, m_folder / "third.lsu");
}

TEST_F(BoardComparisonTest, ASoundOfAnotherSetHasItsNameAtItsVolume) {
  Set().RemoveFile(2, SlotKind::Motion);
  KnownSet other{m_folder / "other.lscfg", "other", {}};
  other.sounds.push_back({{SlotKind::Impact, 1}, m_folder / "second.lsu", 55, 195, 4711});
  const ComparedPlaces places = Compare({other});
  EXPECT_EQ(At(places, SlotKind::Motion, 2).differs, Differs::Sound);
  EXPECT_EQ(At(places, SlotKind::Motion, 2).there, (ComparedSound{m_folder / "second.lsu", 100, 130}));
  EXPECT_EQ(At(places, SlotKind::Motion, 3).differs, Differs::OnlyInSecond);
  EXPECT_EQ(At(places, SlotKind::Motion, 3).here, std::nullopt);
}

// Both would be right; the person would be told to take over what is there already.
TEST_F(BoardComparisonTest, TheSetsOwnSoundComesBeforeTheCopyOfAnotherSet) {
  fs::copy_file(m_folder / "second.lsu", m_folder / "copy.lsu");
  const FlashSound motion = *std::ranges::find(m_onBoard, SoundPlace{SlotKind::Motion, 2}, &FlashSound::place);
  KnownSet other{m_folder / "other.lscfg", "other", {}};
  other.sounds.push_back({{SlotKind::Impact, 1}, m_folder / "copy.lsu", 100, motion.length, motion.checksum});
  Set().SetVolume(SlotKind::Motion, 2, 41);
  const ComparedPlaces places = Compare({other});
  EXPECT_EQ(At(places, SlotKind::Motion, 2).differs, Differs::Volume);
  EXPECT_EQ(At(places, SlotKind::Motion, 2).there, (ComparedSound{m_folder / "second.lsu", 100, 130}));
}

TEST_F(BoardComparisonTest, ASoundThatNobodyKnowsHasALengthAlone) {
  Set().RemoveFile(3, SlotKind::Motion);
  fs::remove(m_folder / "third.lsu");
  const ComparedPlaces places = Compare();
  EXPECT_EQ(At(places, SlotKind::Motion, 3).there, (ComparedSound{{}, {}, 130}));
}

// A set that the board has got before names files as they were then.
TEST_F(BoardComparisonTest, AFileThatHasChangedSinceIsNotWhatTheBoardHolds) {
  KnownSet before = Here();
  Set().RemoveFile(3, SlotKind::Motion);
  const fs::path third = m_folder / "third.lsu";
  const ComparedPlace asBefore = At(Compare({before}), SlotKind::Motion, 3);
  EXPECT_EQ(asBefore.there, (ComparedSound{third, 100, 130}));
  const fs::file_time_type time = fs::last_write_time(third);
  support::WriteSoundFile(third, support::SomeSamples(130, 20000, 99));
  fs::last_write_time(third, time + std::chrono::seconds(1));
  EXPECT_EQ(At(Compare({before}), SlotKind::Motion, 3).there, (ComparedSound{{}, {}, 130}));
  fs::remove(third);
  EXPECT_EQ(At(Compare({before}), SlotKind::Motion, 3).there, (ComparedSound{{}, {}, 130}));
}

// Bytes in another order have the same sum at the same length.
TEST_F(BoardComparisonTest, WhatTheBoardDoesNotConfirmIsNotBelieved) {
  const FlashSound motion = *std::ranges::find(m_onBoard, SoundPlace{SlotKind::Motion, 2}, &FlashSound::place);
  const auto first = static_cast<std::size_t>(motion.address);
  std::swap(m_board.flash[first + 5], m_board.flash[first + static_cast<std::size_t>(motion.length) - 1]);
  ASSERT_NE(m_board.flash[first + 5], m_board.flash[first + static_cast<std::size_t>(motion.length) - 1]);
  Set().SetVolume(SlotKind::Motion, 2, 41);
  const ComparedPlaces places = Compare();
  EXPECT_EQ(At(places, SlotKind::Motion, 2).differs, Differs::Sound);
  EXPECT_EQ(At(places, SlotKind::Motion, 2).there->path, fs::path());
}

TEST_F(BoardComparisonTest, ASoundThatOnlyTheSetHasIsOnlyHere) {
  ASSERT_TRUE(Set().AddFile(Write("fourth.lsu", 80, 23), SlotKind::Motion));
  const ComparedPlaces places = Compare();
  EXPECT_EQ(At(places, SlotKind::Motion, 4).differs, Differs::OnlyInFirst);
  EXPECT_EQ(At(places, SlotKind::Motion, 4).there, std::nullopt);
}

TEST_F(BoardComparisonTest, TwoSetsAreComparedByTheirSamples) {
  LSU_Configuration other = Set();
  other.SetVolume(SlotKind::Boot, 1, 12);
  other.RemoveFile(3, SlotKind::Motion);
  const ComparedPlaces places = BoardComparison::WithSet(Set(), other);
  EXPECT_EQ(places.size(), m_onBoard.size());
  EXPECT_EQ(At(places, SlotKind::Boot).differs, Differs::Volume);
  EXPECT_EQ(At(places, SlotKind::Boot).there->volume, 12);
  EXPECT_EQ(At(places, SlotKind::Motion, 3).differs, Differs::OnlyInFirst);
  EXPECT_EQ(BoardComparison::DifferencesIn(places).size(), 2U);
}

}  // namespace
}  // namespace kestrin::core::sound
