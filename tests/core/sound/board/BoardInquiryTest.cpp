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
  // Every byte alone, nine sounds, and all bytes of the table at once.
  const std::size_t bytes = 30 + 5 * 6;
  ASSERT_EQ(m_board.asked.size(), bytes + 9 + 1);
  EXPECT_EQ(m_board.asked.back(), std::pair(std::size_t{12}, bytes));
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

TEST_F(BoardInquiryTest, ATableBeyondTheFlashIsNotBelieved) {
  const FlashSound last = Image().sounds.back();
  EXPECT_TRUE(m_inquiry.Read(last.address + last.length));
  const auto sounds = BoardInquiry(m_board.tls).Read(last.address + last.length - 1);
  ASSERT_FALSE(sounds);
  EXPECT_EQ(sounds.Why().kind, base::FailureKind::NotValid);
}

// Another program has the board too, and writes another set into it while this one reads.
TEST_F(BoardInquiryTest, ABoardThatIsWrittenToMeanwhileIsNotKnown) {
  support::CompleteSet other{140};
  LayOut(other.configuration);
  // Behind its 60 bytes: at the second of the nine sounds.
  m_board.bend = [&](std::size_t, std::size_t, unsigned sum) {
    if (m_board.asked.size() == 63) m_board.Hold(other.configuration);
    return sum;
  };
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
      {"always 65535", [](std::size_t, std::size_t, unsigned) { return 0xFFFFU; }},
      {"always 1", [](std::size_t, std::size_t, unsigned) { return 1U; }},
      {"the count that was asked for", [](std::size_t, std::size_t count, unsigned) { return unsigned(count); }},
      {"the address that was asked for", [](std::size_t address, std::size_t, unsigned) { return unsigned(address); }},
      {"one more", [](std::size_t, std::size_t, unsigned sum) { return sum + 1; }},
      {"one less", [](std::size_t, std::size_t, unsigned sum) { return sum - 1; }},
      {"bytes the other way round",
       [](std::size_t, std::size_t, unsigned sum) { return (sum & 0xFF) << 8 | (sum >> 8 & 0xFF); }},
      {"the last answer once more",
       [last = 0U](std::size_t, std::size_t, unsigned sum) mutable { return std::exchange(last, sum); }},
      {"something else each time",
       [this](std::size_t, std::size_t, unsigned) { return static_cast<unsigned>(m_board.asked.size() * 7 % 13); }},
      {"the byte behind",
       [this](std::size_t address, std::size_t count, unsigned sum) {
         return sum - m_board.flash[address] + m_board.flash[address + count];
       }},
      {"eight bits", [](std::size_t, std::size_t, unsigned sum) { return sum & 0xFF; }},
  };
  for (const Case& one : cases) {
    m_board.bend = one.bend;
    m_board.asked.clear();
    const auto sounds = BoardInquiry(m_board.tls).Read();
    ASSERT_FALSE(sounds) << one.why;
    EXPECT_EQ(sounds.Why().kind, base::FailureKind::NotValid) << one.why;
    m_board.bend = one.bend;
    m_board.asked.clear();
    const auto holds = BoardInquiry(m_board.tls).Holds(Image());
    ASSERT_TRUE(holds) << one.why;
    // Who asks for no single byte behind the counts cannot know how a board would answer that.
    EXPECT_EQ(*holds, std::string(one.why) == "another sum for all than for each") << one.why;
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
  ASSERT_EQ(motion.length, 150);
  // From the first quarter into the last, from the second into the third, from the third into the last.
  for (const auto& [one, other] : {std::pair<std::size_t, std::size_t>{5, 149}, {45, 85}, {85, 149}}) {
    ASSERT_NE(m_board.flash[first + one], m_board.flash[first + other]);
    Swap(first + one, first + other);
    const auto found = BoardInquiry(m_board.tls).VolumeOf(m_set.configuration.FileAt(SlotKind::Motion, 1), motion);
    ASSERT_TRUE(found);
    EXPECT_EQ(*found, std::nullopt) << one;
    Swap(first + one, first + other);
  }
}

TEST_F(BoardInquiryTest, ASoundOfAnotherLengthIsNotEvenAskedAbout) {
  const auto found = m_inquiry.VolumeOf(m_set.configuration.FileAt(SlotKind::Impact, 2), Image().sounds[0]);
  ASSERT_TRUE(found);
  EXPECT_EQ(*found, std::nullopt);
  EXPECT_TRUE(m_board.asked.empty());
}

}  // namespace
}  // namespace kestrin::core::sound
