// SPDX-License-Identifier: MIT
#include "core/sound/Verification.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "support/ScriptedAgent.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

using support::ScriptedAgent;

constexpr std::uint8_t kChecksumQuestion = 30;

/// A sound in flash and a board that gives one sum for every range.
class VerificationTest : public ::testing::Test {
 protected:
  VerificationTest() {
    m_agent.Open(ScriptedAgent::BoardInterface(1));
    EXPECT_EQ(m_board.BindVars(m_agent), 0);
    m_agent.onWrite = [this](const std::vector<std::uint8_t>& report) {
      EXPECT_EQ(report[0], kChecksumQuestion);
      if (m_sum) m_agent.Answers({*m_sum});
    };
  }

  /// One sample that is not 0, the second of a pair: at 100 % it becomes 999, which is 249 times 4 and 3.
  void Code(std::int16_t volume) {
    std::vector<std::int16_t> samples(50, 0);
    samples[2] = 1234;
    ASSERT_TRUE(m_file.ReadFile(support::WriteSoundFile(m_folder / "a.lsu", samples)));
    m_file.SetVolume(volume);
    ASSERT_TRUE(m_file.Code());
    m_file.SetStartAddress(0x012345);
  }

  support::TemporaryFolder m_folder;
  ScriptedAgent m_agent;
  device::TLS m_board;
  LSU_SoundFile m_file;
  /// What the board answers; nothing for silence.
  std::optional<std::array<std::uint8_t, 2>> m_sum;
};

TEST_F(VerificationTest, ASumIsExpectedAndTheBoardsIsTakenBigEnd) {
  Code(100);
  m_sum = {0, 252};
  const ChecksumComparison equal = Verification::CheckFile(m_board, m_file);
  EXPECT_EQ(equal.expected, 252);
  EXPECT_EQ(equal.board, 252);
  EXPECT_TRUE(equal.Ok());
  m_sum = {252, 0};
  const ChecksumComparison other = Verification::CheckFile(m_board, m_file);
  EXPECT_EQ(other.board, 252 * 256);
  EXPECT_FALSE(other.Ok());
  // Asked for were 75 bytes from 0x012345 on.
  ASSERT_EQ(m_agent.written.size(), 2U);
  const std::vector<std::uint8_t> question(m_agent.written[0].begin(), m_agent.written[0].begin() + 7);
  EXPECT_EQ(question, (std::vector<std::uint8_t>{kChecksumQuestion, 0x01, 0x23, 0x45, 0, 0, 75}));
}

TEST_F(VerificationTest, ASumOfZeroIsASumLikeAnyOther) {
  // At volume 0 every byte of the stream is 0.
  Code(0);
  m_sum = {0, 0};
  const ChecksumComparison equal = Verification::CheckFile(m_board, m_file);
  EXPECT_EQ(equal.expected, 0);
  EXPECT_EQ(equal.board, 0);
  EXPECT_TRUE(equal.Ok());
  m_sum = {0, 1};
  EXPECT_FALSE(Verification::CheckFile(m_board, m_file).Ok());
}

TEST_F(VerificationTest, NoAnswerIsNoSumOfZero) {
  Code(0);
  const ChecksumComparison none = Verification::CheckFile(m_board, m_file);
  EXPECT_EQ(none.expected, 0);
  EXPECT_FALSE(none.board.has_value());
  EXPECT_FALSE(none.Ok());
}

}  // namespace
}  // namespace kestrin::core::sound
