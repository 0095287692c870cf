// SPDX-License-Identifier: MIT
#include "core/update/FontAnswers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/update/HostileNames.h"
#include "core/update/UpdateUtils.h"
#include "support/TestFiles.h"

namespace kestrin::support {
namespace {

namespace fs = std::filesystem;
using core::update::FontAnswers;
using core::update::FontCollection;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FontAnswersTest : public testing::Test {
 protected:
  FontAnswersTest() { fs::create_directories(m_fonts); }

  /// A font of one sound, saved by somebody on another kind of computer.
  void AddFont(const std::string& name, const std::string& sound = "blade on.lsu") {
    fs::create_directories(m_fonts / name);
    WriteBytes(m_fonts / name / sound, "sound of " + name);
    WriteBytes(m_fonts / name / (name + ".lscfg"), "BOOT\r\nC:\\My sounds\\" + sound + "\r\n 70\r\n");
  }
  [[nodiscard]] std::string Text(const std::string& body) const { return Answers().Text(body).text; }
  [[nodiscard]] FontAnswers Answers() const { return FontAnswers(FontCollection(m_fonts)); }
  [[nodiscard]] std::string ProblemOf(const std::string& name) const {
    for (const FontCollection::Font& font : FontCollection(m_fonts).Fonts())
      if (font.name == name) return font.lines.Text();
    return "no such font";
  }

  TemporaryFolder m_folder;
  fs::path m_fonts = m_folder / "fonts";
};

constexpr const char* kRefused = "status:REFUSED\r\nclientv:1";

TEST_F(FontAnswersTest, TheCatalogueNamesTheFontsInOrder) {
  AddFont("Zeta");
  AddFont("Alpha (fine)");
  EXPECT_EQ(Text("svc=gct&did=4B535401"), "status:OK\r\nclientv:1\r\nAlpha (fine)\r\nZeta");
}

TEST_F(FontAnswersTest, ASingleFontIsFollowedByAnEmptyLineAndNothingIsOfNoFont) {
  EXPECT_EQ(Text("svc=gct&did=1"), "status:OK\r\nclientv:1");
  AddFont("Only");
  EXPECT_EQ(Text("svc=gct&did=1"), "status:OK\r\nclientv:1\r\nOnly\r\n");
  EXPECT_EQ(Text("svc=fqr&did=1&fid="), "status:OK\r\nclientv:1");
}

TEST_F(FontAnswersTest, AFontIsItsLinesWithBareSoundNames) {
  AddFont("Alpha");
  EXPECT_EQ(Text("svc=fqr&did=1&fid=Alpha"), "status:OK\r\nclientv:1\r\nBOOT\r\nblade on.lsu\r\n 70");
}

TEST_F(FontAnswersTest, LinesMayEndInEitherWay) {
  AddFont("Alpha");
  WriteBytes(m_fonts / "Alpha" / "Alpha.lscfg", "BOOT\n/home/me/BLADE ON.LSU\n 70");
  WriteBytes(m_fonts / "Alpha" / "BLADE ON.LSU", "x");
  EXPECT_EQ(Text("svc=fqr&did=1&fid=Alpha"), "status:OK\r\nclientv:1\r\nBOOT\r\nBLADE ON.LSU\r\n 70");
}

TEST_F(FontAnswersTest, AConfigurationIsReadAsWhoeverOpensItReadsIt) {
  AddFont("Alpha");
  const fs::path set = m_fonts / "Alpha" / "Alpha.lscfg";
  WriteBytes(set,
             "\xEF\xBB\xBF"
             "BOOT\r\nblade on.lsu\r\n 70\r\n");
  EXPECT_EQ(Text("svc=fqr&did=1&fid=Alpha"), "status:OK\r\nclientv:1\r\nBOOT\r\nblade on.lsu\r\n 70");
  WriteBytes(set, std::string("BOOT\r\nblade on.lsu\0\r\n 70\r\n", 26));
  EXPECT_EQ(ProblemOf("Alpha"), "Alpha.lscfg is no text file. Save the set again.");
}

TEST_F(FontAnswersTest, ASoundOfTheFontIsSent) {
  AddFont("A and B");
  const FontAnswers::Answer answer = Answers().Download("svc=dld&did=1&fid=A and B&ffd=blade on.lsu");
  EXPECT_EQ(answer.status, 200);
  ASSERT_TRUE(answer.file);
  EXPECT_EQ(ReadBytes(*answer.file), "sound of A and B");
}

TEST_F(FontAnswersTest, NothingElseIsSent) {
  AddFont("Alpha");
  AddFont("Beta", "beta.lsu");
  WriteBytes(m_fonts / "Alpha" / "secret.lsu", "not in the list");
  WriteBytes(m_folder / "outside.lsu", "outside");
  for (const char* body : {
           "svc=dld&did=1&fid=Alpha&ffd=secret.lsu",
           "svc=dld&did=1&fid=Alpha&ffd=Alpha.lscfg",
           "svc=dld&did=1&fid=Alpha&ffd=BOOT",
           "svc=dld&did=1&fid=Alpha&ffd=beta.lsu",
           "svc=dld&did=1&fid=Alpha&ffd=../Beta/beta.lsu",
           "svc=dld&did=1&fid=Alpha/../Beta&ffd=beta.lsu",
           "svc=dld&did=1&fid=..&ffd=outside.lsu",
           "svc=dld&did=1&fid=.&ffd=../outside.lsu",
           "svc=dld&did=1&fid=&ffd=../outside.lsu",
           "svc=dld&did=1&fid=Alpha&ffd=",
           "svc=dld&did=1&fid=Alpha",
           "svc=dld&did=1&ffd=blade on.lsu",
           "svc=fqr&did=1&fid=Alpha&ffd=blade on.lsu",
           "x&svc=dld&did=1&fid=Alpha&ffd=blade on.lsu",
           "",
       }) {
    const FontAnswers::Answer answer = Answers().Download(body);
    EXPECT_EQ(answer.status, 404) << body;
    EXPECT_FALSE(answer.file) << body;
    EXPECT_EQ(answer.text, "") << body;
  }
}

TEST_F(FontAnswersTest, OtherQuestionsAreRefused) {
  AddFont("Alpha");
  for (const char* body : {"svc=fqr&did=1&fid=Beta", "svc=fqr&did=1&fid=..", "svc=fqr&did=1&fid=Alpha/",
                           "svc=dld&did=1&fid=Alpha&ffd=blade on.lsu", "svc=", "svc=xyz", "", "hello", "fid=Alpha"})
    EXPECT_EQ(Text(body), kRefused) << body;
}

TEST_F(FontAnswersTest, WhatCannotBeOfferedIsLeftOutAndSaysWhy) {
  AddFont("Fine");
  AddFont("Also fine");
  fs::create_directories(m_fonts / "Empty");
  AddFont("Lost");
  fs::remove(m_fonts / "Lost" / "blade on.lsu");
  AddFont("Hollow");
  WriteBytes(m_fonts / "Hollow" / "blade on.lsu", "");
  AddFont("Other");
  WriteBytes(m_fonts / "Other" / "Other.lscfg", "BOOT\r\nC:\\a\\boot.wav\r\n 70\r\n");
  AddFont("Two");
  fs::rename(m_fonts / "Two" / "Two.lscfg", m_fonts / "Two" / "a.lscfg");
  WriteBytes(m_fonts / "Two" / "b.lscfg", "");
  WriteBytes(m_fonts / "file", "no folder");
  EXPECT_EQ(Text("svc=gct&did=1"), "status:OK\r\nclientv:1\r\nAlso fine\r\nFine");
  EXPECT_EQ(ProblemOf("Fine"), "");
  EXPECT_THAT(ProblemOf("Empty"), HasSubstr("best named Empty.lscfg"));
  EXPECT_THAT(ProblemOf("Lost"), HasSubstr("blade on.lsu is not in the folder"));
  EXPECT_THAT(ProblemOf("Hollow"), HasSubstr("blade on.lsu is empty"));
  EXPECT_THAT(ProblemOf("Other"), HasSubstr("boot.wav cannot be sent"));
  EXPECT_THAT(ProblemOf("Two"), HasSubstr("one configuration file"));
  EXPECT_EQ(Text("svc=fqr&did=1&fid=Lost"), kRefused);
}

TEST_F(FontAnswersTest, TheOnlyConfigurationFileMayHaveAnyName) {
  AddFont("Alpha");
  fs::rename(m_fonts / "Alpha" / "Alpha.lscfg", m_fonts / "Alpha" / "my set.LSCFG");
  EXPECT_EQ(ProblemOf("Alpha"), "");
}

/// Whether a file or folder of this name can be made here, and a line can hold it.
bool CanBeStoredHere(const std::string& name) {
  constexpr std::size_t kLongestHere = 240;
  return name.find_first_of(std::string_view("/\0\r\n\\", 5)) == name.npos && name.size() <= kLongestHere &&
         name.find_first_not_of('.') != name.npos;
}

TEST_F(FontAnswersTest, FontsOfNamesThatClientsRefuseAreLeftOut) {
  AddFont("Fine");
  int made = 0;
  for (const std::string& name : HostileNames()) {
    if (!CanBeStoredHere(name)) continue;
    AddFont(name);
    EXPECT_THAT(ProblemOf(name), HasSubstr("Rename it")) << name;
    EXPECT_EQ(Text("svc=fqr&did=1&fid=" + name), kRefused) << name;
    ++made;
  }
  EXPECT_GT(made, 40);
  EXPECT_EQ(Text("svc=gct&did=1"), "status:OK\r\nclientv:1\r\nFine\r\n");
}

TEST_F(FontAnswersTest, FontsWithSoundsOfNamesThatClientsRefuseAreLeftOut) {
  int made = 0;
  for (const std::string& name : HostileNames()) {
    if (!CanBeStoredHere(name) || !core::update::UpdateUtils::NamesSound(name)) continue;
    AddFont("Alpha", name);
    EXPECT_THAT(ProblemOf("Alpha"), HasSubstr("Rename it")) << name;
    fs::remove_all(m_fonts / "Alpha");
    ++made;
  }
  EXPECT_GT(made, 25);
}

TEST_F(FontAnswersTest, OfNamesThatDifferInTheCaseOfLettersOnlyOneIsOffered) {
  AddFont("EMBER");
  AddFont("Ember");
  EXPECT_EQ(ProblemOf("EMBER"), "");
  EXPECT_THAT(ProblemOf("Ember"), HasSubstr("Rename one of them."));
  EXPECT_EQ(Text("svc=gct&did=1"), "status:OK\r\nclientv:1\r\nEMBER\r\n");
  EXPECT_EQ(Text("svc=fqr&did=1&fid=Ember"), kRefused);
  EXPECT_EQ(Answers().Download("svc=dld&did=1&fid=Ember&ffd=blade on.lsu").status, 404);
  // Without the other one it is offered.
  fs::remove(m_fonts / "EMBER" / "EMBER.lscfg");
  EXPECT_EQ(ProblemOf("Ember"), "");
  EXPECT_EQ(Answers().Download("svc=dld&did=1&fid=Ember&ffd=blade on.lsu").status, 200);

  AddFont("Twins", "a.lsu");
  WriteBytes(m_fonts / "Twins" / "A.lsu", "another");
  WriteBytes(m_fonts / "Twins" / "Twins.lscfg", "BOOT\na.lsu\n 70\nPWRON\nA.lsu\n 70");
  EXPECT_THAT(ProblemOf("Twins"), HasSubstr("A.lsu differs from another name in the case of its letters only"));
  // The same file twice is no twin.
  WriteBytes(m_fonts / "Twins" / "Twins.lscfg", "BOOT\na.lsu\n 70\nPWRON\na.lsu\n 70");
  EXPECT_EQ(ProblemOf("Twins"), "");
}

TEST_F(FontAnswersTest, AConfigurationThatIsLongerThanAnyAnswerIsNotEvenRead) {
  AddFont("Long");
  fs::resize_file(m_fonts / "Long" / "Long.lscfg", std::uintmax_t{16} * 1024 * 1024);
  EXPECT_EQ(ProblemOf("Long"), "Long.lscfg is too long for any client. Save the set again.");
}

TEST_F(FontAnswersTest, ASoundThatClientsRefuseForItsSizeIsLeftOut) {
  constexpr std::uintmax_t kMost = 67108864;
  AddFont("Long");
  fs::resize_file(m_fonts / "Long" / "blade on.lsu", kMost);
  EXPECT_EQ(ProblemOf("Long"), "");
  EXPECT_TRUE(Answers().Download("svc=dld&did=1&fid=Long&ffd=blade on.lsu").file);
  fs::resize_file(m_fonts / "Long" / "blade on.lsu", kMost + 1);
  EXPECT_EQ(ProblemOf("Long"), "blade on.lsu is larger than 64 MiB, which no client takes. Make it shorter.");
  EXPECT_EQ(Answers().Download("svc=dld&did=1&fid=Long&ffd=blade on.lsu").status, 404);
}

TEST_F(FontAnswersTest, AFontThatClientsRefuseForItsLengthIsLeftOut) {
  // With the two lines before them, clients take 10,000.
  std::string lines = "BOOT\r\nblade on.lsu\r\n";
  for (int i = 2; i < 9998; ++i) lines += "\r\n";
  AddFont("Endless");
  WriteBytes(m_fonts / "Endless" / "Endless.lscfg", lines);
  EXPECT_EQ(ProblemOf("Endless"), "");
  WriteBytes(m_fonts / "Endless" / "Endless.lscfg", lines + "\r\n");
  EXPECT_EQ(ProblemOf("Endless"), "Endless.lscfg has too many lines for any client. Save the set again.");
}

TEST_F(FontAnswersTest, NamesOfTheStoresOwnFilesAreLeftOut) {
  for (const char* name : {"fnt", "descriptor", "tmp", "FNT", "Descriptor"}) {
    AddFont(name);
    EXPECT_EQ(ProblemOf(name), "clients keep a file of that name beside the fonts. Rename it.") << name;
    fs::remove_all(m_fonts / name);
  }
  AddFont("tmp2");
  EXPECT_EQ(ProblemOf("tmp2"), "");
}

TEST_F(FontAnswersTest, LinksLeadNowhere) {
  AddFont("Alpha");
  WriteBytes(m_folder / "outside.lsu", "outside");
  fs::remove(m_fonts / "Alpha" / "blade on.lsu");
  fs::create_symlink(m_folder / "outside.lsu", m_fonts / "Alpha" / "blade on.lsu");
  EXPECT_FALSE(Answers().Download("svc=dld&did=1&fid=Alpha&ffd=blade on.lsu").file);
  fs::create_directory_symlink(m_fonts / "Alpha", m_fonts / "Beta");
  EXPECT_EQ(ProblemOf("Beta"), "no such font");
}

TEST_F(FontAnswersTest, ACollectionThatIsGoneHasNoFonts) {
  EXPECT_THAT(FontCollection(m_folder / "nothing").Fonts(), IsEmpty());
}

}  // namespace
}  // namespace kestrin::support
