// SPDX-License-Identifier: MIT
#include "simulator/store/BoardStateJson.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace kestrin::simulator::store {
namespace {

using core::base::FailureKind;
using testing::HasSubstr;
using testing::Not;
using namespace std::string_view_literals;

/// A document whose one member means nothing to a board.
std::string WithRemark(std::string_view value) { return "{\"remark\": " + std::string(value) + "}"; }

TEST(BoardStateJson, PassesOverMembersThatMeanNothingWhateverTheyAre) {
  for (const std::string_view value :
       {"null"sv, "true"sv, "false"sv, "\"text\""sv, "[]"sv, "[ 1 , \"a\",[true] ]"sv, "{}"sv,
        "\t{ \"b\" : 1,\r\n\"a\":null }"sv, "-0"sv, "-12"sv, "25E-1"sv, "\"\\\" \\\\ \\/ \\b\\f\\n\\r\\t\""sv,
        "\"\\u0041\\u00e9\\u20AC\\ud83d\\ude00\\u0000\""sv, "\"\xC3\xA9\""sv, "18446744073709551616"sv}) {
    const auto state = FromJson(WithRemark(value));
    ASSERT_TRUE(state) << value << ": " << state.Text();
    EXPECT_EQ(*state, BoardState{}) << value;
  }
}

TEST(BoardStateJson, TakesWholeNumbersInEverySpelling) {
  struct Row {
    const char* text;
    std::uint32_t number;
  };
  for (const Row row : {Row{"0", 0}, Row{"-0", 0}, Row{"7", 7}, Row{"1e3", 1000}, Row{"1E+2", 100}, Row{"2.5e1", 25},
                        Row{"3.0", 3}, Row{"4294967295", 4294967295U}}) {
    const auto state = FromJson(std::string("{\"resets\":") + row.text + "}");
    ASSERT_TRUE(state) << row.text << ": " << state.Text();
    EXPECT_EQ(state->resets, row.number) << row.text;
  }
}

TEST(BoardStateJson, RefusesWhatTheFormatDoesNotAllow) {
  const std::string_view documents[] = {""sv,
                                        " "sv,
                                        "{"sv,
                                        "}"sv,
                                        "{} {}"sv,
                                        "{},"sv,
                                        "{}x"sv,
                                        "{1:2}"sv,
                                        "{\"a\"}"sv,
                                        "{\"a\":}"sv,
                                        "{\"a\":1,}"sv,
                                        "{\"a\":1 \"b\":2}"sv,
                                        "{a:1}"sv,
                                        "// remark\n{}"sv,
                                        "/* remark */{}"sv,
                                        "\xEF\xBB\xBF{}"sv,
                                        "{}\0"sv,
                                        "{}\0\0\0\0"sv,
                                        "{}\0{"sv,
                                        "\0"sv,
                                        "{\"id\"\0:1}"sv};
  const std::string_view values[] = {"nul"sv,         "True"sv,        "nulll"sv,       "1 2"sv,
                                     "01"sv,          "+1"sv,          ".5"sv,          "1."sv,
                                     "1.e3"sv,        "-"sv,           "1e"sv,          "1e+"sv,
                                     "0x10"sv,        "NaN"sv,         "Infinity"sv,    "1e999"sv,
                                     "-1e999"sv,      "["sv,           "[1"sv,          "[1,"sv,
                                     "[1,]"sv,        "[,1]"sv,        "[1 2]"sv,       "'a'"sv,
                                     "\""sv,          "\"a"sv,         "\"\\\""sv,      "\"\\x\""sv,
                                     "\"\\u12\""sv,   "\"\\u12g4\""sv, "\"\\ud83d\""sv, "\"\\ud83d\\u0041\""sv,
                                     "\"\\ude00\""sv, "\"\n\""sv};
  for (const std::string_view document : documents) {
    const auto state = FromJson(document);
    ASSERT_FALSE(state) << document;
    EXPECT_EQ(state.Why().kind, FailureKind::NotValid) << document;
    EXPECT_NE(state.Text(), "") << document;
  }
  for (const std::string_view value : values) EXPECT_FALSE(FromJson(WithRemark(value))) << value;
}

TEST(BoardStateJson, RefusesTextsThatAreNoUtf8) {
  // A lone tail, a head without one, an overlong zero, half of a pair, a number beyond the last, a byte that never is.
  for (const char* const bytes : {"\x80", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"}) {
    const auto value = FromJson(WithRemark("\"" + std::string(bytes) + "\""));
    ASSERT_FALSE(value);
    EXPECT_THAT(value.Text(), HasSubstr("UTF-8"));
    EXPECT_THAT(value.Text(), Not(HasSubstr(bytes))) << "a terminal gets to see this";
    EXPECT_FALSE(FromJson("{\"" + std::string(bytes) + "\": 1}"));
  }
}

TEST(BoardStateJson, SaysWhereTheTextIsWrong) {
  EXPECT_THAT(FromJson("{\n  \"id\": x}").Text(), HasSubstr("line 2, column 9"));
  EXPECT_THAT(FromJson("{\"id\": 1").Text(), HasSubstr("expected '}'"));
  EXPECT_THAT(FromJson("{\"id\": 1e999}").Text(), HasSubstr("1e999"));
  for (const char* const text : {"{\"id\": x}", "{\"id\": 1", "{\"id\": 1e999}", ""})
    EXPECT_THAT(FromJson(text).Text(), Not(HasSubstr("json.exception"))) << text;
}

TEST(BoardStateJson, RefusesANameThatStandsTwiceInOneObject) {
  for (const char* const text :
       {R"({"a": 1, "a": 1})", R"({"a": {"b": 1}, "a": 2})", R"({"x": [], "a": [{"b": 1}], "a": 2})",
        R"({"ledConfig": {"a": [1], "a": 2}})", R"([{"a": 1, "\u0061": 2}])", R"({"o": {"p": {}}, "a": {}, "a": 2})"})
    EXPECT_THAT(FromJson(text).Text(), HasSubstr("\"a\" stands twice")) << text;
}

TEST(BoardStateJson, TakesTheSameNameInSeveralObjects) {
  for (const char* const text :
       {R"({"a": {"a": 1}, "b": {"a": 1}})", R"({"a": [{"a": 1}, {"a": 1}], "b": [{"a": {}}]})",
        R"({"b": {"a": 1, "c": 1}, "a": 1, "c": {"b": {}}})"}) {
    const auto state = FromJson(text);
    EXPECT_TRUE(state) << text << ": " << state.Text();
  }
}

TEST(BoardStateJson, LimitsTheDepth) {
  const auto nested = [](std::size_t depth) { return WithRemark(std::string(depth, '[') + std::string(depth, ']')); };
  // The document itself is the first.
  EXPECT_TRUE(FromJson(nested(63)));
  EXPECT_THAT(FromJson(nested(64)).Text(), HasSubstr("too deep"));
  std::string objects;
  for (int i = 0; i < 64; ++i) objects += "{\"a\":";
  EXPECT_TRUE(FromJson(objects + "1" + std::string(64, '}')));
  EXPECT_THAT(FromJson("{\"a\":" + objects + "1" + std::string(65, '}')).Text(), HasSubstr("too deep"));
}

TEST(BoardStateJson, SurvivesDocumentsThatAreNothingButDepth) {
  EXPECT_THAT(FromJson(std::string(1000000, '[')).Text(), HasSubstr("too deep"));
  EXPECT_THAT(FromJson(std::string(1000000, '[') + std::string(1000000, ']')).Text(), HasSubstr("too deep"));
  std::string objects;
  for (int i = 0; i < 100000; ++i) objects += "{\"a\":";
  EXPECT_THAT(FromJson(objects).Text(), HasSubstr("too deep"));
}

TEST(BoardStateJson, WritesVoltsAsPeopleDo) {
  struct Row {
    std::uint16_t tenths;
    const char* text;
  };
  for (const Row row : {Row{0, "0"}, Row{3, "0.3"}, Row{37, "3.7"}, Row{50, "5"}, Row{65535, "6553.5"}}) {
    BoardState state;
    state.ledConfig.voltageTenths = row.tenths;
    EXPECT_THAT(ToJson(state), HasSubstr("\"voltage\": " + std::string(row.text) + ",\n"));
  }
}

TEST(BoardStateJson, HoldsEverythingThatABoardHolds) {
  BoardState state;
  state.id = 65535;
  state.serial = 0xFEDCBA98;
  state.accelerometer = {1, 2, 3, 4, 5, 255};
  state.ledParam = {1, 2, 3, 4, 5, 6, 7, 8, 65535};
  state.ledConfig = {9, 41, 140};
  state.ledPulses[0] = {
      {1, 2, 3, 4}, {5, 6, 7, 8}, {{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 65535}}}, 1, 2, 3, 4, 5};
  state.ledPulses[1].NRep = 65535;
  state.pulseStarted = 255;
  state.resets = 4294967295U;
  state.byes = 7;
  const auto again = FromJson(ToJson(state));
  ASSERT_TRUE(again) << again.Text();
  EXPECT_EQ(*again, state);
}

}  // namespace
}  // namespace kestrin::simulator::store
