// SPDX-License-Identifier: MIT
// Boards that are moved by a script, in memory and in a folder.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/base/PathText.h"
#include "simulator/SimulatorSupport.h"
#include "simulator/store/StoredBoard.h"
#include "support/FakeClock.h"
#include "support/TestFiles.h"

namespace kestrin::simulator::store {
namespace {

using support::Answers;
using support::Ask;
using ::testing::HasSubstr;

class MovedBoard : public ::testing::Test {
 protected:
  [[nodiscard]] core::base::Result<std::unique_ptr<VirtualBoard>> Open(const std::string& script,
                                                                       const std::string& more = "") const {
    const auto file = support::WriteBytes(m_folder / "moves.txt", script);
    return OpenBoard(*BoardOptions::Parse("motion=" + core::base::TextOf(file) + more));
  }

  support::TemporaryFolder m_folder;
};

TEST_F(MovedBoard, FeelsTheScriptStepByStepFromTheFirstQuestionOn) {
  for (const std::string& more : {std::string(), ",dir=" + core::base::TextOf(m_folder / "board")}) {
    const auto board = Open("at 1 2 3 4\nrest 0.04\nat -1 0 0\n", more);
    ASSERT_TRUE(board) << board.Text();
    EXPECT_EQ(Ask(**board, {3}), (Answers{{0, 0}})) << "other questions do not move it";
    EXPECT_EQ(Ask(**board, {40}), (Answers{{1, 2}, {3, 4}}));
    EXPECT_EQ(Ask(**board, {40}), (Answers{{33, 0}, {0, 4}}));
  }
}

TEST_F(MovedBoard, AScriptThatIsWrongIsNamedWithItsLine) {
  const auto board = Open("rest 1\nfly 3\n");
  ASSERT_FALSE(board);
  EXPECT_THAT(board.Text(), HasSubstr("moves.txt, line 2: \"fly\" is no movement."));
  support::FakeClock clock;
  EXPECT_FALSE(CreateAgent(*BoardOptions::Parse("motion=" + core::base::TextOf(m_folder / "moves.txt")), clock));
}

TEST_F(MovedBoard, AScriptThatIsNotThereIsNamed) {
  const auto board = OpenBoard(*BoardOptions::Parse("motion=" + core::base::TextOf(m_folder / "none.txt")));
  ASSERT_FALSE(board);
  EXPECT_THAT(board.Text(), HasSubstr("none.txt"));
}

TEST_F(MovedBoard, AProgramCanMoveItItself) {
  BoardOptions options;
  SensorValues felt{5, 0, 0, 0};
  options.sensor = [&felt] { return felt; };
  const auto board = OpenBoard(options);
  ASSERT_TRUE(board);
  EXPECT_EQ(Ask(**board, {40}), (Answers{{5, 0}, {0, 0}}));
  felt.x = 6;
  EXPECT_EQ(Ask(**board, {40}), (Answers{{6, 0}, {0, 0}}));
  support::FakeClock clock;
  SimulatedAgent agent(options, clock);
  EXPECT_EQ(Ask(agent.Board(), {40}), (Answers{{6, 0}, {0, 0}}));
}

}  // namespace
}  // namespace kestrin::simulator::store
