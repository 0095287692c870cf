// SPDX-License-Identifier: MIT
// The sheet "Import sounds": what it shows, and what mouse and keyboard do on it.

#include <QMenu>
#include <QProgressBar>

#include "ui/import/ImportColumns.h"
#include "ui/import/ImportFixture.h"
#include "ui/kit/TopicOf.h"

namespace kestrin::support {
namespace {

using core::sound::SlotKind;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using ui::imports::ImportColumns;
using ui::imports::ImportModel;

class ImportSheet : public ImportFixture {
 protected:
  /// One or two sounds for most slots, an unsure one and a bad one.
  void FillHeron() {
    Source("startup.wav", Tenths(24, {"stereo to mono", "44.1 to 48 kHz"}));
    Source("hum.flac", Tenths(68));
    Source("swing 2.wav", Tenths(9));
    Source("swing 10.wav", Tenths(8));
    Source("swing 11.wav", {0, {}, "the file breaks off. Copy it again."});
    Source("blaster hit.mp3", Tenths(5));
  }
  /// The middle of a part of a row, in the list.
  [[nodiscard]] QPoint Spot(const std::string& name, QRect ImportColumns::*part) const {
    const QRect row = List().visualRect(rows.index(RowNamed(name)));
    return (ImportColumns::Of(row, List().fontMetrics()).*part).center();
  }
  void Click(const std::string& name, QRect ImportColumns::*part) const {
    QTest::mouseClick(List().viewport(), Qt::LeftButton, Qt::NoModifier, Spot(name, part));
  }
  [[nodiscard]] QMenu* OpenMenu() const { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
};

TEST_F(ImportSheet, ShowsWhatWillBecomeOfTheSounds) {
  FillHeron();
  OpenHeron();
  EXPECT_TRUE(frame->isVisible());
  EXPECT_THAT(Lines(), ElementsAre("[x] startup.wav: Boot", "[x] hum.flac: Idle", "[x] swing 2.wav: Motion",
                                   "[x] swing 10.wav: Motion", "[ ] swing 11.wav: -", "[x] blaster hit.mp3: Impact ?"));
  EXPECT_EQ(Data("startup.wav", ImportModel::kLength), "2.4 s");
  EXPECT_EQ(Data("startup.wav", ImportModel::kChanges), "stereo to mono, 44.1 to 48 kHz");
  // 2.4 s are 115,200 samples, 172,800 bytes: 168.75 of 1,024.
  EXPECT_EQ(Data("startup.wav", ImportModel::kSize), "169 kB");
  EXPECT_EQ(Data("hum.flac", ImportModel::kChanges), "nothing, fits as it is");
  EXPECT_EQ(Data("swing 11.wav", ImportModel::kChanges), "Left out: the file breaks off. Copy it again.");
  EXPECT_EQ(Data("swing 11.wav", ImportModel::kSize), "");
  EXPECT_EQ(LabelText("ImportSummary"),
            "6 files from \"Night heron\", 5 of them ready. Your files stay as they are; the set gets copies that fit "
            "the board.");
  EXPECT_EQ(Button("ImportTakeBtn").text(), "Import 5 sounds");
  // 2.4 + 6.8 + 0.9 + 0.8 + 0.5 s
  EXPECT_TRUE(LabelText("ImportMemoryLabel").starts_with("11.4 s of 58.2 s used"));
  EXPECT_FALSE(Find<QLabel>("ImportAdvice").isVisible());
  EXPECT_FALSE(Find<QProgressBar>("ImportProgress").isVisible());
  EXPECT_EQ(std::filesystem::path(LabelText("ImportFolderLabel")),
            folders.documents / "Kestrin sounds" / "Night heron");
  EXPECT_EQ(set.Count(SlotKind::Boot), 0) << "nothing is done yet";
  EXPECT_FALSE(std::filesystem::exists(folders.documents / "Kestrin sounds"));
}

TEST_F(ImportSheet, ASoundThatCannotBeReadCannotBeTicked) {
  FillHeron();
  OpenHeron();
  Click("swing 11.wav", &ImportColumns::tick);
  Choose("swing 11.wav");
  Key(Qt::Key_Space);
  Key(Qt::Key_5);
  Key(Qt::Key_P);
  EXPECT_FALSE(rows.setData(rows.index(RowNamed("swing 11.wav")), Qt::Checked, Qt::CheckStateRole));
  EXPECT_THAT(Lines(), Contains("[ ] swing 11.wav: -"));
  EXPECT_EQ(rows.Coming(), 5);
  EXPECT_THAT(played, IsEmpty());
}

TEST_F(ImportSheet, CountAndMemoryFollowTheTicks) {
  FillHeron();
  OpenHeron();
  Click("hum.flac", &ImportColumns::tick);
  EXPECT_THAT(Lines(), Contains("[ ] hum.flac: Idle"));
  EXPECT_EQ(Button("ImportTakeBtn").text(), "Import 4 sounds");
  EXPECT_TRUE(LabelText("ImportMemoryLabel").starts_with("4.6 s of 58.2 s used"));
  Choose("hum.flac");
  Key(Qt::Key_Space);
  EXPECT_EQ(rows.Coming(), 5);
  auto& all = Find<QCheckBox>("ImportAllCheck");
  EXPECT_EQ(all.checkState(), Qt::PartiallyChecked);
  all.setCheckState(Qt::Checked);
  all.click();
  EXPECT_EQ(rows.Coming(), 0);
  EXPECT_FALSE(Button("ImportTakeBtn").isEnabled());
  EXPECT_EQ(Button("ImportTakeBtn").toolTip(), "Tick the sounds that you want to import.");
  all.click();
  EXPECT_EQ(rows.Coming(), 5);
}

TEST_F(ImportSheet, DigitsChooseTheSlotOfAllSelectedSounds) {
  FillHeron();
  OpenHeron();
  struct Case {
    Qt::Key key;
    const char* slot;
  };
  for (const auto& [key, slot] : {Case{Qt::Key_1, "Boot"},
                                  {Qt::Key_2, "Power On"},
                                  {Qt::Key_3, "Power Off"},
                                  {Qt::Key_4, "Idle"},
                                  {Qt::Key_5, "Motion"},
                                  {Qt::Key_6, "Impact"},
                                  {Qt::Key_7, "Lock-up"},
                                  {Qt::Key_0, "Folder only"}}) {
    Choose("blaster hit.mp3");
    Key(key);
    EXPECT_EQ(Data("blaster hit.mp3", ImportModel::kSlotText), slot) << "the person is sure";
  }
  Choose("swing 2.wav");
  Key(Qt::Key_Down, Qt::ShiftModifier);
  Key(Qt::Key_6);
  EXPECT_EQ(Data("swing 2.wav", ImportModel::kSlotText), "Impact");
  EXPECT_EQ(Data("swing 10.wav", ImportModel::kSlotText), "Impact");
  EXPECT_EQ(Data("startup.wav", ImportModel::kSlotText), "Boot");
  Key(Qt::Key_8);
  EXPECT_EQ(Data("swing 2.wav", ImportModel::kSlotText), "Impact");
}

TEST_F(ImportSheet, TheChipAndEnterOpenTheMenuOfSlots) {
  FillHeron();
  OpenHeron();
  Click("startup.wav", &ImportColumns::slot);
  ASSERT_NE(OpenMenu(), nullptr);
  QStringList texts;
  for (const QAction* const action : OpenMenu()->actions())
    if (!action->isSeparator()) texts.append(action->text().remove('&') + (action->isChecked() ? " *" : ""));
  EXPECT_EQ(texts, (QStringList{"Boot *", "Power On", "Power Off", "Idle", "Motion", "Impact", "Lock-up",
                                "Only into the folder"}));
  OpenMenu()->actions()[1]->trigger();
  OpenMenu()->close();
  EXPECT_EQ(Data("startup.wav", ImportModel::kSlotText), "Power On");
  Choose("startup.wav");
  Key(Qt::Key_Return);
  ASSERT_NE(OpenMenu(), nullptr);
  OpenMenu()->actions().constLast()->trigger();
  OpenMenu()->close();
  EXPECT_EQ(Data("startup.wav", ImportModel::kSlotText), "Folder only");
}

TEST_F(ImportSheet, WhatHasNoRoomIsSaidAndGoesIntoTheFolderOnly) {
  Source("swing.wav");
  for (int number = 1; number <= 12; ++number) Source("hit" + std::to_string(number) + ".wav");
  Source("poweron1.wav");
  Source("poweron2.wav");
  OpenHeron();
  EXPECT_THAT(Lines(), Contains("[x] poweron1.wav: Power On"));
  EXPECT_THAT(Lines(), Contains("[ ] poweron2.wav: Power On")) << "others come first";
  Choose("poweron2.wav");
  Key(Qt::Key_Space);
  EXPECT_EQ(Data("poweron2.wav", ImportModel::kChanges),
            "Power On takes one sound: this one goes into the folder only");
  Choose("swing.wav");
  Key(Qt::Key_6);
  // It stands before the hits, so the twelfth of them has no room.
  EXPECT_EQ(Data("hit12.wav", ImportModel::kChanges), "Impact is full: this one goes into the folder only");
  EXPECT_EQ(Data("swing.wav", ImportModel::kChanges), "nothing, fits as it is");
  // Twelve hits and one for Power On, of 0.1 s each.
  EXPECT_TRUE(LabelText("ImportMemoryLabel").starts_with("1.3 s of")) << LabelText("ImportMemoryLabel");
}

TEST_F(ImportSheet, TheOrderIsChangedByKeysAndByDragging) {
  FillHeron();
  OpenHeron();
  Choose("swing 10.wav");
  Key(Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(Lines()[2], "[x] swing 10.wav: Motion");
  EXPECT_EQ(Lines()[3], "[x] swing 2.wav: Motion");
  EXPECT_EQ(List().currentIndex().row(), 2);
  Key(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(Lines()[2], "[x] swing 2.wav: Motion");
  // Let go on the upper half of another row: before it, and into its slot.
  Choose("blaster hit.mp3");
  const QRect over = List().visualRect(rows.index(RowNamed("swing 10.wav")));
  List().DropAt(over.topLeft() + QPoint(60, 3));
  EXPECT_EQ(Lines()[3], "[x] blaster hit.mp3: Motion");
  EXPECT_EQ(Lines()[4], "[x] swing 10.wav: Motion");
  // On the lower half of a sound that cannot be imported: behind it, and its slot stays.
  Choose("startup.wav");
  List().DropAt(List().visualRect(rows.index(RowNamed("swing 11.wav"))).bottomLeft() + QPoint(60, -3));
  EXPECT_EQ(Lines().back(), "[x] startup.wav: Boot");
}

TEST_F(ImportSheet, TheMenuOfARowHasAllThatCanBeDone) {
  FillHeron();
  OpenHeron();
  Choose("swing 2.wav");
  QContextMenuEvent menu(QContextMenuEvent::Keyboard, {}, {});
  QApplication::sendEvent(&List(), &menu);
  ASSERT_NE(OpenMenu(), nullptr);
  QStringList texts;
  for (const QAction* const action : OpenMenu()->actions())
    if (!action->isSeparator()) texts.append(action->text().remove('&'));
  EXPECT_EQ(texts, (QStringList{"Leave out", "Hear it before", "Hear it after", "Move up", "Move down", "Slot"}));
  OpenMenu()->actions()[0]->trigger();
  OpenMenu()->close();
  EXPECT_THAT(Lines(), Contains("[ ] swing 2.wav: Motion"));
}

TEST_F(ImportSheet, BothCopiesCanBeHeardAndStopped) {
  FillHeron();
  OpenHeron();
  const int row = RowNamed("swing 2.wav");
  Click("swing 2.wav", &ImportColumns::after);
  ASSERT_EQ(played.size(), 1U);
  EXPECT_EQ(played.back(), rows.At(row).result.path);
  EXPECT_EQ(Data("swing 2.wav", ImportModel::kPlaying), "1");
  control->SetPlaying(played.back());
  EXPECT_EQ(Data("swing 2.wav", ImportModel::kPlaying), "1");
  Click("swing 2.wav", &ImportColumns::after);
  EXPECT_EQ(stops, 1);
  EXPECT_EQ(Data("swing 2.wav", ImportModel::kPlaying), "-1");
  // Before: a copy of the source as it is.
  Choose("swing 2.wav");
  Key(Qt::Key_P, Qt::ShiftModifier);
  ASSERT_TRUE(Until([this] { return played.size() == 2; }));
  EXPECT_THAT(import.Asked(), Contains("copy swing 2.wav"));
  EXPECT_TRUE(std::filesystem::exists(played.back()));
  EXPECT_EQ(Data("swing 2.wav", ImportModel::kPlaying), "0");
  // It has come to its end.
  control->SetPlaying({});
  EXPECT_EQ(Data("swing 2.wav", ImportModel::kPlaying), "-1");
  Key(Qt::Key_P);
  ASSERT_EQ(played.size(), 3U);
  EXPECT_EQ(played.back(), rows.At(row).result.path);
}

TEST_F(ImportSheet, ACopyThatCannotBeMadeIsSaid) {
  FillHeron();
  import.copyFailure = "The disk is full.";
  OpenHeron();
  Click("hum.flac", &ImportColumns::before);
  ASSERT_TRUE(Until([this] { return LabelText("ImportProgressLabel") == "The disk is full."; }));
  EXPECT_THAT(played, IsEmpty());
}

TEST_F(ImportSheet, TellsHowFarItIs) {
  FillHeron();
  import.HoldAfter(2);
  Make();
  control->Open({Heron()});
  ASSERT_TRUE(Until([this] { return LabelText("ImportProgressLabel") == "Making the sounds ready: 2 of 6"; }))
      << LabelText("ImportProgressLabel");
  EXPECT_EQ(Find<QProgressBar>("ImportProgress").value(), 2);
  EXPECT_EQ(Find<QProgressBar>("ImportProgress").maximum(), 6);
  EXPECT_FALSE(Button("ImportTakeBtn").isEnabled());
  EXPECT_EQ(Button("ImportTakeBtn").toolTip(), "Please wait until the sounds are ready.");
  EXPECT_TRUE(Button("ImportCancelBtn").isEnabled());
  import.LetGo();
  AwaitReady();
  EXPECT_TRUE(Button("ImportTakeBtn").isEnabled());
}

TEST_F(ImportSheet, OnlyWhatChangesIsMadeReadyAgain) {
  FillHeron();
  OpenHeron();
  const auto asked = [this] {
    std::vector<std::string> all = import.Asked();
    std::sort(all.begin(), all.end());
    return all;
  };
  const std::size_t before = asked().size();
  EXPECT_THAT(asked(), Contains("hum.flac trim loop"));
  EXPECT_THAT(asked(), Contains("swing 2.wav trim"));
  Find<QCheckBox>("ImportLoopCheck").click();
  AwaitReady();
  ASSERT_EQ(asked().size(), before + 1);
  EXPECT_THAT(asked(), Contains("hum.flac trim"));
  Find<QCheckBox>("ImportTrimCheck").click();
  AwaitReady();
  EXPECT_EQ(asked().size(), before + 1 + 5);
  EXPECT_THAT(asked(), Contains("swing 2.wav"));
  // Into a slot whose sounds are joined to a loop, with that choice taken back.
  Find<QCheckBox>("ImportLoopCheck").click();
  AwaitReady();
  Choose("swing 2.wav");
  Key(Qt::Key_7);
  AwaitReady();
  EXPECT_THAT(asked(), Contains("swing 2.wav loop"));
}

TEST_F(ImportSheet, SaysWhatTrimmingSaves) {
  Source("swing.wav", {48000, {}, "", 24000});
  Source("hit.wav", {48000, {}, "", 4800});
  OpenHeron();
  EXPECT_EQ(LabelText("ImportTrimCheckHint"), "at both ends, saves 0.6 s");
  Choose("swing.wav");
  Key(Qt::Key_Space);
  EXPECT_EQ(LabelText("ImportTrimCheckHint"), "at both ends, saves 0.1 s");
  Find<QCheckBox>("ImportTrimCheck").click();
  AwaitReady();
  EXPECT_EQ(LabelText("ImportTrimCheckHint"), "at both ends");
}

TEST_F(ImportSheet, SaysWhatToDoWhenTheMemoryIsTooSmall) {
  for (int number = 1; number <= 9; ++number) Source("swing" + std::to_string(number) + ".wav", Tenths(15));
  configuration.SetMaxNrOfSamples(480000);
  OpenHeron();
  // 13.5 s for 10 s.
  EXPECT_EQ(LabelText("ImportAdvice"), "3.5 s too much: leave out swing7 to 9.");
  EXPECT_TRUE(Find<QLabel>("ImportAdvice").isVisible());
  EXPECT_EQ(LabelText("ImportMemoryLabel"), "13.5 s of 10.0 s used");
  Choose("swing7.wav");
  Key(Qt::Key_Down, Qt::ShiftModifier);
  Key(Qt::Key_Down, Qt::ShiftModifier);
  Key(Qt::Key_Space);
  EXPECT_FALSE(Find<QLabel>("ImportAdvice").isVisible());
}

TEST_F(ImportSheet, ChosenSlotsStayWhenLengthsBecomeKnown) {
  Source("a.wav", Tenths(5));
  Source("b.wav", Tenths(5));
  import.HoldAfter(0);
  Make();
  control->Open({Heron()});
  ASSERT_TRUE(Until([this] { return rows.rowCount() == 2; }));
  EXPECT_EQ(Data("a.wav", ImportModel::kSlotText), "Folder only");
  Choose("a.wav");
  Key(Qt::Key_5);
  import.LetGo();
  AwaitReady();
  EXPECT_EQ(Data("a.wav", ImportModel::kSlotText), "Motion");
  EXPECT_EQ(Data("b.wav", ImportModel::kSlotText), "Impact ?") << "half a second";
}

TEST_F(ImportSheet, ScreenReadersAreToldWhatARowSays) {
  FillHeron();
  OpenHeron();
  EXPECT_EQ(Data("startup.wav", Qt::AccessibleTextRole),
            "startup.wav, Boot, ticked, 2.4 s, stereo to mono, 44.1 to 48 kHz");
  EXPECT_EQ(Data("blaster hit.mp3", Qt::AccessibleTextRole),
            "blaster hit.mp3, Impact, a guess, ticked, 0.5 s, nothing, fits as it is");
  EXPECT_EQ(Data("swing 11.wav", Qt::AccessibleTextRole),
            "swing 11.wav, Left out: the file breaks off. Copy it again.");
  EXPECT_EQ(List().accessibleName(), "Sounds to import");
  EXPECT_EQ(ui::kit::TopicOf(&List()), ui::kit::HelpContext::Import);
}

TEST_F(ImportSheet, FitsIntoSmallWindows) {
  FillHeron();
  for (const QSize size : {QSize(960, 640), QSize(800, 560)}) {
    window.resize(size);
    OpenHeron();
    window.resize(size);
    QApplication::processEvents();
    ASSERT_EQ(window.size(), size);
    EXPECT_TRUE(window.rect().contains(QRect(frame->mapTo(&window, QPoint(0, 0)), frame->size()))) << size.width();
    EXPECT_GE(List().viewport()->width(), ImportColumns::LeastWidth(List().fontMetrics())) << size.width();
    EXPECT_GE(List().viewport()->height(), 4 * 26) << size.width();
    // Everything in a row stands beside the others, inside of the row.
    const QRect row = List().visualRect(rows.index(0));
    const ImportColumns columns = ImportColumns::Of(row, List().fontMetrics());
    int left = row.left();
    for (const QRect& part :
         {columns.tick, columns.name, columns.length, columns.changes, columns.slot, columns.before, columns.after}) {
      EXPECT_GE(part.left(), left) << size.width();
      EXPECT_GT(part.width(), 0) << size.width();
      left = part.right() + 1;
    }
    EXPECT_LE(left, row.right() + 1) << size.width();
    Key(Qt::Key_Escape);
  }
}

TEST_F(ImportSheet, ANarrowRowDoesWithoutSizesAndThenWithoutCaptions) {
  const QFontMetrics metrics(window.font());
  const int least = ImportColumns::LeastWidth(metrics);
  const ImportColumns narrow = ImportColumns::Of({0, 0, least, 26}, metrics);
  EXPECT_FALSE(narrow.hasSize);
  EXPECT_FALSE(narrow.hasCaptions);
  const ImportColumns wide = ImportColumns::Of({0, 0, 1050, 26}, metrics);
  EXPECT_TRUE(wide.hasSize);
  EXPECT_TRUE(wide.hasCaptions);
  EXPECT_GT(wide.after.width(), narrow.after.width());
}

}  // namespace
}  // namespace kestrin::support
