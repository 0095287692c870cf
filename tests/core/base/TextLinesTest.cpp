// SPDX-License-Identifier: MIT
#include "core/base/TextLines.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/TestFiles.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace kestrin::core::base {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

Lines All(const TextLines& lines) {
  Lines all;
  for (std::size_t number = 1; number <= lines.Count(); ++number) all.push_back(lines.Line(number));
  return all;
}

struct Row {
  std::string text;
  Lines lines;
};
const Row kRows[] = {
    {"", {}},
    {"one", {"one"}},
    {"one\r\ntwo\r\n", {"one", "two"}},
    {"one\ntwo\n", {"one", "two"}},
    {"one\r\ntwo\nthree", {"one", "two", "three"}},
    {"\r\n", {""}},
    {"\n\r\n\n", {"", "", ""}},
    {"one\n\nthree\n", {"one", "", "three"}},
    {"a\rb\r\r\n", {"a\rb\r"}},
    {"one\r", {"one"}},
    {"\xEF\xBB\xBFone\n\xEF\xBB\xBFtwo\n", {"one", "\xEF\xBB\xBFtwo"}},
    {"\xEF\xBB\xBF", {}},
    {"\xEF\xBB", {"\xEF\xBB"}},
    // No UTF-8: the name of a file, perhaps.
    {"gr\xFC\xDF\r\n", {"gr\xFC\xDF"}},
};

TEST(TextLines, LinesEndWithEitherLineEndOrWithTheText) {
  const support::TemporaryFolder folder;
  TextLines lines;
  for (const Row& row : kRows) {
    ASSERT_TRUE(lines.Take(row.text, "a text"));
    EXPECT_EQ(All(lines), row.lines) << row.text;
    ASSERT_TRUE(lines.Read(support::WriteBytes(folder / "a.txt", row.text)));
    EXPECT_EQ(All(lines), row.lines) << row.text;
  }
}

TEST(TextLines, NoLineIsBeforeTheFirstOrBehindTheLast) {
  TextLines lines;
  ASSERT_TRUE(lines.Take("one\ntwo\n", "a text"));
  EXPECT_THROW((void)lines.Line(0), std::out_of_range);
  EXPECT_EQ(lines.Line(2), "two");
  EXPECT_THROW((void)lines.Line(3), std::out_of_range);
}

TEST(TextLines, APlaceNamesTheTextAndTheLine) {
  const support::TemporaryFolder folder;
  TextLines lines;
  ASSERT_TRUE(lines.Take("one\n", "the answer"));
  EXPECT_EQ(lines.Place(2), "the answer, line 2");
  const fs::path file = support::WriteBytes(folder / "a.txt", "one\n");
  ASSERT_TRUE(lines.Read(file));
  EXPECT_EQ(lines.Place(1), file.string() + ", line 1");
}

TEST(TextLines, WhatHoldsAZeroByteIsNoText) {
  const support::TemporaryFolder folder;
  const std::string binary("one\ntw\0o\n", 9);
  TextLines lines;
  ASSERT_TRUE(lines.Take("lines of before\n", "a text"));
  const Result<> taken = lines.Take(binary, "the answer");
  ASSERT_FALSE(taken);
  EXPECT_EQ(taken.Why(), (Failure{FailureKind::NotValid, "the answer: not a text file"}));
  EXPECT_EQ(lines.Count(), 0U);
  const fs::path file = support::WriteBytes(folder / "a.txt", binary);
  const Result<> read = lines.Read(file);
  ASSERT_FALSE(read);
  EXPECT_EQ(read.Why(), (Failure{FailureKind::NotValid, file.string() + ": not a text file"}));
}

TEST(TextLines, AFileMayHaveTheLimitAndNoByteMore) {
  const support::TemporaryFolder folder;
  // Around the pieces in which files are read as well.
  for (const std::size_t limit : {std::size_t{0}, std::size_t{1}, std::size_t{4095}, std::size_t{4096},
                                  std::size_t{4097}, std::size_t{3} * 4096}) {
    TextLines lines;
    const fs::path file = support::WriteBytes(folder / "a.txt", std::string(limit, 'x'));
    ASSERT_TRUE(lines.Read(file, limit)) << limit;
    EXPECT_EQ(All(lines), limit == 0 ? Lines() : Lines{std::string(limit, 'x')}) << limit;
    support::WriteBytes(file, std::string(limit + 1, 'x'));
    const Result<> read = lines.Read(file, limit);
    ASSERT_FALSE(read) << limit;
    EXPECT_EQ(read.Why(), (Failure{FailureKind::NotValid, file.string() + ": too large"})) << limit;
    EXPECT_EQ(lines.Count(), 0U) << limit;
  }
}

TEST(TextLines, WithoutALimitOfTheCallersAMebibyteIsTheMost) {
  const support::TemporaryFolder folder;
  constexpr std::size_t kMebibyte = 1048576;
  TextLines lines;
  EXPECT_TRUE(lines.Read(support::WriteBytes(folder / "a.txt", std::string(kMebibyte, 'x'))));
  EXPECT_FALSE(lines.Read(support::WriteBytes(folder / "a.txt", std::string(kMebibyte + 1, 'x'))));
  // What is in memory already is taken.
  EXPECT_TRUE(lines.Take(std::string(kMebibyte + 1, 'x'), "a text"));
}

TEST(TextLines, WhatIsNoFileIsNamedAndNotWaitedFor) {
  const support::TemporaryFolder folder;
  fs::create_directory(folder / "folder");
  Failure missing{FailureKind::NotFound, (folder / "none").string() + ": there is no such file"};
  std::vector<std::pair<fs::path, Failure>> rows{
      {folder / "none", missing},
      {folder / "folder", {FailureKind::NotValid, (folder / "folder").string() + ": not a file"}}};
#ifndef _WIN32
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  rows.push_back({folder / "pipe", {FailureKind::NotValid, (folder / "pipe").string() + ": not a file"}});
  rows.push_back({"/dev/zero", {FailureKind::NotValid, "/dev/zero: not a file"}});
#endif
#ifdef __linux__
  // A file that can be opened, but not read from its start.
  rows.push_back({"/proc/self/mem", {FailureKind::Failed, "/proc/self/mem: cannot be read"}});
#endif
  for (const auto& [path, failure] : rows) {
    TextLines lines;
    ASSERT_TRUE(lines.Take("lines of before\n", "a text"));
    const Result<> read = lines.Read(path);
    ASSERT_FALSE(read) << path;
    EXPECT_EQ(read.Why(), failure) << read.Text();
    EXPECT_EQ(lines.Count(), 0U) << path;
  }
}

}  // namespace
}  // namespace kestrin::core::base
