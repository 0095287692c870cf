// SPDX-License-Identifier: MIT
#include "simulator/BoardKeeper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "simulator/SimulatedAgent.h"
#include "simulator/SimulatorSupport.h"
#include "support/FakeClock.h"

namespace kestrin::simulator {
namespace {

using core::base::Failure;
using core::base::FailureKind;
using support::Ask;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// What a board has told its keeper, in words.
struct Told {
  std::vector<std::string> lines;
  std::string problem;
};

class RecordingKeeper final : public BoardKeeper {
 public:
  explicit RecordingKeeper(Told& told) : m_told(told) {}

  void KeepState(const BoardState& state) override {
    m_told.lines.push_back("state with " + std::to_string(state.resets) + " resets, first parameter " +
                           std::to_string(state.accelerometer[0]));
  }
  void KeepFlash(std::span<const std::uint8_t> flash, std::size_t address, std::size_t count) override {
    std::string line = "flash at " + std::to_string(address) + ":";
    for (const std::uint8_t byte : flash.subspan(address, count)) line += " " + std::to_string(byte);
    m_told.lines.push_back(line);
  }
  void KeepErased() override { m_told.lines.push_back("erased"); }
  [[nodiscard]] const std::string& Problem() const override { return m_told.problem; }

 private:
  Told& m_told;
};

class BoardKeeperTest : public ::testing::Test {
 protected:
  std::unique_ptr<VirtualBoard> Board() {
    return std::make_unique<VirtualBoard>(BoardState{}, VirtualBoard::Time{},
                                          std::vector<std::uint8_t>(VirtualBoard::FlashSize(0), 0xFF),
                                          std::make_unique<RecordingKeeper>(m_told));
  }

  Told m_told;
  support::FakeClock m_clock;
};

TEST_F(BoardKeeperTest, HearsOfEveryChangeAndOfNothingElse) {
  const auto board = Board();
  Ask(*board, {1});
  Ask(*board, {3});
  Ask(*board, {41});
  EXPECT_THAT(m_told.lines, IsEmpty());
  Ask(*board, {0});
  Ask(*board, {21, 0, 1, 0, 0, 0, 2, 0x0F, 0xF0});
  // A write clears bits only: 0x0F & 0x3C is 0x0C.
  Ask(*board, {21, 0, 1, 0, 0, 0, 1, 0x3C});
  Ask(*board, {42, 9, 8, 7, 6, 5, 4});
  Ask(*board, {10});
  EXPECT_THAT(m_told.lines, ElementsAre("state with 1 resets, first parameter 180", "flash at 256: 15 240",
                                        "flash at 256: 12", "state with 1 resets, first parameter 9", "erased",
                                        "state with 1 resets, first parameter 255"));
}

TEST_F(BoardKeeperTest, IsNotAskedForBytesBehindTheFlash) {
  const auto board = Board();
  Ask(*board, {21, 0x3F, 0xFF, 0xFF, 0, 0, 2, 0x42, 0x43});
  Ask(*board, {21, 0x40, 0x00, 0x00, 0, 0, 1, 0x42});
  EXPECT_THAT(m_told.lines, ElementsAre("flash at 4194303: 66"));
}

TEST_F(BoardKeeperTest, ItsProblemIsTheBoards) {
  const auto board = Board();
  EXPECT_EQ(board->Problem(), "");
  m_told.problem = "The disk is full.";
  EXPECT_EQ(board->Problem(), "The disk is full.");
}

TEST_F(BoardKeeperTest, AnAgentWaitsForABoardInUseAndForNoOtherFailure) {
  Failure failure{FailureKind::InUse, "somebody has it"};
  const SimulatedAgent::BoardSource source = [&]() -> core::base::Result<std::unique_ptr<VirtualBoard>> {
    if (failure.text.empty()) return Board();
    return failure;
  };
  const auto waiting = SimulatedAgent::Create({}, m_clock, {}, source);
  ASSERT_TRUE(waiting);
  SimulatedAgent& agent = **waiting;
  EXPECT_FALSE(agent.SearchAndOpen());
  EXPECT_EQ(agent.AccessProblem(), "somebody has it");

  failure = {FailureKind::NotValid, "it is damaged"};
  EXPECT_FALSE(agent.SearchAndOpen());
  EXPECT_EQ(agent.AccessProblem(), "it is damaged");
  const auto refused = SimulatedAgent::Create({}, m_clock, {}, source);
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.Why(), failure);

  failure.text.clear();
  EXPECT_TRUE(agent.SearchAndOpen());
  EXPECT_EQ(agent.AccessProblem(), "");
}

TEST_F(BoardKeeperTest, ABoardInMemoryTakesNoFolder) {
  BoardOptions options;
  options.dir = "somewhere";
  EXPECT_THROW(SimulatedAgent(options, m_clock), std::invalid_argument);
}

}  // namespace
}  // namespace kestrin::simulator
