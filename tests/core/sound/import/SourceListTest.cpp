// SPDX-License-Identifier: MIT
#include "sound/import/SourceList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/PathText.h"
#include "sound/LSU_SoundFile.h"
#include "sound/import/SoundEnding.h"
#include "support/FakeArchives.h"

namespace kestrin::core::sound {
namespace {

using support::FakeArchives;
using support::ReadBytes;
using support::WriteBytes;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;

class SourceListTest : public testing::Test {
 protected:
  SourceListTest() { std::filesystem::create_directory(m_temporary); }

  [[nodiscard]] std::filesystem::path File(const std::filesystem::path& name) const {
    std::filesystem::create_directories((m_folder / name).parent_path());
    return WriteBytes(m_folder / name, "x");
  }
  [[nodiscard]] static std::vector<std::string> Names(const SourceList& list) {
    std::vector<std::string> names;
    for (const ImportSource& source : list.Sources()) names.push_back(source.name);
    return names;
  }
  [[nodiscard]] std::ptrdiff_t Leftovers() const {
    return std::distance(std::filesystem::directory_iterator(m_temporary), {});
  }

  support::TemporaryFolder m_folder;
  std::filesystem::path m_temporary = m_folder / "temporary";
  FakeArchives m_archives;
};

TEST_F(SourceListTest, AFileThatIsNamedIsTakenWhateverItIsCalled) {
  SourceList list(m_archives, m_temporary);
  EXPECT_TRUE(list.Add(File("clash.WAV")));
  EXPECT_TRUE(list.Add(File("no ending")));
  EXPECT_TRUE(list.Add(m_folder / "missing.mp3"));
  ASSERT_THAT(Names(list), ElementsAre("clash", "no ending", "missing"));
  EXPECT_EQ(list.Sources()[0].file, m_folder / "clash.WAV");
  EXPECT_EQ(list.Sources()[0].shownAs, base::TextOf(m_folder / "clash.WAV"));
  for (const ImportSource& source : list.Sources()) EXPECT_EQ(source.reason, "");
}

TEST_F(SourceListTest, OfAFolderWhatEndsLikeASoundIsTakenAsPeopleCount) {
  for (const char* name : {"set/swing 10.wav", "set/swing 2.FLAC", "set/deep/er/hum.ogg", "set/notes.txt", "set/wav",
                           "set/voice.m4a", "set/.hidden.wav", "set/.git/x.wav", "set/__MACOSX/y.wav"})
    (void)File(name);
  SourceList list(m_archives, m_temporary);
  EXPECT_TRUE(list.Add(m_folder / "set"));
  EXPECT_THAT(Names(list), ElementsAre("hum", "swing 2", "swing 10", "voice"));
  EXPECT_THAT(list.Sources(), testing::Each(Field(&ImportSource::reason, "")));
}

TEST_F(SourceListTest, ASoundOfTheBoardIsASoundLikeAnyOther) {
  (void)File("set/boot.lsu");
  SourceList list(m_archives, m_temporary);
  EXPECT_TRUE(list.Add(m_folder / "set"));
  EXPECT_TRUE(list.Add(m_archives.Put(m_folder / "a.zip", {FakeArchives::File("idle.LSU", "x")})));
  ASSERT_THAT(Names(list), ElementsAre("boot", "idle"));
  for (const ImportSource& source : list.Sources()) {
    EXPECT_EQ(source.reason, "");
    EXPECT_TRUE(LSU_SoundFile::HasSoundName(source.file)) << "whoever imports it tells it by its name";
  }
}

TEST_F(SourceListTest, WhatHoldsNoSoundsIsTold) {
  (void)File("set/notes.txt");
  SourceList list(m_archives, m_temporary);
  EXPECT_TRUE(list.Add(m_folder / "set"));
  EXPECT_TRUE(list.Add(m_archives.Put(m_folder / "a.zip", {FakeArchives::File("notes.txt", "x")})));
  EXPECT_TRUE(list.Add(WriteBytes(m_folder / "b.ZIP", "none")));
  ASSERT_EQ(list.Sources().size(), 3U);
  EXPECT_EQ(list.Sources()[0].reason, "There are no sounds in it.");
  EXPECT_EQ(list.Sources()[0].shownAs, base::TextOf(m_folder / "set"));
  EXPECT_EQ(list.Sources()[1].reason, "There are no sounds in it.");
  EXPECT_EQ(list.Sources()[2].reason, base::Quoted(m_folder / "b.ZIP") + " is no archive.");
}

TEST_F(SourceListTest, WhatAnArchiveHoldsIsUnpackedForAsLongAsTheListLives) {
  {
    SourceList list(m_archives, m_temporary);
    EXPECT_TRUE(list.Add(m_archives.Put(
        m_folder / "a.zip",
        {FakeArchives::Folder("swing/"), FakeArchives::File("swing/10.wav", "ten"),
         FakeArchives::File("swing/9.Mp3", "nine"), FakeArchives::File("readme.txt", "no"),
         FakeArchives::File("__MACOSX/swing/._9.mp3", "no"), FakeArchives::Refused("locked.wav", "It is locked.")})));
    ASSERT_THAT(Names(list), ElementsAre("locked", "9", "10"));
    EXPECT_EQ(list.Sources()[0].reason, "It is locked.");
    EXPECT_EQ(ReadBytes(list.Sources()[1].file), "nine");
    EXPECT_EQ(list.Sources()[1].shownAs, base::TextOf(m_folder / "a.zip") + "/swing/9.Mp3");
    EXPECT_EQ(ReadBytes(list.Sources()[2].file), "ten");
    EXPECT_EQ(list.Sources()[2].file.extension(), ".wav");
    EXPECT_EQ(Leftovers(), 1);
  }
  EXPECT_EQ(Leftovers(), 0);
}

TEST_F(SourceListTest, NothingOfAnArchiveGoesAnywhereElse) {
  SourceList list(m_archives, m_temporary);
  const std::vector<std::string> names{"../../evil.wav", "/abs.wav", "C:\\x.wav",
                                       "..\\..\\y.wav",  "NUL.wav",  "a\nb.wav",
                                       "twin.wav",       "TWIN.wav", std::string(300, 'l') + ".wav",
                                       "x.wav/..\\z.wav"};
  std::vector<FakeArchives::Entry> entries;
  for (const std::string& name : names) entries.push_back(FakeArchives::File(name, name));
  EXPECT_TRUE(list.Add(m_archives.Put(m_folder / "a.zip", entries)));
  ASSERT_EQ(list.Sources().size(), names.size());
  std::vector<std::string> contents;
  for (const ImportSource& source : list.Sources()) {
    EXPECT_EQ(source.reason, "");
    EXPECT_EQ(source.file.parent_path().parent_path(), m_temporary);
    contents.push_back(ReadBytes(source.file));
    EXPECT_EQ(source.name.find_first_of("/\\\n"), source.name.npos);
    EXPECT_EQ(source.shownAs.find(".."), source.shownAs.npos);
  }
  EXPECT_THAT(contents, testing::UnorderedElementsAreArray(names));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_folder.Path()), {}), 2)
      << "the archive, and what is temporary";
}

TEST_F(SourceListTest, ADamagedSoundEndsNothing) {
  SourceList list(m_archives, m_temporary);
  FakeArchives::Entry damaged = FakeArchives::File("b.wav", "bbbb");
  damaged.flaw = "It is damaged.";
  EXPECT_TRUE(list.Add(m_archives.Put(m_folder / "a.zip",
                                      {FakeArchives::File("a.wav", "a"), damaged, FakeArchives::File("c.wav", "c")})));
  ASSERT_THAT(Names(list), ElementsAre("a", "b", "c"));
  EXPECT_EQ(list.Sources()[1].reason, "It is damaged.");
  EXPECT_TRUE(list.Sources()[1].file.empty());
  EXPECT_EQ(list.Sources()[2].reason, "");
  const std::filesystem::path unpacked = list.Sources()[0].file.parent_path();
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(unpacked), {}), 2) << "no half of a file stays";
}

TEST_F(SourceListTest, ArchivesFillNoDisk) {
  SourceList list(m_archives, m_temporary, {.bytesOfOne = 6, .bytesInAll = 10});
  EXPECT_TRUE(list.Add(
      m_archives.Put(m_folder / "a.zip", {FakeArchives::File("a.wav", "1234567"), FakeArchives::File("b.wav", "123456"),
                                          FakeArchives::File("c.wav", "12345"), FakeArchives::File("d.wav", "1234")})));
  ASSERT_EQ(list.Sources().size(), 4U);
  EXPECT_EQ(list.Sources()[0].reason, "It is too large.") << "for one";
  EXPECT_EQ(list.Sources()[1].reason, "");
  EXPECT_EQ(list.Sources()[2].reason, "It is too large.") << "for what is left of all";
  EXPECT_EQ(list.Sources()[3].reason, "");
}

TEST_F(SourceListTest, SoManySoundsAndNoMore) {
  for (int i = 0; i < 5; ++i) (void)File("set/" + std::to_string(i) + ".wav");
  SourceList list(m_archives, m_temporary, {.sounds = 3});
  EXPECT_TRUE(list.Add(m_folder / "set"));
  ASSERT_THAT(Names(list), ElementsAre("0", "1", "2", "set"));
  EXPECT_THAT(list.Sources()[3].reason, HasSubstr("more than 3 sounds"));
}

TEST_F(SourceListTest, NoTreeIsTooDeepOrTooWideToEnd) {
  (void)File("deep/1/2/3/x.wav");
  (void)File("deep/a.wav");
  SourceList deep(m_archives, m_temporary, {.depth = 2});
  EXPECT_TRUE(deep.Add(m_folder / "deep"));
  EXPECT_THAT(deep.Sources().back().reason, HasSubstr("more in this folder than can be looked at"));

  for (int i = 0; i < 10; ++i) (void)File("wide/" + std::to_string(i) + ".txt");
  SourceList wide(m_archives, m_temporary, {.entries = 9});
  EXPECT_TRUE(wide.Add(m_folder / "wide"));
  ASSERT_EQ(wide.Sources().size(), 1U);
  EXPECT_THAT(wide.Sources()[0].reason, HasSubstr("more in this folder than can be looked at"));
}

TEST_F(SourceListTest, CanBeStoppedAnywhere) {
  for (int i = 0; i < 5; ++i) (void)File("set/" + std::to_string(i) + ".wav");
  (void)m_archives.Put(m_folder / "a.zip", {FakeArchives::File("a.wav", "aa"), FakeArchives::File("b.wav", "bb")});
  for (const char* named : {"set", "a.zip"}) {
    bool whole = false;
    for (int turns = 0; !whole; ++turns) {
      ASSERT_LT(turns, 100);
      SourceList list(m_archives, m_temporary);
      int left = turns;
      whole = list.Add(m_folder / named, [&] { return left-- > 0; });
      EXPECT_EQ(whole, left >= 0) << "it is asked again only when it said true";
    }
  }
  EXPECT_EQ(Leftovers(), 0);
}

TEST_F(SourceListTest, SaysWhenNothingCanBeUnpacked) {
  SourceList list(m_archives, m_folder / "no such folder");
  EXPECT_TRUE(list.Add(m_archives.Put(m_folder / "a.zip", {FakeArchives::File("a.wav", "a")})));
  ASSERT_EQ(list.Sources().size(), 1U);
  EXPECT_THAT(list.Sources()[0].reason, HasSubstr("No folder could be made"));
}

#ifndef _WIN32
TEST_F(SourceListTest, LinksToFoldersLeadNowhere) {
  (void)File("set/a.wav");
  std::filesystem::create_directory_symlink(m_folder / "set", m_folder / "set" / "again");
  std::filesystem::create_symlink(m_folder / "set" / "a.wav", m_folder / "set" / "b.wav");
  std::filesystem::create_directory_symlink(m_folder / "set", m_folder / "shortcut");
  SourceList list(m_archives, m_temporary);
  EXPECT_TRUE(list.Add(m_folder / "shortcut")) << "but one that is named is followed";
  EXPECT_THAT(Names(list), ElementsAre("a", "b"));
}

TEST_F(SourceListTest, WhatIsUnpackedIsNobodyElses) {
  SourceList list(m_archives, m_temporary);
  EXPECT_TRUE(list.Add(m_archives.Put(m_folder / "a.zip", {FakeArchives::File("a.wav", "a")})));
  const auto folder = std::filesystem::directory_iterator(m_temporary)->path();
  EXPECT_EQ(std::filesystem::status(folder).permissions(), std::filesystem::perms::owner_all);
}
#endif

TEST(SoundEndings, AreKnownInAnyLetterCase) {
  EXPECT_EQ(EndingOf(std::filesystem::path("a.b/c.WaV")), SoundEnding::Readable);
  EXPECT_EQ(EndingOf(std::filesystem::path("a.wav/c")), SoundEnding::None);
  EXPECT_EQ(EndingOfName("x.m4a"), SoundEnding::Foreign);
  EXPECT_EQ(EndingOfName("x.Wma"), SoundEnding::Foreign);
  EXPECT_EQ(EndingOfName("x.LSU"), SoundEnding::OfTheBoard);
  EXPECT_EQ(EndingOfName("wav"), SoundEnding::None);
  EXPECT_EQ(EndingOfName("x.wavx"), SoundEnding::None);
  EXPECT_THAT(EndingsOf(SoundEnding::Readable),
              AllOf(testing::Contains("flac"), testing::Contains("opus"), testing::Not(testing::Contains("lsu"))));
  EXPECT_THAT(EndingsOf(SoundEnding::OfTheBoard), ElementsAre("lsu"));
}

}  // namespace
}  // namespace kestrin::core::sound
