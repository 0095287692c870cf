// SPDX-License-Identifier: MIT
#include "platform/desktop/CompiledHelp.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

#include "HelpFiles.h"
#include "core/base/PathText.h"
#include "ui/help/HelpContents.h"
#include "ui/help/HelpTopics.h"

namespace kestrin::platform::desktop {
namespace {

namespace fs = std::filesystem;
using testing::BytesOf;
using ::testing::HasSubstr;
using testing::SourcePage;
using testing::SourcePages;

/// What must hold for the file that the build puts beside the program and for the one that is kept for builds without a
/// help compiler.
class HelpFile : public ::testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Files, HelpFile, ::testing::Values(KESTRIN_HELP_FILE, KESTRIN_KEPT_HELP_FILE),
                         [](const auto& file) { return std::string(file.index == 0 ? "Built" : "Kept"); });

TEST_P(HelpFile, HoldsEveryPageByteForByteAndNoOther) {
  const CompiledHelp help(GetParam());
  ASSERT_EQ(help.Problem(), "");
  const std::vector<std::string> pages = help.Pages();
  EXPECT_EQ(std::set<std::string>(pages.begin(), pages.end()), SourcePages());
  for (const std::string& name : SourcePages()) {
    ASSERT_NE(SourcePage(name), "") << name;
    EXPECT_EQ(help.Page(name), SourcePage(name))
        << name << ": build the target refresh_help when the pages have changed";
  }
}

TEST_P(HelpFile, HoldsTheStyleSheetOfThePages) {
  EXPECT_EQ(CompiledHelp(GetParam()).Page("help.css"), SourcePage("help.css"));
}

TEST_P(HelpFile, LeadsEveryContextNumberToItsPlace) {
  const CompiledHelp help(GetParam());
  for (const auto& [context, place] : ui::help::HelpTopics())
    EXPECT_EQ(help.PlaceOf(static_cast<std::uint32_t>(context)), place) << static_cast<int>(context);
}

TEST_P(HelpFile, KnowsNoOtherContextNumbers) {
  std::set<std::uint32_t> known;
  for (const auto& topic : ui::help::HelpTopics()) known.insert(static_cast<std::uint32_t>(topic.context));
  const CompiledHelp help(GetParam());
  for (std::uint32_t number = 0; number < 3000; ++number)
    EXPECT_EQ(help.PlaceOf(number).has_value(), known.count(number) == 1) << number;
}

TEST_P(HelpFile, HasTheContentsOfTheSource) {
  const auto contents = CompiledHelp(GetParam()).Contents();
  EXPECT_GT(contents.size(), 10U);
  EXPECT_EQ(contents, ui::help::ReadHelpContents(SourcePage("contents.hhc")));
}

TEST_P(HelpFile, HasNoPageOfAnotherName) {
  const CompiledHelp help(GetParam());
  EXPECT_EQ(help.Page("nowhere.html"), std::nullopt);
  EXPECT_EQ(help.Page(""), std::nullopt);
  EXPECT_EQ(help.Page(std::string("overview.html\0x", 15)), std::nullopt);
  EXPECT_EQ(help.Page(std::string(100000, 'x')), std::nullopt);
}

/// A folder of its own for files that are not as they should be.
class DamagedHelp : public ::testing::Test {
 protected:
  DamagedHelp() { fs::create_directories(m_folder); }
  ~DamagedHelp() override {
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
  }

  fs::path Write(const std::string& bytes) {
    std::ofstream(m_file, std::ios::binary) << bytes;
    return m_file;
  }

  /// The file is refused in words for a person and gives nothing.
  static void ExpectRefused(const fs::path& file, const std::string& why) {
    const CompiledHelp help(file);
    ASSERT_THAT(help.Problem(), HasSubstr(why));
    EXPECT_EQ(help.Page("overview.html"), std::nullopt);
    EXPECT_EQ(help.PlaceOf(1000), std::nullopt);
    EXPECT_TRUE(help.Contents().empty());
    EXPECT_TRUE(help.Pages().empty());
  }

  const fs::path m_folder =
      fs::path(::testing::TempDir()) /
      (std::string("kestrin help ") + ::testing::UnitTest::GetInstance()->current_test_info()->name());
  const fs::path m_file = m_folder / "kestrinusb.chm";
  const std::string m_good = BytesOf(KESTRIN_HELP_FILE);
};

TEST_F(DamagedHelp, GoodFileIsReadWhateverLettersItsFolderHas) {
  // No code page of Windows has them all.
  const fs::path folder = m_folder / core::base::PathOf("\u00C5sa \u041E\u0440\u0442 \u5263");
  fs::create_directories(folder);
  std::ofstream(folder / "kestrinusb.chm", std::ios::binary) << m_good;
  const CompiledHelp help(folder / "kestrinusb.chm");
  EXPECT_EQ(help.Problem(), "");
  EXPECT_EQ(help.Page("overview.html"), SourcePage("overview.html"));
}

TEST_F(DamagedHelp, MissingFileIsNamedWithTheFolderWhereItBelongs) {
  ExpectRefused(m_file, "is missing");
  EXPECT_THAT(CompiledHelp(m_file).Problem(), HasSubstr("kestrinusb.chm"));
  EXPECT_THAT(CompiledHelp(m_file).Problem(), HasSubstr(m_folder.string()));
}

TEST_F(DamagedHelp, FilesNameCannotBreakItsMessage) {
  EXPECT_THAT(CompiledHelp(m_folder / "one\ntwo.chm").Problem(), HasSubstr("\"one?two.chm\""));
}

TEST_F(DamagedHelp, FolderInItsPlaceIsDamaged) {
  fs::create_directories(m_file);
  ExpectRefused(m_file, "is damaged");
}

TEST_F(DamagedHelp, UndamagedCopyIsRead) { EXPECT_EQ(CompiledHelp(Write(m_good)).Problem(), ""); }

TEST_F(DamagedHelp, FileThatEndsTooEarlyIsDamaged) {
  ASSERT_GT(m_good.size(), 10000U);
  for (std::size_t size = 0; size < 200; ++size) ExpectRefused(Write(m_good.substr(0, size)), "is damaged");
  for (std::size_t size = 200; size < m_good.size(); size += 97)
    ExpectRefused(Write(m_good.substr(0, size)), "is damaged");
  ExpectRefused(Write(m_good.substr(0, m_good.size() - 1)), "is damaged");
}

TEST_F(DamagedHelp, FileWithOneWrongBitAnywhereIsDamaged) {
  for (std::size_t at = 0; at < m_good.size(); at += at < 300 ? 1 : 61) {
    std::string bytes = m_good;
    bytes[at] = static_cast<char>(bytes[at] ^ (1 << at % 8));
    ExpectRefused(Write(bytes), "is damaged");
  }
}

TEST_F(DamagedHelp, FileWithSomethingBehindItsEndIsDamaged) { ExpectRefused(Write(m_good + '\0'), "is damaged"); }

TEST_F(DamagedHelp, OtherFilesAreDamaged) {
  ExpectRefused(Write("<html>This is not a help file, but long enough to be looked into.</html>"), "is damaged");
  ExpectRefused(Write(std::string(100000, '\xFF')), "is damaged");
}

}  // namespace
}  // namespace kestrin::platform::desktop
