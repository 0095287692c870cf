// SPDX-License-Identifier: MIT
#include "simulator/VirtualBoard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "SimulatorSupport.h"

namespace kestrin::simulator {
namespace {

using support::AllAnswers;
using support::Answers;
using support::Ask;
using support::CommandReport;
using support::kDone;
using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::uint8_t> FlashBytes(const VirtualBoard& board, std::size_t address, std::size_t count) {
  const auto bytes = board.Flash().subspan(address, count);
  return {bytes.begin(), bytes.end()};
}

TEST(VirtualBoard, AnswersEveryQuestionInTheFactoryStateByteByByte) {
  struct Row {
    const char* command;
    int code;
    Answers answers;
  };
  const Row rows[] = {
      {"GetSN", 1, {{0x4B, 0x53}, {0x54, 0x01}}},
      {"GetID", 3, {{0, 0}}},
      {"GetACC", 40, {{0, 0}, {21, 0}}},
      {"GetAccParam", 41, {{180, 2}, {10, 50}, {125, 13}}},
      {"GetLEDParam", 50, {{0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}}},
      {"GetLEDConfig", 60, {{0, 1}, {0, 37}, {0, 100}}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.command);
    VirtualBoard board;
    EXPECT_EQ(Ask(board, {row.code}), row.answers);
    EXPECT_EQ(board.State(), BoardState{});
  }
}

TEST(VirtualBoard, AnswersTheFactorysPulses) {
  VirtualBoard board;
  // 1000 = 0x03E8, 500 = 0x01F4.
  EXPECT_EQ(Ask(board, {52, 0}),
            (Answers{{0, 0}, {0, 0}, {0, 0}, {0, 0}, {0x03, 0xE8}, {0x01, 0xF4}, {0x03, 0xE8}, {0x01, 0xF4}, {0, 0}}));
  EXPECT_EQ(Ask(board, {52, 1}), (Answers{{0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 40}, {0, 0}, {0, 40}, {0, 3}}));
}

TEST(VirtualBoard, TellsIdentityAndSerialNumberHighByteFirst) {
  BoardState state;
  state.id = 0x1025;
  state.serial = 0x0A0B0CFE;
  VirtualBoard board(state);
  EXPECT_EQ(Ask(board, {3}), (Answers{{0x10, 0x25}}));
  EXPECT_EQ(Ask(board, {1}), (Answers{{0x0A, 0x0B}, {0x0C, 0xFE}}));
}

TEST(VirtualBoard, HasFlashAccordingToItsModel) {
  struct Row {
    std::uint16_t id;
    std::size_t size;
  };
  for (const Row row : {Row{0, 4194304}, Row{32, 4194304}, Row{64, 8388608}, Row{65535, 4194304}, Row{4096, 4194304},
                        Row{100, 4194304}}) {
    BoardState state;
    state.id = row.id;
    const VirtualBoard board(state);
    EXPECT_EQ(board.Flash().size(), row.size) << row.id;
    EXPECT_TRUE(std::all_of(board.Flash().begin(), board.Flash().end(), [](std::uint8_t b) { return b == 0xFF; }));
  }
}

TEST(VirtualBoard, CountsResetAndByeWithoutAnAnswer) {
  VirtualBoard board;
  EXPECT_THAT(Ask(board, {0}), IsEmpty());
  EXPECT_THAT(Ask(board, {0}), IsEmpty());
  EXPECT_THAT(Ask(board, {7}), IsEmpty());
  EXPECT_EQ(board.State().resets, 2U);
  EXPECT_EQ(board.State().byes, 1U);
}

TEST(VirtualBoard, KeepsTheSixDetectionParametersAsTheyAreSent) {
  VirtualBoard board;
  EXPECT_EQ(Ask(board, {42, 1, 2, 3, 4, 255, 0}), kDone);
  EXPECT_THAT(board.State().accelerometer, ElementsAre(1, 2, 3, 4, 255, 0));
  EXPECT_EQ(Ask(board, {41}), (Answers{{1, 2}, {3, 4}, {255, 0}}));
}

TEST(VirtualBoard, KeepsNineLedParameters) {
  VirtualBoard board;
  EXPECT_EQ(Ask(board, {51, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18}), kDone);
  EXPECT_THAT(board.State().ledParam,
              ElementsAre(0x0102, 0x0304, 0x0506, 0x0708, 0x090A, 0x0B0C, 0x0D0E, 0x0F10, 0x1112));
  EXPECT_EQ(Ask(board, {50}),
            (Answers{{1, 2}, {3, 4}, {5, 6}, {7, 8}, {9, 10}, {11, 12}, {13, 14}, {15, 16}, {17, 18}}));
}

TEST(VirtualBoard, KeepsTheLedConfiguration) {
  VirtualBoard board;
  EXPECT_EQ(Ask(board, {61, 0x01, 0x02, 0x00, 0x35, 0x00, 0x78}), kDone);
  EXPECT_EQ(board.State().ledConfig, (LedConfigState{0x0102, 53, 120}));
  EXPECT_EQ(Ask(board, {60}), (Answers{{0x01, 0x02}, {0x00, 0x35}, {0x00, 0x78}}));
}

TEST(VirtualBoard, KeepsPulsesAndAnswersHighLevelsBeforeLowOnes) {
  VirtualBoard board;
  // Code, set, then for each channel low, high, on low, off low, on high, off high; then the five times.
  const std::vector<int> command{53,  1,                                                   //
                                 1,   2,  0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0x17, 0x18,  //
                                 3,   4,  0x21, 0x22, 0x23, 0x24, 0x25, 0x26, 0x27, 0x28,  //
                                 5,   6,  0x31, 0x32, 0x33, 0x34, 0x35, 0x36, 0x37, 0x38,  //
                                 255, 0,  0x41, 0x42, 0x43, 0x44, 0x45, 0x46, 0x47, 0x48,  //
                                 0,   10, 0x01, 0xF4, 0,    30,   0xEA, 0x60, 0,    7};
  EXPECT_EQ(Ask(board, command), kDone);

  const PulseState expected{{1, 3, 5, 255},
                            {2, 4, 6, 0},
                            {{{0x1112, 0x1314, 0x1516, 0x1718},
                              {0x2122, 0x2324, 0x2526, 0x2728},
                              {0x3132, 0x3334, 0x3536, 0x3738},
                              {0x4142, 0x4344, 0x4546, 0x4748}}},
                            10,
                            500,
                            30,
                            60000,
                            7};
  EXPECT_EQ(board.State().ledPulses[1], expected);
  EXPECT_EQ(board.State().ledPulses[0], kFactoryIdlePulse);
  EXPECT_EQ(Ask(board, {52, 1}),
            (Answers{{2, 1}, {4, 3}, {6, 5}, {0, 255}, {0, 10}, {0x01, 0xF4}, {0, 30}, {0xEA, 0x60}, {0, 7}}));
}

TEST(VirtualBoard, DoesNotKnowAThirdPulse) {
  VirtualBoard board;
  EXPECT_THAT(Ask(board, {52, 2}), IsEmpty());
  EXPECT_THAT(Ask(board, {53, 2, 1}), IsEmpty());
  EXPECT_EQ(board.State(), BoardState{});
}

TEST(VirtualBoard, RemembersTheLastPulseStarted) {
  VirtualBoard board;
  EXPECT_FALSE(board.State().pulseStarted.has_value());
  EXPECT_EQ(Ask(board, {54, 1}), kDone);
  EXPECT_EQ(board.State().pulseStarted, 1);
  EXPECT_EQ(Ask(board, {54, 0}), kDone);
  EXPECT_EQ(board.State().pulseStarted, 0);
}

TEST(VirtualBoard, SaysNothingToUnknownCodes) {
  const std::vector<int> known{0, 1, 3, 7, 10, 20, 21, 30, 40, 41, 42, 50, 51, 52, 53, 54, 60, 61};
  VirtualBoard board;
  for (int code = 0; code < 256; ++code) {
    if (std::find(known.begin(), known.end(), code) != known.end()) continue;
    EXPECT_THAT(Ask(board, {code}), IsEmpty()) << code;
  }
  EXPECT_EQ(board.State(), BoardState{});
}

TEST(VirtualBoard, TakesReportsWithAndWithoutALeadingReportIdAndNoOthers) {
  VirtualBoard board;
  std::vector<std::uint8_t> report = CommandReport({3});
  board.Receive(report, 0s);
  EXPECT_EQ(AllAnswers(board), (Answers{{0, 0}}));

  report.insert(report.begin(), 0);
  board.Receive(report, 0s);
  EXPECT_EQ(AllAnswers(board), (Answers{{0, 0}}));

  report[0] = 1;
  board.Receive(report, 0s);
  EXPECT_THAT(AllAnswers(board), IsEmpty()) << "a report id that the board does not have";

  for (const std::size_t length :
       {std::size_t{0}, std::size_t{1}, std::size_t{64}, std::size_t{1027}, std::size_t{1030}}) {
    const std::vector<std::uint8_t> wrong(length, 0);
    board.Receive(wrong, 0s);
    EXPECT_THAT(AllAnswers(board), IsEmpty()) << length;
  }
  EXPECT_EQ(board.State().resets, 0U) << "reports of a wrong length must not count as Reset";
}

TEST(VirtualBoard, Write1kStoresAllItsBytesAndAnswersTheirSum) {
  VirtualBoard board;
  std::vector<std::uint8_t> report = CommandReport({20, 0x01, 0x02, 0x03});
  for (std::size_t i = 0; i < 1024; ++i) report[4 + i] = static_cast<std::uint8_t>(i);
  board.Receive(report, 0s);
  // Four times 0 + 1 + ... + 255 = 4 * 32640 = 130560 = 65536 + 0xFE00.
  EXPECT_EQ(AllAnswers(board), (Answers{{0xFE, 0x00}}));
  std::vector<std::uint8_t> expected(1024);
  std::iota(expected.begin(), expected.end(), std::uint8_t{0});
  EXPECT_EQ(FlashBytes(board, 0x010203, 1024), expected);
  EXPECT_EQ(board.Flash()[0x010202], 0xFF);
  EXPECT_EQ(board.Flash()[0x010203 + 1024], 0xFF);
}

TEST(VirtualBoard, Write1kSumsModulo65536) {
  VirtualBoard board;
  std::vector<std::uint8_t> report(1028, 0xFF);
  report[0] = 20;
  report[1] = report[2] = report[3] = 0;
  board.Receive(report, 0s);
  // 1024 * 255 = 261120 = 3 * 65536 + 0xFC00.
  EXPECT_EQ(AllAnswers(board), (Answers{{0xFC, 0x00}}));
}

TEST(VirtualBoard, WriteLessStoresAndSumsOnlyItsCount) {
  VirtualBoard board;
  EXPECT_EQ(Ask(board, {21, 0, 0, 12, 0, 0, 3, 0x80, 0x81, 0x02}), (Answers{{0x01, 0x03}}));
  EXPECT_EQ(FlashBytes(board, 11, 5), (std::vector<std::uint8_t>{0xFF, 0x80, 0x81, 0x02, 0xFF}));
}

TEST(VirtualBoard, WriteLessOfNothingAnswersZero) {
  VirtualBoard board;
  EXPECT_EQ(Ask(board, {21, 0, 0, 0, 0, 0, 0, 1, 2}), (Answers{{0, 0}}));
  EXPECT_EQ(board.Flash()[0], 0xFF);
}

TEST(VirtualBoard, WriteLessTakesNoMoreThanTheReportCarries) {
  for (const int lowByte : {0xFD, 0xFE, 0xFF}) {  // 1021, 1022 and 1023 bytes
    VirtualBoard board;
    std::vector<std::uint8_t> report(1028, 1);
    const std::uint8_t head[] = {21, 0, 0, 0, 0, 3, static_cast<std::uint8_t>(lowByte)};
    std::copy(std::begin(head), std::end(head), report.begin());
    board.Receive(report, 0s);
    EXPECT_EQ(AllAnswers(board), (Answers{{0x03, 0xFD}})) << lowByte;  // 1021 ones
    EXPECT_EQ(board.Flash()[1020], 1);
    EXPECT_EQ(board.Flash()[1021], 0xFF);
  }
}

TEST(VirtualBoard, AWriteCanOnlyClearBitsSoADownloadWithoutAnEraseShows) {
  VirtualBoard board;
  EXPECT_EQ(Ask(board, {21, 0, 0, 5, 0, 0, 2, 0xF0, 0x0F}), (Answers{{0x00, 0xFF}}));
  // The answer is the sum of what arrived, 0x3C + 0xC3, not of what the flash now holds.
  EXPECT_EQ(Ask(board, {21, 0, 0, 5, 0, 0, 2, 0x3C, 0xC3}), (Answers{{0x00, 0xFF}}));
  EXPECT_EQ(FlashBytes(board, 5, 2), (std::vector<std::uint8_t>{0x30, 0x03}));
  // The check sum tells: 0x30 + 0x03.
  EXPECT_EQ(Ask(board, {30, 0, 0, 5, 0, 0, 2}), (Answers{{0x00, 0x33}}));

  EXPECT_EQ(Ask(board, {10}), kDone);
  EXPECT_EQ(Ask(board, {21, 0, 0, 5, 0, 0, 2, 0x3C, 0xC3}), (Answers{{0x00, 0xFF}}));
  EXPECT_EQ(FlashBytes(board, 5, 2), (std::vector<std::uint8_t>{0x3C, 0xC3}));
}

TEST(VirtualBoard, BytesBeyondTheFlashAreNotStoredYetCountInTheAnswer) {
  VirtualBoard board;
  // 4 MiB is 0x400000: the last two bytes of the flash, then two behind it.
  EXPECT_EQ(Ask(board, {21, 0x3F, 0xFF, 0xFE, 0, 0, 4, 1, 2, 3, 4}), (Answers{{0, 10}}));
  EXPECT_EQ(FlashBytes(board, 0x3FFFFE, 2), (std::vector<std::uint8_t>{1, 2}));
  EXPECT_EQ(board.Flash()[0], 0xFF) << "addresses do not wrap";
  EXPECT_EQ(Ask(board, {21, 0x40, 0, 0, 0, 0, 1, 9}), (Answers{{0, 9}}));
  EXPECT_EQ(Ask(board, {21, 0xFF, 0xFF, 0xFF, 0, 0, 1, 9}), (Answers{{0, 9}}));
  EXPECT_EQ(board.Flash()[0], 0xFF);
}

TEST(VirtualBoard, CheckCRCSumsFlashBytesAndNothingBeyond) {
  VirtualBoard board;
  ASSERT_EQ(Ask(board, {21, 0x3F, 0xFF, 0xFD, 0, 0, 3, 0x70, 0x80, 0x90}), (Answers{{0x01, 0x80}}));
  EXPECT_EQ(Ask(board, {30, 0x3F, 0xFF, 0xFD, 0, 0, 3}), (Answers{{0x01, 0x80}}));
  EXPECT_EQ(Ask(board, {30, 0x3F, 0xFF, 0xFD, 0, 0, 2}), (Answers{{0x00, 0xF0}}));
  EXPECT_EQ(Ask(board, {30, 0x3F, 0xFF, 0xFD, 0xFF, 0xFF, 0xFF}), (Answers{{0x01, 0x80}}));
  EXPECT_EQ(Ask(board, {30, 0x40, 0, 0, 0, 0, 9}), (Answers{{0, 0}}));
  EXPECT_EQ(Ask(board, {30, 0, 0, 0, 0, 0, 0}), (Answers{{0, 0}}));
  // 257 erased bytes: 257 * 255 = 65535.
  EXPECT_EQ(Ask(board, {30, 0, 0, 0, 0, 1, 1}), (Answers{{0xFF, 0xFF}}));
  // 1024 * 255 = 3 * 65536 + 0xFC00.
  EXPECT_EQ(Ask(board, {30, 0, 0, 0, 0, 4, 0}), (Answers{{0xFC, 0x00}}));
}

TEST(VirtualBoard, AnEraseSetsEveryByteAndWipesTheDetectionParameters) {
  VirtualBoard board;
  ASSERT_EQ(Ask(board, {21, 0, 0, 0, 0, 0, 1, 0}), (Answers{{0, 0}}));
  EXPECT_EQ(Ask(board, {10}), kDone);
  EXPECT_TRUE(std::all_of(board.Flash().begin(), board.Flash().end(), [](std::uint8_t b) { return b == 0xFF; }));
  EXPECT_EQ(Ask(board, {41}), (Answers{{255, 255}, {255, 255}, {255, 255}}));
  BoardState expected;
  expected.accelerometer.fill(255);
  EXPECT_EQ(board.State(), expected) << "all else stays";
}

TEST(VirtualBoard, AnswersOnceWhenTheEraseTimeIsOver) {
  VirtualBoard board({}, 2500ms);
  board.Receive(CommandReport({10}), 1s);
  EXPECT_EQ(board.BusyUntil(), 3500ms);
  EXPECT_FALSE(board.NextAnswer(1s).has_value());
  EXPECT_FALSE(board.NextAnswer(3499ms).has_value());
  EXPECT_EQ(AllAnswers(board, 3500ms), kDone);
  EXPECT_FALSE(board.BusyUntil().has_value());
  EXPECT_THAT(AllAnswers(board, 1h), IsEmpty());
}

TEST(VirtualBoard, WorksOffWhatArrivesDuringAnEraseAfterItInOrder) {
  VirtualBoard board({}, 2s);
  board.Receive(CommandReport({10}), 0s);
  EXPECT_THAT(Ask(board, {3}, 500ms), IsEmpty());
  EXPECT_THAT(Ask(board, {42, 1, 2, 3, 4, 5, 6}, 600ms), IsEmpty());
  EXPECT_THAT(Ask(board, {41}, 700ms), IsEmpty());
  EXPECT_THAT(board.State().accelerometer, ElementsAre(255, 255, 255, 255, 255, 255));
  EXPECT_EQ(AllAnswers(board, 2s), (Answers{{10, 10}, {0, 0}, {10, 10}, {1, 2}, {3, 4}, {5, 6}}));
}

TEST(VirtualBoard, ASecondEraseBeginsWhenTheFirstIsOver) {
  VirtualBoard board({}, 2s);
  board.Receive(CommandReport({10}), 0s);
  board.Receive(CommandReport({10}), 1s);
  board.Receive(CommandReport({3}), 1s);
  EXPECT_EQ(AllAnswers(board, 3s), kDone);
  EXPECT_EQ(board.BusyUntil(), 4s);
  EXPECT_EQ(AllAnswers(board, 4s), (Answers{{10, 10}, {0, 0}}));
}

TEST(VirtualBoard, ACommandAfterAnEraseNobodyListenedToIsAnsweredAfterTheErase) {
  VirtualBoard board({}, 2s);
  board.Receive(CommandReport({10}), 0s);
  EXPECT_EQ(Ask(board, {3}, 5s), (Answers{{10, 10}, {0, 0}}));
}

TEST(VirtualBoard, LosingPowerLosesAnswersWaitingCommandsAndTheErase) {
  VirtualBoard board({}, 2s);
  board.Receive(CommandReport({3}), 0s);
  board.Receive(CommandReport({10}), 0s);
  board.Receive(CommandReport({42, 1, 2, 3, 4, 5, 6}), 1s);
  board.LosePower();
  EXPECT_THAT(AllAnswers(board, 1h), IsEmpty());
  EXPECT_FALSE(board.BusyUntil().has_value());
  EXPECT_THAT(board.State().accelerometer, ElementsAre(255, 255, 255, 255, 255, 255));
  EXPECT_EQ(Ask(board, {3}, 1h), (Answers{{0, 0}}));
}

TEST(VirtualBoard, AnswersStayInOrderWhileSomeAreStillUntaken) {
  VirtualBoard board;
  board.Receive(CommandReport({41}), 0s);
  EXPECT_EQ(board.NextAnswer(0s), (VirtualBoard::Answer{180, 2}));
  board.Receive(CommandReport({1}), 0s);
  EXPECT_EQ(AllAnswers(board), (Answers{{10, 50}, {125, 13}, {0x4B, 0x53}, {0x54, 0x01}}));
}

}  // namespace
}  // namespace kestrin::simulator
