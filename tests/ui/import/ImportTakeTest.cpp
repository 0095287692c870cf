// SPDX-License-Identifier: MIT
// How sounds come onto the sheet "Import sounds", and from it into the folder and the set.

#include <QTemporaryDir>

#include "ui/import/ImportFixture.h"

namespace kestrin::support {
namespace {

namespace fs = std::filesystem;

using core::sound::SlotKind;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using ui::imports::ImportModel;

class ImportTake : public ImportFixture {
 protected:
  void FillHeron() {
    Source("boot.wav");
    Source("swing 2.wav");
    Source("swing 10.wav");
    Source("blaster.wav");
  }
  [[nodiscard]] fs::path Target() const { return folders.documents / "Kestrin sounds" / "Night heron"; }
  static std::vector<std::string> Files(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& file : fs::directory_iterator(folder)) names.push_back(file.path().filename().string());
    return names;
  }
  /// The folders in which sounds were made ready, as long as they are there.
  [[nodiscard]] int StagedFolders() const {
    int there = 0;
    for (const fs::path& one : import.Folders()) there += fs::exists(one) ? 1 : 0;
    return there;
  }
};

TEST_F(ImportTake, PutsEverythingIntoFolderAndSetInOneStep) {
  FillHeron();
  OpenHeron();
  Find<QCheckBox>("ImportLevelCheck").click();
  Choose("blaster.wav");
  Key(Qt::Key_0);
  Import();
  EXPECT_THAT(Files(Target()), UnorderedElementsAre("boot.lsu", "swing 2.lsu", "swing 10.lsu", "blaster.lsu"));
  EXPECT_EQ(Names(SlotKind::Boot), "boot.lsu@100");
  EXPECT_EQ(Names(SlotKind::Motion), "swing 2.lsu@100 swing 10.lsu@100");
  EXPECT_EQ(set.Count(SlotKind::Impact), 0) << "into the folder only";
  EXPECT_EQ(set.At({SlotKind::Boot, 1}).FileNameAndPath(), Target() / "boot.lsu");
  EXPECT_EQ(set.UndoText(), "Import 4 sounds");
  EXPECT_THAT(news, ElementsAre("4 sounds were imported. The new files are in \"" + ui::kit::TextOf(Target()) + "\"."));
  set.Undo();
  EXPECT_FALSE(set.CanUndo());
  EXPECT_EQ(set.Count(SlotKind::Boot), 0);
  EXPECT_EQ(set.Count(SlotKind::Motion), 0);
  EXPECT_EQ(Files(Target()).size(), 4U) << "the files stay";
  EXPECT_EQ(ReadBytes(Heron() / "boot.wav"), "boot.wav") << "the person's files are as they were";
  ASSERT_TRUE(Until([this] { return StagedFolders() == 0; }));
}

TEST_F(ImportTake, OneSoundIsOneSound) {
  Source("boot.wav");
  OpenHeron();
  EXPECT_EQ(
      LabelText("ImportSummary"),
      "1 file from \"Night heron\", 1 of them ready. Your files stay as they are; the set gets copies that fit the "
      "board.");
  EXPECT_EQ(Button("ImportTakeBtn").text(), "Import 1 sound");
  Import();
  EXPECT_EQ(set.UndoText(), "Import 1 sound");
}

TEST_F(ImportTake, CtrlEnterImportsFromAnywhereOnTheSheet) {
  FillHeron();
  OpenHeron();
  Key(Qt::Key_Return, Qt::ControlModifier);
  ASSERT_TRUE(Until([this] { return !frame->isVisible(); }));
  EXPECT_EQ(set.UndoText(), "Import 4 sounds");
}

TEST_F(ImportTake, SoundsComeBehindThoseOfTheSetAndReplaceASingleOne) {
  ASSERT_EQ(set.Add(SlotKind::Boot, Sound("old.lsu", 4800)).Text(), "");
  Fill(SlotKind::Motion, 11);
  FillHeron();
  OpenHeron();
  EXPECT_THAT(Lines(), Contains("[x] swing 2.wav: Motion"));
  EXPECT_THAT(Lines(), Contains("[ ] swing 10.wav: Motion")) << "the list has room for one";
  // The old one goes: 0.1 s each for the boot sound, a swing and the hit; the list has 11 of 100 samples and more.
  EXPECT_TRUE(LabelText("ImportMemoryLabel").starts_with("0.3 s of")) << LabelText("ImportMemoryLabel");
  Find<QCheckBox>("ImportLevelCheck").click();
  Import();
  EXPECT_EQ(Names(SlotKind::Boot), "boot.lsu@100");
  EXPECT_EQ(set.Count(SlotKind::Motion), 12);
  EXPECT_EQ(set.At({SlotKind::Motion, 12}).FileNameAndPath(), Target() / "swing 2.lsu");
}

TEST_F(ImportTake, NothingIsEverOverwritten) {
  FillHeron();
  fs::create_directories(Target());
  WriteBytes(Target() / "boot.lsu", "mine");
  OpenHeron();
  const fs::path other = folders.documents / "Kestrin sounds" / "Night heron 2";
  EXPECT_EQ(LabelText("ImportFolderLabel"), other.string()) << "a folder in which something lies is left alone";
  // Unless the person wants just that one.
  dialogs.folders = {ui::kit::TextOf(Target())};
  Button("ImportFolderLink").click();
  EXPECT_EQ(LabelText("ImportFolderLabel"), Target().string());
  Import();
  EXPECT_EQ(ReadBytes(Target() / "boot.lsu"), "mine");
  EXPECT_EQ(set.At({SlotKind::Boot, 1}).FileNameAndPath(), Target() / "boot 2.lsu");
  EXPECT_FALSE(fs::exists(other));
}

TEST_F(ImportTake, WhatCannotBeWrittenLeavesAllAsItWas) {
  FillHeron();
  OpenHeron();
  int names = 0;
  import.disk.onTakeFreeName = [&names](const fs::path&) {
    return ++names < 3 ? std::error_code() : std::make_error_code(std::errc::no_space_on_device);
};
Button("ImportTakeBtn").click();
EXPECT_EQ(LabelText("ImportProgressLabel"), "Importing ...");
EXPECT_FALSE(List().isEnabled());
ASSERT_TRUE(Until([this] { return LabelText("ImportProgressLabel").find("cannot be written") != std::string::npos; }))
    << LabelText("ImportProgressLabel");
EXPECT_TRUE(frame->isVisible());
EXPECT_FALSE(fs::exists(Target()));
EXPECT_FALSE(set.CanUndo());
EXPECT_TRUE(List().isEnabled());
// With room on the disk the same press works.
import.disk.onTakeFreeName = nullptr;
Import();
EXPECT_EQ(Files(Target()).size(), 4U);
}  // namespace

TEST_F(ImportTake, CancelAndEscapeLeaveNothingBehind) {
  FillHeron();
  for (const bool byKey : {false, true}) {
    OpenHeron();
    EXPECT_GT(StagedFolders(), 0);
    if (byKey)
      Key(Qt::Key_Escape);
    else
      Button("ImportCancelBtn").click();
    EXPECT_FALSE(frame->isVisible());
    ASSERT_TRUE(Until([this] { return StagedFolders() == 0; }));
    EXPECT_FALSE(fs::exists(folders.documents / "Kestrin sounds"));
    EXPECT_FALSE(set.CanUndo());
    EXPECT_EQ(rows.rowCount(), 0);
  }
}

TEST_F(ImportTake, CancelStopsWhatIsBeingMadeReady) {
  FillHeron();
  import.HoldAfter(1);
  Make();
  control->Open({Heron()});
  ASSERT_TRUE(Until([this] { return rows.rowCount() == 4 && rows.Unready().size() == 3; }));
  Button("ImportCancelBtn").click();
  ASSERT_TRUE(Until([this] { return StagedFolders() == 0; })) << "while the library still holds";
  import.LetGo();
  OpenHeron();
  EXPECT_EQ(rows.rowCount(), 4);
}

TEST_F(ImportTake, ThePlayingSoundStopsWithTheSheet) {
  FillHeron();
  OpenHeron();
  Choose("boot.wav");
  Key(Qt::Key_P);
  ASSERT_EQ(played.size(), 1U);
  Button("ImportCancelBtn").click();
  EXPECT_EQ(stops, 1);
}

TEST_F(ImportTake, MoreFilesComeToThoseThatAreThere) {
  FillHeron();
  OpenHeron();
  Choose("boot.wav");
  Key(Qt::Key_4);
  const fs::path extra = WriteBytes(folder / "clash.wav", "x");
  dialogs.manyToOpen = {{ui::kit::TextOf(extra)}};
  Button("ImportAddBtn").click();
  EXPECT_THAT(dialogs.lastFilter.toStdString(), HasSubstr("All sounds (*.wav"));
  EXPECT_THAT(dialogs.lastFilter.toStdString(), HasSubstr(" *.mp3"));
  ASSERT_TRUE(Until([this] { return rows.rowCount() == 5; }));
  AwaitReady();
  EXPECT_THAT(Lines(), Contains("[x] clash.wav: Impact"));
  EXPECT_THAT(Lines(), Contains("[x] boot.wav: Idle")) << "what the person has chosen stays";
  EXPECT_TRUE(LabelText("ImportSummary").starts_with("5 files, 5 of them ready.")) << LabelText("ImportSummary");
  dialogs.manyToOpen = {{}};
  Button("ImportAddBtn").click();
  EXPECT_EQ(rows.rowCount(), 5);
}

TEST_F(ImportTake, AllGoIntoTheSlotForWhichTheyWereMeant) {
  FillHeron();
  Make();
  control->Open({Heron() / "boot.wav", Heron() / "swing 2.wav"}, SlotKind::Lockup);
  ASSERT_TRUE(Until([this] { return rows.rowCount() == 2 && rows.Unready().empty(); }));
  EXPECT_THAT(Lines(), ElementsAre("[x] boot.wav: Lock-up", "[x] swing 2.wav: Lock-up"));
}

TEST_F(ImportTake, EachGoesIntoTheSlotThatWasNamedWithIt) {
  FillHeron();
  Make();
  control->Open({Heron() / "boot.wav"}, SlotKind::Lockup);
  control->Open({Heron() / "swing 2.wav"});
  ASSERT_TRUE(Until([this] { return rows.rowCount() == 2 && rows.Unready().empty(); }));
  EXPECT_THAT(Lines(), UnorderedElementsAre("[x] boot.wav: Lock-up", "[x] swing 2.wav: Motion"));
}

TEST_F(ImportTake, SaysWhenThereIsNothingToImport) {
  Make();
  control->Open({Heron()});
  ASSERT_TRUE(Until(
      [this] { return LabelText("ImportSummary") == "No sounds were found there. Add files, or drop others here."; }));
  EXPECT_FALSE(Button("ImportTakeBtn").isEnabled());
  EXPECT_EQ(Button("ImportTakeBtn").text(), "Import 0 sounds");
}

TEST_F(ImportTake, VolumesAreLevelledInTheSameStep) {
  Source("swing 1.wav");
  Source("swing 2.wav");
  Fill(SlotKind::Motion, 1);
  // 20 dB louder than the others: a tenth of the volume.
  import.loudness = {{ "swing 1", 0 }};
  OpenHeron();
  Import();
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@100 swing 1.lsu@10 swing 2.lsu@100");
  EXPECT_EQ(set.UndoText(), "Import 2 sounds");
  set.Undo();
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@100");
}

TEST_F(ImportTake, ASoundThatIsReplacedIsNotLevelled) {
  ASSERT_EQ(set.Add(SlotKind::Boot, Sound("old.lsu", 4800)).Text(), "");
  Source("boot.wav");
  OpenHeron();
  Import();
  EXPECT_THAT(import.Asked(), Contains("measure 1"));
}

TEST_F(ImportTake, VolumesStayWhereThePersonDoesNotWantThemLevelled) {
  Source("swing 1.wav");
  Source("swing 2.wav");
  import.loudness = {{ "swing 1", 0 }};
  OpenHeron();
  Find<QCheckBox>("ImportLevelCheck").click();
  Import();
  EXPECT_EQ(Names(SlotKind::Motion), "swing 1.lsu@100 swing 2.lsu@100");
}

TEST_F(ImportTake, TheOptionsStayAsThePersonLeftThem) {
  FillHeron();
  OpenHeron();
  Find<QCheckBox>("ImportTrimCheck").click();
  Key(Qt::Key_Escape);
  OpenHeron();
  EXPECT_FALSE(Find<QCheckBox>("ImportTrimCheck").isChecked());
  EXPECT_EQ(import.Asked().back().find("trim"), std::string::npos);
}

}  // namespace kestrin::support
}  // namespace kestrin::support
