// SPDX-License-Identifier: MIT
#include "simulator/BoardOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace kestrin::simulator {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(BoardOptions, AnEmptyTextMeansThatAllIsAsItComes) {
  const auto parsed = BoardOptions::Parse("");
  ASSERT_TRUE(parsed) << parsed.Text();
  const BoardOptions& options = *parsed;
  EXPECT_FALSE(options.id.has_value());
  EXPECT_FALSE(options.serial.has_value());
  EXPECT_TRUE(options.dir.empty());
  EXPECT_EQ(options.erase, 0s);
  EXPECT_EQ(options.wire, BoardOptions::Wire::None);
  EXPECT_THAT(options.faults, IsEmpty());
}

TEST(BoardOptions, TakesEveryKeyAtOnce) {
  const auto parsed = BoardOptions::Parse(
      "id=64,serial=4b53a4Ff,dir=/some where/b=oard,erase=1.5,wire=usb,fault=write:3,fault=read:9,fault=unplug:20,"
      "fault=flip:7,motion=/some where/moves.txt");
  ASSERT_TRUE(parsed) << parsed.Text();
  const BoardOptions& options = *parsed;
  EXPECT_EQ(options.id, 64);
  EXPECT_EQ(options.serial, 0x4B53A4FFU);
  EXPECT_EQ(options.dir, std::filesystem::path("/some where/b=oard"));
  EXPECT_EQ(options.motion, std::filesystem::path("/some where/moves.txt"));
  EXPECT_EQ(options.erase, 1500ms);
  EXPECT_EQ(options.wire, BoardOptions::Wire::Usb);
  EXPECT_THAT(options.faults, ElementsAre(Fault{Fault::Kind::WriteFails, 3}, Fault{Fault::Kind::ReadFails, 9},
                                          Fault{Fault::Kind::Unplug, 20}, Fault{Fault::Kind::FlipBit, 7}));
}

TEST(BoardOptions, TakesTheLimitsOfNumbers) {
  EXPECT_EQ(BoardOptions::Parse("id=0")->id, 0);
  EXPECT_EQ(BoardOptions::Parse("id=65535")->id, 65535);
  EXPECT_EQ(BoardOptions::Parse("serial=00000000")->serial, 0U);
  EXPECT_EQ(BoardOptions::Parse("serial=FFFFFFFF")->serial, 0xFFFFFFFFU);
  EXPECT_EQ(BoardOptions::Parse("erase=0")->erase, 0s);
  EXPECT_EQ(BoardOptions::Parse("erase=0.001")->erase, 1ms);
  EXPECT_EQ(BoardOptions::Parse("erase=86400")->erase, 24h);
  EXPECT_EQ(BoardOptions::Parse("wire=none")->wire, BoardOptions::Wire::None);
  EXPECT_THAT(BoardOptions::Parse("fault=write:18446744073709551615")->faults,
              ElementsAre(Fault{Fault::Kind::WriteFails, 18446744073709551615U}));
}

TEST(BoardOptions, NamesTheValueThatIsWrongItsKeyAndWhatIsAllowed) {
  struct Row {
    const char* text;
    const char* value;
    const char* key;
    const char* allowed;
  };
  const char* const id = "a decimal number from 0 to 65535";
  const char* const serial = "8 hexadecimal digits";
  const char* const erase = "seconds from 0 to 86400";
  const char* const fault = "write:N, read:N, unplug:N or flip:N with a number N from 1";
  const Row rows[] = {
      {"id=", "", "id", id},
      {"id=-1", "-1", "id", id},
      {"id=65536", "65536", "id", id},
      {"id=0x40", "0x40", "id", id},
      {"id=6 4", "6 4", "id", id},
      {"serial=4B53540", "4B53540", "serial", serial},
      {"serial=4B5354012", "4B5354012", "serial", serial},
      {"serial=4B53540G", "4B53540G", "serial", serial},
      {"serial=-1234567", "-1234567", "serial", serial},
      {"serial=0x123456", "0x123456", "serial", serial},
      {"dir=", "", "dir", "the path of a folder"},
      {"erase=", "", "erase", erase},
      {"erase=-1", "-1", "erase", erase},
      {"erase=.5", ".5", "erase", erase},
      {"erase=5.", "5.", "erase", erase},
      {"erase=1.2.3", "1.2.3", "erase", erase},
      {"erase=1e3", "1e3", "erase", erase},
      {"erase=nan", "nan", "erase", erase},
      {"erase=86401", "86401", "erase", erase},
      {"motion=", "", "motion", "the path of a file"},
      {"wire=serial", "serial", "wire", "\"none\" or \"usb\""},
      {"wire=USB", "USB", "wire", "\"none\" or \"usb\""},
      {"fault=write", "write", "fault", fault},
      {"fault=write:", "write:", "fault", fault},
      {"fault=write:0", "write:0", "fault", fault},
      {"fault=write:-3", "write:-3", "fault", fault},
      {"fault=write:1:2", "write:1:2", "fault", fault},
      {"fault=:4", ":4", "fault", fault},
      {"fault=burn:4", "burn:4", "fault", fault},
      {"fault=write:18446744073709551616", "write:18446744073709551616", "fault", fault},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.text);
    const auto parsed = BoardOptions::Parse(row.text);
    ASSERT_FALSE(parsed);
    EXPECT_EQ(parsed.Why().kind, core::base::FailureKind::NotValid);
    const std::string& problem = parsed.Why().text;
    EXPECT_THAT(problem, HasSubstr("\"" + std::string(row.value) + "\""));
    EXPECT_THAT(problem, HasSubstr("key \"" + std::string(row.key) + "\""));
    EXPECT_THAT(problem, HasSubstr(row.allowed));
  }
}

TEST(BoardOptions, GiveABoardTheIdAndSerialThatAreWanted) {
  BoardState state;
  state.id = 7;
  state.serial = 0x12345678;
  state.resets = 3;
  EXPECT_EQ(BoardOptions().Applied(state), state);
  BoardState expected = state;
  expected.id = 64;
  EXPECT_EQ(BoardOptions::Parse("id=64")->Applied(state), expected);
  expected = state;
  expected.serial = 0;
  EXPECT_EQ(BoardOptions::Parse("serial=00000000")->Applied(state), expected);
}

TEST(BoardOptions, NamesAKeyThatIsUnknownAndThoseThatThereAre) {
  for (const char* const text : {"speed=9", "id=1,speed=9", "speed", "ID=1=2,speed=9"}) {
    const std::string problem = BoardOptions::Parse(text).Text();
    EXPECT_THAT(problem, HasSubstr(std::string(text).starts_with("ID") ? "no key \"ID\"" : "no key \"speed\"")) << text;
    EXPECT_THAT(problem, HasSubstr("id, serial, dir, erase, wire, fault, motion")) << text;
  }
  EXPECT_THAT(BoardOptions::Parse("id=1,").Text(), HasSubstr("no key \"\""));
  EXPECT_THAT(BoardOptions::Parse(",").Text(), HasSubstr("no key \"\""));
}

TEST(BoardOptions, RefusesAKeyWithoutAValueAndAKeyGivenTwice) {
  EXPECT_THAT(BoardOptions::Parse("id").Text(), HasSubstr("\"id\" needs a value"));
  EXPECT_THAT(BoardOptions::Parse("id=1,erase=2,id=1").Text(), HasSubstr("\"id\" is given twice"));
}

}  // namespace
}  // namespace kestrin::simulator
