// SPDX-License-Identifier: MIT
#include "simulator/store/BoardStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulator/SimulatorSupport.h"
#include "simulator/store/StoredBoard.h"
#include "support/FakeClock.h"
#include "support/TestFiles.h"

namespace kestrin::simulator::store {
namespace {

using support::Ask;
using support::kDone;
using support::ReadBytes;
using support::TemporaryFolder;
using support::WriteBytes;
using ::testing::HasSubstr;

constexpr const char* kFactoryJson = R"({
  "id": 0,
  "serial": "4B535401",
  "accelerometer": [180, 2, 10, 50, 125, 13],
  "ledParam": [0, 0, 0, 0, 0, 0, 0, 0, 0],
  "ledConfig": {
    "code": 1,
    "voltage": 3.7,
    "overdrive": 100
  },
  "ledPulses": [
    {
      "low": [0, 0, 0, 0],
      "high": [0, 0, 0, 0],
      "counts": [
        [0, 1, 0, 1],
        [0, 1, 0, 1],
        [0, 1, 0, 1],
        [0, 1, 0, 1]
      ],
      "Trise": 1000,
      "Ton": 500,
      "Tfall": 1000,
      "Toff": 500,
      "NRep": 0
    },
    {
      "low": [0, 0, 0, 0],
      "high": [0, 0, 0, 0],
      "counts": [
        [0, 1, 0, 1],
        [0, 1, 0, 1],
        [0, 1, 0, 1],
        [0, 1, 0, 1]
      ],
      "Trise": 0,
      "Ton": 40,
      "Tfall": 0,
      "Toff": 40,
      "NRep": 3
    }
  ],
  "pulseStarted": null,
  "resets": 0,
  "byes": 0
}
)";

/// A document as programs read it: without what stands between its words. No text in it has a blank.
std::string Compact(std::string text) {
  std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
  return text;
}

class BoardStoreTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::filesystem::path Dir() const { return m_folder / "state of a board"; }
  [[nodiscard]] std::filesystem::path FlashFile() const { return Dir() / "flash.bin"; }
  [[nodiscard]] std::filesystem::path StateFile() const { return Dir() / "board.json"; }

  core::base::Result<std::unique_ptr<VirtualBoard>> Create(BoardOptions options = {}) const {
    options.dir = Dir();
    return OpenBoard(options);
  }
  std::unique_ptr<VirtualBoard> Board(const BoardOptions& options = {}) const {
    auto created = Create(options);
    EXPECT_TRUE(created) << created.Text();
    return *std::move(created);
  }
  [[nodiscard]] std::string State() const { return Compact(ReadBytes(StateFile())); }
  void WriteJson(std::string_view text) const {
    std::filesystem::create_directories(Dir());
    WriteBytes(StateFile(), text);
  }

  TemporaryFolder m_folder;
};

TEST_F(BoardStoreTest, ANewFolderIsMadeAndHoldsTheFactoryState) {
  const auto board = Board();
  EXPECT_EQ(board->State(), BoardState{});
  EXPECT_EQ(Compact(ReadBytes(StateFile())), Compact(kFactoryJson));
  EXPECT_EQ(ReadBytes(FlashFile()), "");
}

TEST_F(BoardStoreTest, EverythingComesBackInTheNextRun) {
  BoardState before;
  {
    const auto board = Board();
    for (const auto& command :
         std::vector<std::vector<int>>{{42, 9, 8, 7, 6, 5, 4},
                                       {51, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18},
                                       {53, 1, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13},
                                       {61, 0, 100, 0, 53, 0, 120},
                                       {54, 1},
                                       {0},
                                       {7},
                                       {7},
                                       {21, 0, 1, 0, 0, 0, 2, 0x12, 0x34}})
      Ask(*board, command);
    before = board->State();
  }
  EXPECT_EQ(before.ledConfig, (LedConfigState{100, 53, 120}));
  EXPECT_EQ(before.byes, 2U);
  const auto again = Board();
  EXPECT_EQ(again->State(), before);
  EXPECT_EQ(again->Flash()[0x100], 0x12);
  EXPECT_EQ(again->Flash()[0x101], 0x34);
}

TEST_F(BoardStoreTest, FilesChangeAsCommandsArriveWhileTheBoardStillRuns) {
  const auto board = Board();
  ASSERT_EQ(Ask(*board, {21, 0, 0, 3, 0, 0, 2, 0x12, 0x34}).size(), 1U);
  EXPECT_EQ(ReadBytes(FlashFile()), "\xFF\xFF\xFF\x12\x34");
  ASSERT_EQ(Ask(*board, {21, 0, 0, 1, 0, 0, 3, 0x77, 0x66, 0x55}).size(), 1U);
  EXPECT_EQ(ReadBytes(FlashFile()), "\xFF\x77\x66\x10\x34") << "0x12 & 0x55 is 0x10";
  ASSERT_EQ(Ask(*board, {42, 1, 2, 3, 4, 5, 6}), kDone);
  EXPECT_THAT(State(), HasSubstr("\"accelerometer\":[1,2,3,4,5,6]"));
  Ask(*board, {0});
  EXPECT_THAT(State(), HasSubstr("\"resets\":1,"));
  ASSERT_EQ(Ask(*board, {54, 1}), kDone);
  EXPECT_THAT(State(), HasSubstr("\"pulseStarted\":1,"));
}

TEST_F(BoardStoreTest, AnEraseShowsFromItsBeginningOn) {
  BoardOptions options;
  options.erase = std::chrono::seconds(30);
  {
    const auto board = Board(options);
    Ask(*board, {21, 0, 0, 0, 0, 0, 2, 0x12, 0x34});
    Ask(*board, {10});
  }
  EXPECT_EQ(ReadBytes(FlashFile()), "");
  EXPECT_THAT(State(), HasSubstr("\"accelerometer\":[255,255,255,255,255,255]"));
  const auto again = Board(options);
  EXPECT_FALSE(again->BusyUntil().has_value());
  EXPECT_EQ(again->Flash()[0], 0xFF);
  Ask(*again, {21, 0, 0, 0, 0, 0, 1, 0x42});
  EXPECT_EQ(ReadBytes(FlashFile()), "\x42");
}

TEST_F(BoardStoreTest, TheLastByteOfTheFlashCanBeKept) {
  { Ask(*Board(), {21, 0x3F, 0xFF, 0xFF, 0, 0, 1, 0x42}); }
  EXPECT_EQ(std::filesystem::file_size(FlashFile()), 4194304U);
  EXPECT_EQ(Board()->Flash()[4194303], 0x42);
}

TEST_F(BoardStoreTest, OptionsThatAreGivenGoBeforeWhatIsKept) {
  BoardOptions options;
  options.id = 64;
  { EXPECT_EQ(Board(options)->State().id, 64); }
  EXPECT_EQ(Board()->State().id, 64);
  options.id.reset();
  options.serial = 0xDEADBEEF;
  {
    const auto board = Board(options);
    EXPECT_EQ(board->State().id, 64);
    EXPECT_EQ(board->Flash().size(), 8388608U);
    EXPECT_EQ(board->State().serial, 0xDEADBEEFU);
  }
  EXPECT_THAT(State(), HasSubstr("\"serial\":\"DEADBEEF\""));
  options.id = 100;
  options.serial.reset();
  const auto board = Board(options);
  EXPECT_EQ(board->State().id, 100);
  EXPECT_EQ(board->State().serial, 0xDEADBEEFU);
}

TEST_F(BoardStoreTest, WhatIsMissingIsTheFactorys) {
  WriteJson(R"({"serial": "0000abcd", "ledPulses": [{"NRep": 5}, {}], "ledConfig": {"voltage": 5}, "remark": [1]})");
  BoardState expected;
  expected.serial = 0xABCD;
  expected.ledPulses[0].NRep = 5;
  expected.ledConfig.voltageTenths = 50;
  EXPECT_EQ(Board()->State(), expected);
}

TEST_F(BoardStoreTest, TakesTheVoltageToATenth) {
  struct Row {
    const char* text;
    std::uint16_t tenths;
  };
  for (const Row row : {Row{"0", 0}, Row{"0.3", 3}, Row{"3.6", 36}, Row{"4.35", 44}, Row{"6553.5", 65535}}) {
    WriteJson(std::string(R"({"ledConfig": {"voltage": )") + row.text + "}}");
    EXPECT_EQ(Board()->State().ledConfig.voltageTenths, row.tenths) << row.text;
  }
}

TEST_F(BoardStoreTest, ADamagedStateIsNamedAndLeftAsItIs) {
  struct Row {
    std::string_view text;
    const char* reason;
  };
  const std::string deep(10000, '[');
  const Row rows[] = {
      {"", "line 1, column 1"},
      {"{\"id\": 1", "expected '}'"},
      {"{\"id\": 1} {", "expected end of input"},
      {std::string_view("{\"id\": 1}\0\0", 11), "a zero byte"},
      {"\xEF\xBB\xBF{}", "a byte order mark"},
      {"{\"id\": 1, \"id\": 1}", "\"id\" stands twice in one object"},
      {"{\"remark\": \"\xE9\"}", "ill-formed UTF-8"},
      {"{\"id\": 1e999}", "number overflow"},
      {deep, "too deep"},
      {"[]", "the document must be an object"},
      {R"({"id": -1})", "\"id\" must be a whole number from 0 to 65535"},
      {R"({"id": 65536})", "\"id\" must be a whole number from 0 to 65535"},
      {R"({"id": 1.5})", "\"id\" must be a whole number from 0 to 65535"},
      {R"({"id": "1"})", "\"id\" must be a whole number from 0 to 65535"},
      {R"({"serial": 12345678})", "\"serial\" must be a text of 8 hexadecimal digits"},
      {R"({"serial": "1234567"})", "\"serial\" must be a text of 8 hexadecimal digits"},
      {R"({"serial": "1234567x"})", "\"serial\" must be a text of 8 hexadecimal digits"},
      {R"({"accelerometer": [1, 2, 3, 4, 5]})", "\"accelerometer\" must be an array of 6"},
      {R"({"accelerometer": [1, 2, 3, 4, 5, 256]})", "\"accelerometer[5]\" must be a whole number from 0 to 255"},
      {R"({"ledParam": 9})", "\"ledParam\" must be an array of 9"},
      {R"({"ledConfig": []})", "\"ledConfig\" must be an object"},
      {R"({"ledConfig": {"voltage": -0.1}})", "\"ledConfig.voltage\" must be a number from 0 to 6553.5"},
      {R"({"ledConfig": {"voltage": 6553.6}})", "\"ledConfig.voltage\" must be a number from 0 to 6553.5"},
      {R"({"ledConfig": {"voltage": null}})", "\"ledConfig.voltage\" must be a number from 0 to 6553.5"},
      {R"({"ledConfig": {"code": 1e9}})", "\"ledConfig.code\" must be a whole number from 0 to 65535"},
      {R"({"ledPulses": [{}]})", "\"ledPulses\" must be an array of 2"},
      {R"({"ledPulses": [{}, 1]})", "\"ledPulses[1]\" must be an object"},
      {R"({"ledPulses": [{}, {"counts": [[], [], [], []]}]})", "\"ledPulses[1].counts[0]\" must be an array of 4"},
      {R"({"ledPulses": [{"low": [0, 0, 0, true]}, {}]})", "\"ledPulses[0].low[3]\" must be a whole number"},
      {R"({"pulseStarted": 256})", "\"pulseStarted\" must be a whole number from 0 to 255"},
      {R"({"resets": -1})", "\"resets\" must be a whole number from 0 to 4294967295"},
      {R"({"byes": 4294967296})", "\"byes\" must be a whole number from 0 to 4294967295"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.text);
    WriteJson(row.text);
    const auto created = Create();
    ASSERT_FALSE(created);
    EXPECT_EQ(created.Why().kind, core::base::FailureKind::NotValid);
    EXPECT_THAT(created.Text(), HasSubstr("board.json\" is damaged: "));
    EXPECT_THAT(created.Text(), HasSubstr(row.reason));
    EXPECT_EQ(ReadBytes(StateFile()), row.text);
  }
}

TEST_F(BoardStoreTest, AFolderThatCannotBeMadeIsNamed) {
  WriteBytes(m_folder / "file", "x");
  BoardOptions options;
  for (const char* const name : {"file", "file/inside"}) {
    options.dir = m_folder / name;
    const auto created = OpenBoard(options);
    ASSERT_FALSE(created);
    EXPECT_THAT(created.Text(), HasSubstr(name));
    EXPECT_THAT(created.Text(), HasSubstr("could not be made"));
  }
}

TEST_F(BoardStoreTest, FilesThatAreFoldersAreNamed) {
  std::filesystem::create_directories(FlashFile());
  EXPECT_THAT(Create().Text(), HasSubstr("flash.bin\" could not be read or written"));
  std::filesystem::remove(FlashFile());
  std::filesystem::remove(StateFile());
  std::filesystem::create_directories(StateFile());
  EXPECT_THAT(Create().Text(), HasSubstr("board.json\" could not be read"));
}

TEST_F(BoardStoreTest, AFlashImageLargerThanTheFlashIsNamedAndLeftAsItIs) {
  std::filesystem::create_directories(Dir());
  WriteBytes(FlashFile(), std::string(4194305, 'x'));
  EXPECT_THAT(Create().Text(), HasSubstr("flash.bin\" is larger than the board's flash of 4194304 bytes"));
  EXPECT_EQ(std::filesystem::file_size(FlashFile()), 4194305U);
  BoardOptions options;
  options.id = 64;
  EXPECT_EQ(Board(options)->Flash()[4194304], 'x');
}

TEST_F(BoardStoreTest, ABoardThatCannotKeepItsStateFailsInsteadOfForgetting) {
  support::FakeClock clock;
  BoardOptions options;
  options.dir = Dir();
  const auto created = CreateAgent(options, clock);
  ASSERT_TRUE(created) << created.Text();
  SimulatedAgent& agent = **created;
  support::OpenAndSelect(agent);
  EXPECT_TRUE(support::WriteCommand(agent, {42, 1, 2, 3, 4, 5, 6}));
  std::filesystem::remove_all(Dir());
  EXPECT_FALSE(support::WriteCommand(agent, {42, 6, 5, 4, 3, 2, 1}));
  EXPECT_THAT(agent.AccessProblem(), HasSubstr("board.json"));
  agent.Stop();
  EXPECT_FALSE(agent.SearchAndOpen());
}

TEST_F(BoardStoreTest, AnAgentIsNotMadeForADamagedFolder) {
  WriteJson("{");
  support::FakeClock clock;
  BoardOptions options;
  options.dir = Dir();
  const auto created = CreateAgent(options, clock);
  ASSERT_FALSE(created);
  EXPECT_THAT(created.Text(), HasSubstr("board.json"));
}

}  // namespace
}  // namespace kestrin::simulator::store
