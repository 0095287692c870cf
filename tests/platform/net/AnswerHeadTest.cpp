// SPDX-License-Identifier: MIT
#include "platform/net/AnswerHead.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace kestrin::platform::net {
namespace {

AnswerHead Read(std::initializer_list<std::string_view> lines) {
  AnswerHead head;
  for (const std::string_view line : lines) EXPECT_TRUE(head.Add(std::string(line) + "\r\n"));
  return head;
}

TEST(AnswerHead, IsCompleteAtItsEmptyLine) {
  EXPECT_FALSE(AnswerHead().IsComplete());
  EXPECT_FALSE(Read({"HTTP/1.1 200 OK", "A: 1"}).IsComplete());
  const AnswerHead head = Read({"HTTP/1.1 200 OK", "A: 1", ""});
  EXPECT_TRUE(head.IsComplete());
  EXPECT_EQ(head.Status(), 200);
}

TEST(AnswerHead, AnInterimAnswerIsForgottenWithItsHeaders) {
  const AnswerHead interim = Read({"HTTP/1.1 103 Early Hints", "A: 1", ""});
  EXPECT_FALSE(interim.IsComplete());
  const AnswerHead head = Read({"HTTP/1.1 103 Early Hints", "A: 1", "", "HTTP/1.1 404 Gone", "B: 2", ""});
  EXPECT_TRUE(head.IsComplete());
  EXPECT_EQ(head.Status(), 404);
  EXPECT_EQ(head.Value("A"), "");
  EXPECT_EQ(head.Value("b"), "2");
}

TEST(AnswerHead, HeadersBehindItAreNotItsOwn) {
  EXPECT_EQ(Read({"HTTP/1.1 200 OK", "", "Content-Length: 3"}).Value("Content-Length"), "");
}

TEST(AnswerHead, TheFirstOfSeveralValuesCountsWithoutItsBlanks) {
  const AnswerHead head = Read({"HTTP/1.1 200", "X: \t a:b ", "x: c", "no colon", ": nameless", ""});
  EXPECT_EQ(head.Value("X"), "a:b");
  EXPECT_EQ(head.Value("no colon"), "");
}

TEST(AnswerHead, AnEndlessHeadIsRefused) {
  AnswerHead head;
  EXPECT_TRUE(head.Add("HTTP/1.1 200 OK\r\n"));
  int lines = 0;
  while (head.Add("X: " + std::string(995, 'x') + "\r\n")) ASSERT_LT(++lines, 100);
  // 65,536 bytes are taken: the first line's 17 and 65 lines of 1,000.
  EXPECT_EQ(lines, 65);
}

struct LengthRow {
  const char* value;
  std::int64_t length;
};

TEST(AnswerHead, ALengthIsAWholeNumberOrNone) {
  constexpr LengthRow kRows[]{{"0", 0},
                              {"20000", 20000},
                              {"9223372036854775807", INT64_MAX},
                              {"9223372036854775808", -1},
                              {"-1", -1},
                              {"+1", -1},
                              {"12a", -1},
                              {"1,2", -1},
                              {"", -1}};
  for (const LengthRow& row : kRows) {
    const AnswerHead head = Read({"HTTP/1.1 200 OK", "Content-Length: " + std::string(row.value), ""});
    EXPECT_EQ(head.Length().value_or(-1), row.length) << row.value;
  }
  EXPECT_FALSE(Read({"HTTP/1.1 200 OK", ""}).Length());
}

struct SoundRow {
  const char* status;
  const char* first;
  const char* second;
  bool sound;
};

TEST(AnswerHead, IsSoundWhenItsBodyCanBeRead) {
  constexpr SoundRow kRows[]{
      {"200", "", "", true},
      {"299", "", "", true},
      {"300", "", "", false},
      {"199", "", "", false},
      {"404", "", "", false},
      {"99999999999", "", "", false},
      {"abc", "", "", false},
      {"200", "Content-Length: 3", "Content-Length: 3", true},
      {"200", "Content-Length: 3", "Content-Length: 4", false},
      {"200", "Content-Length: 3", "content-length:", false},
      {"200", "Transfer-Encoding: Chunked", "", true},
      {"200", "Transfer-Encoding: gzip", "", false},
      {"200", "Transfer-Encoding: gzip, chunked", "", false},
      {"200", "Content-Encoding: gzip", "", true},
  };
  for (const SoundRow& row : kRows) {
    AnswerHead head = Read({"HTTP/1.1 " + std::string(row.status) + " x"});
    for (const char* const header : {row.first, row.second}) {
      // An empty line would end the head.
      if (*header != '\0') {
        EXPECT_TRUE(head.Add(header + std::string("\r\n")));
      }
    }
    EXPECT_EQ(head.IsSound(), row.sound) << row.status << " " << row.first << " " << row.second;
  }
}

TEST(AnswerHead, KnowsWhenTheServerCloses) {
  EXPECT_TRUE(Read({"HTTP/1.1 200 OK", "connection: Close", ""}).AnnouncesClose());
  EXPECT_TRUE(Read({"HTTP/1.0 200 OK", ""}).AnnouncesClose());
  EXPECT_FALSE(Read({"HTTP/1.0 200 OK", "Connection: keep-alive", ""}).AnnouncesClose());
  EXPECT_FALSE(Read({"HTTP/1.1 200 OK", ""}).AnnouncesClose());
}

}  // namespace
}  // namespace kestrin::platform::net
