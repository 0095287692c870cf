// SPDX-License-Identifier: MIT
#include "core/sound/board/BoardInquiry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "support/FlashBoard.h"
#include "support/SoundSet.h"

namespace kestrin::core::sound {
namespace {

class BoardInquiryTest : public ::testing::Test {
 protected:
  BoardInquiryTest() {
    m_set.Add(SlotKind::Motion, 130);
    m_set.Add(SlotKind::Impact, 161);
    LayOut(m_set.configuration);
    m_board.Hold(m_set.configuration);
  }

  static void LayOut(LSU_Configuration& set) { ASSERT_TRUE(set.MakeMemoryMap({})); }
  [[nodiscard]] SetImage Image() { return SetImage::Of(m_set.configuration, "a.lscfg"); }
  /// Two bytes of the flash change places.
  void Swap(std::size_t one, std::size_t other) { std::swap(m_board.flash[one], m_board.flash[other]); }

  support::CompleteSet m_set{100};
  support::FlashBoard m_board;
  BoardInquiry m_inquiry{m_board.tls};
};

TEST_F(BoardInquiryTest, TheSetThatTheBoardHoldsIsTold) {
  const auto holds = m_inquiry.Holds(Image());
  ASSERT_TRUE(holds) << holds.Text();
  EXPECT_TRUE(*holds);
  // The table, its three counts, its checksum, nine sounds.
  EXPECT_EQ(m_board.asked.size(), 5U + 9U);
}

TEST_F(BoardInquiryTest, EveryPartOfTheSetCounts) {
  std::vector<std::size_t> addresses = {12, 16, 12 + 4 + 9 * 6, 12 + 4 + 9 * 6 + 1};
  for (const FlashSound& sound : Image().sounds) addresses.push_back(static_cast<std::size_t>(sound.address) + 4);
  for (const std::size_t address : addresses) {
    ++m_board.flash[address];
    BoardInquiry inquiry(m_board.tls);
    const auto holds = inquiry.Holds(Image());
    ASSERT_TRUE(holds) << address;
    EXPECT_FALSE(*holds) << address;
    --m_board.flash[address];
  }
}

// The sum of the table stays the same then, and so do all sounds: yet what hums as a swing would hit as a clash.
TEST_F(BoardInquiryTest, CountsThatHaveChangedPlacesAreAnotherSet) {
  m_set.Add(SlotKind::Impact, 99);
  LayOut(m_set.configuration);
  m_board.Hold(m_set.configuration);
  ASSERT_EQ(m_board.flash[12], 2);
  ASSERT_EQ(m_board.flash[13], 3);
  Swap(12, 13);
  BoardInquiry inquiry(m_board.tls);
  const auto holds = inquiry.Holds(Image());
  ASSERT_TRUE(holds);
  EXPECT_FALSE(*holds);
}

TEST_F(BoardInquiryTest, TheTableIsReadWithTheSumOfEverySound) {
  const auto sounds = m_inquiry.Read();
  ASSERT_TRUE(sounds) << sounds.Text();
  EXPECT_EQ(*sounds, Image().sounds);
  // Every byte alone, all of them once more at once, and nine sounds.
  const std::size_t bytes = 30 + 5 * 6;
  EXPECT_EQ(m_board.asked.size(), bytes + 1 + 9);
  EXPECT_EQ(std::set(m_board.asked.begin(), m_board.asked.end()).size(), m_board.asked.size()) << "asked twice";
}

TEST_F(BoardInquiryTest, NothingIsAskedTwice) {
  ASSERT_TRUE(m_inquiry.Holds(Image()));
  ASSERT_TRUE(m_inquiry.Read());
  ASSERT_TRUE(m_inquiry.Holds(Image()));
  EXPECT_EQ(std::set(m_board.asked.begin(), m_board.asked.end()).size(), m_board.asked.size());
}

TEST_F(BoardInquiryTest, AnErasedBoardHoldsNothing) {
  m_board.flash.clear();
  const auto sounds = m_inquiry.Read();
  ASSERT_TRUE(sounds) << sounds.Text();
  EXPECT_TRUE(sounds->empty());
}

TEST_F(BoardInquiryTest, ABoardThatIsErasedInPartOnlyIsNotKnown) {
  std::fill(m_board.flash.begin() + 12, m_board.flash.begin() + 16, 0xFF);
  const auto sounds = m_inquiry.Read();
  ASSERT_FALSE(sounds);
  EXPECT_EQ(sounds.Why().kind, base::FailureKind::NotValid);
}

TEST_F(BoardInquiryTest, ABoardThatAnswersOtherwiseIsNotKnown) {
  struct Case {
    const char* why;
    std::function<unsigned(std::size_t, std::size_t, unsigned)> bend;
  };
  const std::vector<Case> cases = {
      {"always 0", [](std::size_t, std::size_t, unsigned) { return 0U; }},
      {"always 10, 10", [](std::size_t, std::size_t, unsigned) { return 0x0A0AU; }},
      {"always 255", [](std::size_t, std::size_t, unsigned) { return 0xFFU; }},
      {"more than a byte for a byte",
       [](std::size_t, std::size_t count, unsigned sum) { return count == 1 ? sum + 256 : sum; }},
      {"one byte more than asked for",
       [this](std::size_t address, std::size_t count, unsigned sum) { return sum + m_board.flash[address + count]; }},
      {"another sum for all than for each",
       [](std::size_t, std::size_t count, unsigned sum) { return count == 60 ? sum + 1 : sum; }},
  };
  for (const Case& one : cases) {
    m_board.bend = one.bend;
    BoardInquiry inquiry(m_board.tls);
    const auto sounds = inquiry.Read();
    ASSERT_FALSE(sounds) << one.why;
    EXPECT_EQ(sounds.Why().kind, base::FailureKind::NotValid) << one.why;
  }
}

TEST_F(BoardInquiryTest, SilenceIsNoSum) {
  for (const std::size_t question : {1U, 2U, 61U, 62U, 70U}) {
    m_board.asked.clear();
    m_board.silentFrom = question;
    BoardInquiry inquiry(m_board.tls);
    const auto sounds = inquiry.Read();
    ASSERT_FALSE(sounds) << question;
    EXPECT_EQ(sounds.Why().kind, base::FailureKind::NoAnswer) << question;
    EXPECT_EQ(m_board.asked.size(), question) << "asked on after silence";
  }
}

TEST_F(BoardInquiryTest, ItStopsBeforeTheNextQuestion) {
  int questions = 0;
  BoardInquiry inquiry(m_board.tls, [&questions] { return ++questions <= 7; });
  const auto sounds = inquiry.Read();
  ASSERT_FALSE(sounds);
  EXPECT_EQ(sounds.Why().kind, base::FailureKind::Cancelled);
  EXPECT_EQ(m_board.asked.size(), 7U);
}

TEST_F(BoardInquiryTest, TheVolumeOfASoundIsFound) {
  LSU_SoundFile& motion = m_set.configuration.FileAt(SlotKind::Motion, 1);
  for (const std::int16_t volume : std::vector<std::int16_t>{1, 37, 100, 102}) {
    motion.SetVolume(volume);
    LayOut(m_set.configuration);
    m_board.Hold(m_set.configuration);
    motion.SetVolume(64);
    BoardInquiry inquiry(m_board.tls);
    const auto sounds = inquiry.Read();
    ASSERT_TRUE(sounds);
    const auto found = inquiry.VolumeOf(motion, (*sounds)[4]);
    ASSERT_TRUE(found);
    EXPECT_EQ(*found, volume);
  }
}

// Bytes in another order have the same sum; a sound of the same length and the same sum is still another sound.
TEST_F(BoardInquiryTest, AnotherSoundOfTheSameSumIsNotTakenForIt) {
  const FlashSound motion = Image().sounds[4];
  const auto first = static_cast<std::size_t>(motion.address);
  // From the first quarter into the last.
  Swap(first + 5, first + static_cast<std::size_t>(motion.length) - 1);
  ASSERT_NE(m_board.flash[first + 5], m_board.flash[first + static_cast<std::size_t>(motion.length) - 1]);
  const auto found = m_inquiry.VolumeOf(m_set.configuration.FileAt(SlotKind::Motion, 1), motion);
  ASSERT_TRUE(found);
  EXPECT_EQ(*found, std::nullopt);
}

TEST_F(BoardInquiryTest, ASoundOfAnotherLengthIsNotEvenAskedAbout) {
  const auto found = m_inquiry.VolumeOf(m_set.configuration.FileAt(SlotKind::Impact, 2), Image().sounds[0]);
  ASSERT_TRUE(found);
  EXPECT_EQ(*found, std::nullopt);
  EXPECT_TRUE(m_board.asked.empty());
}

}  // namespace
}  // namespace kestrin::core::sound
