// SPDX-License-Identifier: MIT
#include "core/update/PackedFonts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/base/PathText.h"
#include "core/update/FontCollection.h"
#include "support/TestFiles.h"

namespace kestrin::support {
namespace {

namespace fs = std::filesystem;

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;
using core::update::FontCollection;
using core::update::PackedFonts;
using testing::ElementsAre;
using testing::HasSubstr;

/// A collection whose packed sets hold one sound, named in their files.
class PackedFontsTest : public testing::Test {
 protected:
  PackedFontsTest() {
    fs::create_directory(m_fonts);
    fs::create_directory(m_private);
    Result<core::base::PrivateFolder> folder = core::base::PrivateFolder::Make(m_private);
    m_packed = std::make_shared<PackedFonts>(
        std::move(*folder), [this](const fs::path& file, const fs::path& place) { return Unpack(file, place); });
  }

  Result<fs::path> Unpack(const fs::path& file, const fs::path& folder) {
    ++m_unpackings;
    const std::string sound = ReadBytes(file);
    if (sound == "damaged") return Failure{FailureKind::NotValid, "it is damaged"};
    fs::create_directories(folder);
    WriteBytes(folder / (sound + ".lsu"), "the sound " + sound);
    return WriteBytes(folder / "any.lscfg", "BOOT\r\n" + sound + ".lsu\r\n 70\r\n");
  }
  [[nodiscard]] FontCollection Fonts() const { return FontCollection(m_fonts, m_packed); }
  [[nodiscard]] std::vector<std::string> Offered() const {
    std::vector<std::string> names;
    for (const FontCollection::Font& font : Fonts().Fonts())
      names.push_back(font.name + (font.lines ? "" : ": " + font.lines.Text()));
    return names;
  }

  TemporaryFolder m_folder;
  fs::path m_fonts = m_folder / "fonts";
  fs::path m_private = m_folder / "private";
  std::shared_ptr<PackedFonts> m_packed;
  int m_unpackings = 0;
};

TEST_F(PackedFontsTest, APackedSetIsAFontOfItsFilesName) {
  WriteBytes(m_fonts / "Ember (fine).ZIP", "on");
  WriteBytes(m_fonts / "notes.txt", "no font");
  EXPECT_THAT(Offered(), ElementsAre("Ember (fine)"));
  EXPECT_THAT(*Fonts().Find("Ember (fine)")->lines, ElementsAre("BOOT", "on.lsu", " 70"));
  EXPECT_EQ(ReadBytes(*Fonts().SoundFile("Ember (fine)", "on.lsu")), "the sound on");
  EXPECT_FALSE(Fonts().SoundFile("Ember (fine)", "any.lscfg"));
  EXPECT_FALSE(Fonts().Find("Ember (fine).ZIP"));
  EXPECT_EQ(m_unpackings, 1) << "once for all that is asked";
}

TEST_F(PackedFontsTest, AChangedFileIsUnpackedAgain) {
  const fs::path file = WriteBytes(m_fonts / "Ember.zip", "on");
  ASSERT_THAT(Offered(), ElementsAre("Ember"));
  const fs::path old = *Fonts().SoundFile("Ember", "on.lsu");
  WriteBytes(file, "other");
  EXPECT_FALSE(Fonts().SoundFile("Ember", "on.lsu"));
  EXPECT_EQ(ReadBytes(*Fonts().SoundFile("Ember", "other.lsu")), "the sound other");
  EXPECT_FALSE(fs::exists(old)) << "what it was before goes";

  // Of the same length, at another time.
  const auto time = fs::last_write_time(file);
  WriteBytes(file, "third");
  fs::last_write_time(file, time + std::chrono::hours(1));
  EXPECT_TRUE(Fonts().SoundFile("Ember", "third.lsu"));
  // Of another length, at the same time.
  WriteBytes(file, "the fourth");
  fs::last_write_time(file, time + std::chrono::hours(1));
  EXPECT_TRUE(Fonts().SoundFile("Ember", "the fourth.lsu"));
  EXPECT_EQ(m_unpackings, 4);
}

TEST_F(PackedFontsTest, WhatCannotBeUnpackedIsLeftOutAndNotTriedAtEveryRequest) {
  WriteBytes(m_fonts / "Bad.zip", "damaged");
  EXPECT_THAT(Offered(), ElementsAre("Bad: it is damaged"));
  EXPECT_FALSE(Fonts().Find("Bad"));
  EXPECT_FALSE(Fonts().Find("Bad"));
  EXPECT_EQ(m_unpackings, 1);
}

TEST_F(PackedFontsTest, TheRulesForNamesAreThoseOfFolders) {
  WriteBytes(m_fonts / "a&b.zip", "on");
  WriteBytes(m_fonts / "fnt.zip", "on");
  fs::create_directory(m_fonts / "Ember");
  WriteBytes(m_fonts / "Ember" / "blade.lsu", "x");
  WriteBytes(m_fonts / "Ember" / "Ember.lscfg", "BOOT\r\nblade.lsu\r\n 70\r\n");
  WriteBytes(m_fonts / "Ember.zip", "on");
  const std::vector<std::string> offered = Offered();
  ASSERT_EQ(offered.size(), 4U);
  EXPECT_EQ(offered[0], "Ember");
  EXPECT_THAT(offered[1], HasSubstr("another font of that name"));
  EXPECT_THAT(offered[2], HasSubstr("no name that every computer takes"));
  EXPECT_THAT(offered[3], HasSubstr("clients keep a file of that name"));
  EXPECT_TRUE(Fonts().SoundFile("Ember", "blade.lsu")) << "the folder's";
  EXPECT_FALSE(Fonts().SoundFile("Ember", "on.lsu"));
}

TEST_F(PackedFontsTest, OfNamesThatDifferInTheCaseOfLettersOnlyOneIsOffered) {
  WriteBytes(m_fonts / "Ember.zip", "on");
  WriteBytes(m_fonts / "ember.zip", "off");
  EXPECT_THAT(Offered(), ElementsAre("Ember", HasSubstr("case of its letters")));
  EXPECT_FALSE(Fonts().Find("ember"));
}

TEST_F(PackedFontsTest, WithoutAnUnpackerPackedSetsAreLeftAlone) {
  WriteBytes(m_fonts / "Ember.zip", "on");
  EXPECT_TRUE(FontCollection(m_fonts).Fonts().empty());
}

TEST_F(PackedFontsTest, WhatWasUnpackedGoesWithTheServer) {
  WriteBytes(m_fonts / "Ember.zip", "on");
  ASSERT_THAT(Offered(), ElementsAre("Ember"));
  EXPECT_FALSE(fs::is_empty(m_private));
  m_packed.reset();
  EXPECT_TRUE(fs::is_empty(m_private));
}

}  // namespace
}  // namespace kestrin::support
