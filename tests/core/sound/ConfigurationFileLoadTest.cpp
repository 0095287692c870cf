// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/sound/ConfigurationFile.h"
#include "support/RecordingConfigurationView.h"
#include "support/SoundSet.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

using support::TemporaryFolder;
using Calls = std::vector<std::string>;

class ConfigurationFileLoad : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"boot", "on", "off", "idle", "m1", "m2", "m3", "i1", "l1"})
      support::WriteSoundFile(m_folder / (std::string(name) + ".lsu"), support::SomeSamples(100));
    support::WriteSoundFile(m_folder / "silent.lsu", std::vector<std::int16_t>(100, 0));
  }

  /// A line with the path of a file in the folder.
  std::string At(const std::string& name) const { return (m_folder / name).string(); }

  /// Lines with CR LF behind each.
  static std::string Text(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\r\n";
    return text;
  }

  /// A whole configuration.
  std::string FullText() const {
    return Text({"BOOT", At("boot.lsu"), " 11",          "PWRON", At("on.lsu"), " 12",        "PWROFF", At("off.lsu"),
                 " 13",  "IDLE",         At("idle.lsu"), " 14",   "MOTION-2",   At("m1.lsu"), " 21",    At("m2.lsu"),
                 " 22",  "IMPACT-1",     At("i1.lsu"),   " 31",   "LOCKUP-1",   At("l1.lsu"), " 41"});
  }

  LoadResult Load(const std::string& bytes) {
    return ConfigurationFile::Load(support::WriteBytes(m_folder / "set.lscfg", bytes), m_configuration, m_view);
  }

  void ExpectFull() {
    EXPECT_EQ(m_configuration.CheckIntegrity(), 0);
    EXPECT_EQ(m_configuration.TotalNrOfSamples(), 800);
    std::vector<int> volumes;
    std::vector<std::string> names;
    for (const SlotFile& entry : m_configuration.FilesInFlashOrder()) {
      volumes.push_back(entry.file->Volume());
      names.push_back(entry.file->FileNameAndPath().filename().string());
    }
    EXPECT_EQ(volumes, (std::vector<int>{11, 12, 13, 14, 21, 22, 31, 41}));
    EXPECT_EQ(names, (std::vector<std::string>{"boot.lsu", "on.lsu", "off.lsu", "idle.lsu", "m1.lsu", "m2.lsu",
                                               "i1.lsu", "l1.lsu"}));
  }

  TemporaryFolder m_folder;
  LSU_Configuration m_configuration;
  support::RecordingConfigurationView m_view;
};

TEST_F(ConfigurationFileLoad, FillsSlotsListsAndVolumesAndShowsEachStep) {
  const LoadResult result = Load(FullText());
  EXPECT_TRUE(result.valid);
  EXPECT_EQ(result.Message(), "");
  EXPECT_EQ(result.valid.Text(), "");
  ExpectFull();
  EXPECT_EQ(m_view.Calls(), (Calls{"empty boot",
                                   "show boot 1 boot.lsu",
                                   "memory",
                                   "empty pwron",
                                   "show pwron 1 on.lsu",
                                   "memory",
                                   "empty pwroff",
                                   "show pwroff 1 off.lsu",
                                   "memory",
                                   "empty idle",
                                   "show idle 1 idle.lsu",
                                   "memory",
                                   "empty motion",
                                   "show motion 1 m1.lsu",
                                   "memory",
                                   "show motion 2 m2.lsu",
                                   "memory",
                                   "empty impact",
                                   "show impact 1 i1.lsu",
                                   "memory",
                                   "empty lockup",
                                   "show lockup 1 l1.lsu",
                                   "memory",
                                   "memory"}));
}

TEST_F(ConfigurationFileLoad, LineEndsMayBeEitherAndTheLastMayBeMissing) {
  const std::string text = FullText();
  std::string unixText;
  for (const char c : text)
    if (c != '\r') unixText += c;
  for (const std::string& bytes : {unixText, text.substr(0, text.size() - 2), text.substr(0, text.size() - 1),
                                   unixText.substr(0, unixText.size() - 1), "\xEF\xBB\xBF" + text, text + "\r\n",
                                   text + "more than any reader looks at"}) {
    m_configuration = LSU_Configuration();
    const LoadResult result = Load(bytes);
    EXPECT_TRUE(result.valid) << result.valid.Text();
    ExpectFull();
  }
}

TEST_F(ConfigurationFileLoad, KeywordsMayHaveAnyCase) {
  std::string text = FullText();
  for (const auto& [keyword, other] : std::vector<std::pair<std::string, std::string>>{{"BOOT", "boot"},
                                                                                       {"PWRON", "PwrOn"},
                                                                                       {"PWROFF", "pwroff"},
                                                                                       {"IDLE", "Idle"},
                                                                                       {"MOTION", "motion"},
                                                                                       {"IMPACT", "Impact"},
                                                                                       {"LOCKUP", "lockUP"}})
    text.replace(text.find(keyword), keyword.size(), other);
  EXPECT_TRUE(Load(text).valid);
  ExpectFull();
}

TEST_F(ConfigurationFileLoad, BlanksAroundNumbersAreIgnored) {
  EXPECT_TRUE(
      Load(Text({"BOOT", At("boot.lsu"), "  11  ",       "PWRON", At("on.lsu"), "12 ",        "PWROFF", At("off.lsu"),
                 "13",   "IDLE",         At("idle.lsu"), "+14",   "MOTION- 2 ", At("m1.lsu"), "\t21",   At("m2.lsu"),
                 " 22",  "IMPACT-01",    At("i1.lsu"),   "3 1",   "LOCKUP-1",   At("l1.lsu"), "41"}))
          .valid);
  ExpectFull();
}

TEST_F(ConfigurationFileLoad, AVolumeIsANumberRoundedHalvesToEven) {
  struct Row {
    const char* line;
    int volume;
  };
  constexpr Row kRows[] = {{" 100", 100},
                           {"-5", -5},
                           {"- 5", -5},
                           {"2.5", 2},
                           {"3.5", 4},
                           {"-2.5", -2},
                           {"2.51", 3},
                           {"1e2", 100},
                           {"70 %", 70},
                           {"0", 0},
                           {"", 0},
                           {"loud", 0},
                           {" 32767", 32767},
                           {"-32768", -32768},
                           {"32767.4", 32767},
                           {"-32768.5", -32768}};
  for (const Row& row : kRows) {
    m_configuration = LSU_Configuration();
    (void)Load(Text({"BOOT", At("boot.lsu"), row.line}));
    EXPECT_EQ(m_configuration.GetVolume(SlotKind::Boot, 1), row.volume) << row.line;
  }
}

TEST_F(ConfigurationFileLoad, AnEmptyPathLeavesASingleSlotEmptyWithItsVolume) {
  const LoadResult result = Load(Text({"BOOT", "", " 55", "PWRON", "", " 56", "PWROFF", "", " 57", "IDLE", "", " 58",
                                       "MOTION-0", "IMPACT-0", "LOCKUP-0"}));
  EXPECT_TRUE(result.valid);
  EXPECT_EQ(result.Message(), "");
  EXPECT_EQ(m_configuration.CheckIntegrity(), 1);
  EXPECT_EQ(m_configuration.GetVolume(SlotKind::Boot, 1), 55);
  EXPECT_EQ(m_configuration.GetVolume(SlotKind::PwrOn, 1), 56);
  EXPECT_EQ(m_configuration.GetVolume(SlotKind::PwrOff, 1), 57);
  EXPECT_EQ(m_configuration.GetVolume(SlotKind::Idle, 1), 58);
  EXPECT_EQ(m_view.Calls(), (Calls{"empty boot", "memory", "empty pwron", "memory", "empty pwroff", "memory",
                                   "empty idle", "memory", "empty motion", "empty impact", "empty lockup", "memory"}));
}

TEST_F(ConfigurationFileLoad, AnEmptyPathInAListTakesNoPosition) {
  std::string text = FullText();
  text.replace(text.find("MOTION-2\r\n"), 10, "MOTION-4\r\n\r\n 91\r\n");
  text.replace(text.find("IMPACT-1\r\n"), 10, "\r\n 92\r\nIMPACT-1\r\n");
  const LoadResult result = Load(text);
  EXPECT_TRUE(result.valid) << result.valid.Text();
  EXPECT_EQ(result.Message(), "");
  ExpectFull();
}

TEST_F(ConfigurationFileLoad, FilesThatAreGoneOrNotValidAreListedAndTheRestLoads) {
  const std::string none = At("none.lsu");
  const std::string silent = At("silent.lsu");
  support::WriteBytes(m_folder / "notes.txt", "no sound");
  const LoadResult result = Load(
      Text({"BOOT", silent,         " 61", "PWRON",    At("on.lsu"), " 12", "PWROFF",   none,         " 63",
            "IDLE", At("idle.lsu"), " 14", "MOTION-4", At("m1.lsu"), " 21", none,       " 64",        At("notes.txt"),
            " 65",  At("m2.lsu"),   " 22", "IMPACT-1", At(""),       " 66", "LOCKUP-1", At("l1.lsu"), " 41"}));
  EXPECT_TRUE(result.valid) << result.valid.Text();
  EXPECT_EQ(result.Message(), "The following files could not be found or are not valid:\n" + silent + "\n" + none +
                                  "\n" + none + "\n" + At("notes.txt") + "\n" + At(""));
  // Their rows count those that loaded, too.
  EXPECT_EQ(result.failed, (std::vector<MissingSound>{{{SlotKind::Boot, 1}, silent, 61},
                                                      {{SlotKind::PwrOff, 1}, none, 63},
                                                      {{SlotKind::Motion, 2}, none, 64},
                                                      {{SlotKind::Motion, 3}, At("notes.txt"), 65},
                                                      {{SlotKind::Impact, 1}, At(""), 66}}));
  // The slots of the failures are empty, and the volumes went nowhere.
  EXPECT_EQ(m_configuration.Count(SlotKind::Boot), 0);
  EXPECT_TRUE(m_configuration.FileAt(SlotKind::Boot).FileNameAndPath().empty());
  EXPECT_EQ(m_configuration.GetVolume(SlotKind::Boot, 1), 100);
  EXPECT_TRUE(m_configuration.FileAt(SlotKind::PwrOff).FileNameAndPath().empty());
  EXPECT_EQ(m_configuration.GetVolume(SlotKind::PwrOff, 1), 100);
  EXPECT_EQ(m_configuration.NrOfMt(), 2);
  EXPECT_EQ(m_configuration.GetMtFile(2).FileNameAndPath(), m_folder / "m2.lsu");
  EXPECT_EQ(m_configuration.GetVolume(SlotKind::Motion, 1), 21);
  EXPECT_EQ(m_configuration.GetVolume(SlotKind::Motion, 2), 22);
  EXPECT_EQ(m_configuration.GetVolume(SlotKind::Motion, 3), 100);
  EXPECT_EQ(m_configuration.NrOfImp(), 0);
  EXPECT_EQ(m_configuration.NrOfLk(), 1);
  EXPECT_EQ(m_configuration.TotalNrOfSamples(), 500);
}

TEST_F(ConfigurationFileLoad, AnotherConfigurationIsReplacedNotAddedTo) {
  const TemporaryFolder otherSet;
  support::FillEverySlot(m_configuration, otherSet, kListCapacity);
  EXPECT_TRUE(Load(FullText()).valid);
  ExpectFull();
  EXPECT_TRUE(Load(FullText()).valid);
  ExpectFull();
}

TEST_F(ConfigurationFileLoad, EachListHolds12Files) {
  std::vector<std::string> lines{"BOOT", "", "0", "PWRON", "", "0", "PWROFF", "", "0", "IDLE", "", "0"};
  for (const char* keyword : {"MOTION-12", "IMPACT-12", "LOCKUP-12"}) {
    lines.push_back(keyword);
    for (int i = 1; i <= 12; ++i) lines.insert(lines.end(), {At("m1.lsu"), std::to_string(i)});
  }
  EXPECT_TRUE(Load(Text(lines)).valid);
  EXPECT_EQ(m_configuration.NrOfMt(), 12);
  EXPECT_EQ(m_configuration.NrOfImp(), 12);
  EXPECT_EQ(m_configuration.NrOfLk(), 12);
  EXPECT_EQ(m_configuration.GetVolume(SlotKind::Lockup, 12), 12);
}

TEST_F(ConfigurationFileLoad, WhatIsNoFileOnThisSystemIsListedLikeAnyMissingOne) {
  const LoadResult result =
      Load(Text({"BOOT", "Q:\\no such\\start.lsu", " 11", "PWRON", std::string(5000, 'x') + ".lsu", " 12", "PWROFF", "",
                 " 13", "IDLE", "", " 14", "MOTION-0", "IMPACT-0", "LOCKUP-0"}));
  EXPECT_TRUE(result.valid);
  EXPECT_EQ(result.Message(), "The following files could not be found or are not valid:\nQ:\\no such\\start.lsu\n" +
                                  std::string(5000, 'x') + ".lsu");
}

TEST_F(ConfigurationFileLoad, WhatMovedTogetherWithTheFileIsFoundBesideIt) {
  const TemporaryFolder away;
  std::filesystem::create_directories(away / "ember/knight/sets");
  std::filesystem::create_directories(away / "ember/knight/swings");
  std::filesystem::create_directories(away / "ember/knight/sets/swings");
  const auto sound = [&away](const std::string& place) {
    return support::WriteSoundFile(away / place, support::SomeSamples(100));
  };
  // In the same place seen from the file, in its own folder, and one of that name where only a longer end fits better.
  const auto boot = sound("ember/knight/boot.lsu");
  const auto on = sound("ember/knight/sets/on.lsu");
  const auto motion = sound("ember/knight/swings/m1.lsu");
  sound("ember/knight/sets/m1.lsu");
  // A bare name around the folder could be anybody's.
  sound("ember/idle.lsu");
  const std::string set = Text({"BOOT", "/old/ember/knight/boot.lsu", " 11", "PWRON", "C:\\Users\\anna\\on.lsu", " 12",
                                "PWROFF", At("off.lsu"), " 13", "IDLE", "/old/idle.lsu", " 14", "MOTION-1",
                                "/old/knight/swings/m1.lsu", " 21", "IMPACT-0", "LOCKUP-0"});
  const LoadResult result =
      ConfigurationFile::Load(support::WriteBytes(away / "ember/knight/sets/a.lscfg", set), m_configuration, m_view);
  EXPECT_TRUE(result.valid) << result.valid.Text();
  EXPECT_EQ(result.foundBeside, 3);
  EXPECT_EQ(result.failed, (std::vector<MissingSound>{{{SlotKind::Idle, 1}, "/old/idle.lsu", 14}}));
  EXPECT_EQ(m_configuration.FileAt(SlotKind::Boot).FileNameAndPath(), boot);
  EXPECT_EQ(m_configuration.FileAt(SlotKind::PwrOn).FileNameAndPath(), on);
  EXPECT_EQ(m_configuration.FileAt(SlotKind::PwrOff).FileNameAndPath(), m_folder / "off.lsu");
  EXPECT_EQ(m_configuration.GetMtFile(1).FileNameAndPath(), motion);
  EXPECT_EQ(m_configuration.GetVolume(SlotKind::PwrOn, 1), 12);
  EXPECT_EQ(m_configuration.GetVolume(SlotKind::Motion, 1), 21);
  EXPECT_EQ(m_configuration.TotalNrOfSamples(), 400);
}

TEST_F(ConfigurationFileLoad, NobodyLooksBesideTheFileWhereSomethingLiesAtThePath) {
  const TemporaryFolder away;
  support::WriteSoundFile(away / "silent.lsu", support::SomeSamples(100));
  const LoadResult result = ConfigurationFile::Load(
      support::WriteBytes(away / "a.lscfg", Text({"BOOT", At("silent.lsu"), " 11", "PWRON", "", "0"})), m_configuration,
      m_view);
  EXPECT_EQ(result.foundBeside, 0);
  EXPECT_EQ(result.failed.size(), 1U);
  EXPECT_EQ(m_configuration.Count(SlotKind::Boot), 0);
}

TEST_F(ConfigurationFileLoad, OfTheFilesBesideTheFirstThatIsASoundIsTaken) {
  const TemporaryFolder away;
  std::filesystem::create_directories(away / "old");
  support::WriteBytes(away / "old" / "hum.lsu", "no sound");
  const auto hum = support::WriteSoundFile(away / "hum.lsu", support::SomeSamples(100));
  const LoadResult result = ConfigurationFile::Load(
      support::WriteBytes(away / "a.lscfg", Text({"BOOT", "/old/hum.lsu", " 11", "PWRON", "", "0"})), m_configuration,
      m_view);
  EXPECT_TRUE(result.failed.empty());
  EXPECT_EQ(m_configuration.FileAt(SlotKind::Boot).FileNameAndPath(), hum);
  EXPECT_EQ(m_configuration.TotalNrOfSamples(), 100);
}

TEST_F(ConfigurationFileLoad, APathFromNoRootIsMeantFromTheSetsFolder) {
  // Another file of that name lies where the program was started.
  const TemporaryFolder elsewhere;
  support::WriteSoundFile(elsewhere / "boot.lsu", support::SomeSamples(200));
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(elsewhere.Path());
  const LoadResult result = Load(Text({"BOOT", "boot.lsu", " 11", "PWRON", "gone.lsu", " 12", "PWROFF", "", " 100",
                                       "IDLE", "", " 100", "MOTION-0", "IMPACT-0", "LOCKUP-0"}));
  std::filesystem::current_path(before);
  EXPECT_TRUE(result.valid);
  EXPECT_EQ(m_configuration.FileAt(SlotKind::Boot).FileNameAndPath(), m_folder / "boot.lsu");
  EXPECT_EQ(m_configuration.FileAt(SlotKind::Boot).NrOfSamples(), 100);
  EXPECT_EQ(result.foundBeside, 0);
  ASSERT_EQ(result.failed.size(), 1U);
  EXPECT_EQ(result.failed[0].path, "gone.lsu") << "as it stands in the file";
}

}  // namespace
}  // namespace kestrin::core::sound
