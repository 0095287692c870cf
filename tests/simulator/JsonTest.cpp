#include "simulator/store/Json.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace kestrin::simulator {
namespace {

using ::testing::HasSubstr;

Json Good(std::string_view text) {
  Json::Parsed parsed = Json::Parse(text);
  EXPECT_EQ(parsed.problem, "") << text;
  EXPECT_TRUE(parsed.value.has_value()) << text;
  return parsed.value.value_or(Json());
}

TEST(Json, ReadsEveryKindOfValue) {
  EXPECT_TRUE(Good(" null\n").IsNull());
  EXPECT_EQ(Good("true"), Json(true));
  EXPECT_EQ(Good("false"), Json(false));
  EXPECT_EQ(Good("\"text\""), Json(std::string("text")));
  EXPECT_EQ(Good("[]"), Json(Json::Array{}));
  EXPECT_EQ(Good("[ 1 , \"a\",[true] ]"), Json(Json::Array{1, std::string("a"), Json::Array{true}}));
  EXPECT_EQ(Good("{}"), Json(Json::Object{}));
  EXPECT_EQ(Good("\t{ \"b\" : 1,\r\n\"a\":null }"), Json(Json::Object{{"b", 1}, {"a", Json()}}));
}

TEST(Json, ReadsNumbers) {
  struct Row {
    const char* text;
    double value;
  };
  for (const Row row : {Row{"0", 0}, Row{"-0", 0}, Row{"7", 7}, Row{"-12", -12}, Row{"3.7", 3.7}, Row{"0.5", 0.5},
                        Row{"1e3", 1000}, Row{"25E-1", 2.5}, Row{"1E+2", 100}, Row{"4294967295", 4294967295.0}}) {
    const Json json = Good(row.text);
    ASSERT_NE(json.Number(), nullptr) << row.text;
    EXPECT_EQ(*json.Number(), row.value) << row.text;
  }
}

TEST(Json, ReadsEscapesInTexts) {
  EXPECT_EQ(Good(R"("\" \\ \/ \b\f\n\r\t")"), Json(std::string("\" \\ / \b\f\n\r\t")));
  EXPECT_EQ(Good(R"("\u0041\u00e9\u20AC\ud83d\ude00")"), Json(std::string("A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80")));
  EXPECT_EQ(Good("\"\xC3\xA9\""), Json(std::string("\xC3\xA9")));
  EXPECT_EQ(Good(R"("\u0000")"), Json(std::string(1, '\0')));
}

TEST(Json, RefusesEverythingElse) {
  const std::string_view texts[] = {"",
                                    " ",
                                    "nul",
                                    "True",
                                    "nulll",
                                    "1 2",
                                    "{} {}",
                                    "01",
                                    "+1",
                                    ".5",
                                    "1.",
                                    "1.e3",
                                    "-",
                                    "1e",
                                    "1e+",
                                    "0x10",
                                    "NaN",
                                    "Infinity",
                                    "1e999",
                                    "[",
                                    "[1",
                                    "[1,",
                                    "[1,]",
                                    "[,1]",
                                    "[1 2]",
                                    "]",
                                    "{",
                                    "{1:2}",
                                    "{\"a\"}",
                                    "{\"a\":}",
                                    "{\"a\":1,}",
                                    "{\"a\":1 \"b\":2}",
                                    "{\"a\":1,\"a\":2}",
                                    "{a:1}",
                                    "'a'",
                                    "\"",
                                    "\"a",
                                    "\"\\\"",
                                    "\"\\x\"",
                                    "\"\\u12\"",
                                    "\"\\u12g4\"",
                                    "\"\\ud83d\"",
                                    "\"\\ud83d\\u0041\"",
                                    "\"\\ude00\"",
                                    "\"\n\"",
                                    "// remark\n1",
                                    "\xEF\xBB\xBF{}",
                                    std::string_view("1\0", 2),
                                    std::string_view("\0", 1)};
  for (const std::string_view text : texts) {
    const Json::Parsed parsed = Json::Parse(text);
    EXPECT_FALSE(parsed.value.has_value()) << text;
    EXPECT_NE(parsed.problem, "") << text;
  }
}

TEST(Json, SaysWhereTheTextIsWrong) {
  EXPECT_THAT(Json::Parse("{\"a\": x}").problem, HasSubstr("(at byte 6)"));
  EXPECT_THAT(Json::Parse("{\"a\": 1, \"a\": 2}").problem, HasSubstr("\"a\" stands twice"));
}

TEST(Json, LimitsTheDepth) {
  const auto nested = [](std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
  EXPECT_TRUE(Json::Parse(nested(64)).value.has_value());
  EXPECT_FALSE(Json::Parse(nested(65)).value.has_value());
  EXPECT_FALSE(Json::Parse(std::string(1000000, '[')).value.has_value());
  std::string objects;
  for (int i = 0; i < 100000; ++i) objects += "{\"a\":";
  EXPECT_FALSE(Json::Parse(objects).value.has_value());
}

TEST(Json, WritesForPeople) {
  const Json json(Json::Object{
      {"name", std::string("a \"b\" \\ \x01\n\xC3\xA9")},
      {"numbers", Json::Array{1, 2.5, -3, true, Json()}},
      {"rows", Json::Array{Json::Array{1, 2}, Json::Array{}}},
      {"none", Json::Object{}},
      {"big", 4294967295U},
  });
  EXPECT_EQ(json.Format(),
            "{\n"
            "  \"name\": \"a \\\"b\\\" \\\\ \\u0001\\u000a\xC3\xA9\",\n"
            "  \"numbers\": [1, 2.5, -3, true, null],\n"
            "  \"rows\": [\n"
            "    [1, 2],\n"
            "    []\n"
            "  ],\n"
            "  \"none\": {},\n"
            "  \"big\": 4294967295\n"
            "}\n");
  EXPECT_EQ(Good(json.Format()), json);
}

TEST(Json, WritesNullForWhatIsNoNumber) {
  EXPECT_EQ(Json(std::numeric_limits<double>::quiet_NaN()).Format(), "null\n");
  EXPECT_EQ(Json(std::numeric_limits<double>::infinity()).Format(), "null\n");
}

TEST(Json, FindsMembersByName) {
  const Json json = Good("{\"a\": 1, \"b\": {\"c\": 2}}");
  ASSERT_NE(json.Find("b"), nullptr);
  ASSERT_NE(json.Find("b")->Find("c"), nullptr);
  EXPECT_EQ(*json.Find("b")->Find("c"), Json(2));
  EXPECT_EQ(json.Find("c"), nullptr);
  EXPECT_EQ(json.Find("a")->Find("b"), nullptr);
}

}  // namespace
}  // namespace kestrin::simulator
