// SPDX-License-Identifier: MIT
#include <QImage>
#include <QPainter>
#include <QRadioButton>
#include <QStandardItemModel>

#include "SoundPageFixture.h"
#include "support/RecordingDisk.h"
#include "ui/sound/SoundRowDelegate.h"

namespace kestrin::ui::sound {
namespace {

class SlotListsTest : public SoundPageFixture {
 protected:
  QVariant Shows(const char* list, const QString& name, int role) { return IndexOf(list, name).data(role); }
};

struct Controls {
  core::sound::SlotKind kind;
  const char* option;
  const char* list;
};

const std::vector<Controls> kControls{
    {core::sound::SlotKind::Boot, "BootOption", "BootFileList"},
    {core::sound::SlotKind::PwrOn, "PwrOnOption", "PwrOnFileList"},
    {core::sound::SlotKind::PwrOff, "PwrOffOption", "PwrOffFileList"},
    {core::sound::SlotKind::Idle, "IdleOption", "IdleFileList"},
    {core::sound::SlotKind::Motion, "MtOption", "MtFileList"},
    {core::sound::SlotKind::Impact, "ImpOption", "ImpFileList"},
    {core::sound::SlotKind::Lockup, "LkOption", "LkfileList"},
};

TEST_F(SlotListsTest, TheBootOptionIsSelectedFirstAndAlwaysExactlyOne) {
  Open();
  EXPECT_EQ(page->SelectedSlot(), core::sound::SlotKind::Boot);
  for (const Controls& each : kControls) {
    QTest::mouseClick(Get<QRadioButton>(each.option), Qt::LeftButton, {}, QPoint(10, 10));
    EXPECT_EQ(page->SelectedSlot(), each.kind) << each.option;
    int checked = 0;
    for (const Controls& other : kControls) checked += static_cast<int>(Get<QRadioButton>(other.option)->isChecked());
    EXPECT_EQ(checked, 1) << each.option;
    // A click on the selected one does not take the choice away.
    QTest::mouseClick(Get<QRadioButton>(each.option), Qt::LeftButton, {}, QPoint(10, 10));
    EXPECT_EQ(page->SelectedSlot(), each.kind) << each.option;
  }
}

TEST_F(SlotListsTest, ADoubleClickAddsToTheSelectedSlotAndAnotherTakesItOut) {
  Sound("hum 1.lsu", 4800);
  Open();
  for (const Controls& each : kControls) {
    Get<QRadioButton>(each.option)->setChecked(true);
    DoubleClick("FileList", "hum 1.lsu");
    EXPECT_EQ(Names(each.kind), "hum 1.lsu@100") << each.option;
    EXPECT_EQ(Shown(each.list), "hum 1.lsu") << each.list;
    DoubleClick(each.list, "hum 1.lsu");
    EXPECT_EQ(Names(each.kind), "") << each.option;
    EXPECT_EQ(Shown(each.list), "") << each.list;
  }
  EXPECT_TRUE(messages.isEmpty());
}

TEST_F(SlotListsTest, ASingleSlotShowsTheNewNameInPlaceOfTheOld) {
  Sound("a.lsu", 100);
  Sound("b.lsu", 100);
  Open();
  DoubleClick("FileList", "a.lsu");
  DoubleClick("FileList", "b.lsu");
  EXPECT_EQ(Shown("BootFileList"), "b.lsu");
}

TEST_F(SlotListsTest, AFileThatIsNoSoundIsRefusedAndTheDisplayKept) {
  Sound("a.lsu", 100);
  support::WriteBytes(folder / "broken.lsu", "too short");
  Open();
  DoubleClick("FileList", "a.lsu");
  DoubleClick("FileList", "broken.lsu");
  EXPECT_EQ(messages, QStringList{QStringLiteral("Not a valid file")});
  EXPECT_EQ(Shown("BootFileList"), "a.lsu");
  Get<QRadioButton>("MtOption")->setChecked(true);
  DoubleClick("FileList", "broken.lsu");
  EXPECT_EQ(messages.size(), 2);
  EXPECT_EQ(Shown("MtFileList"), "");
}

TEST_F(SlotListsTest, TheThirteenthFileOfAListIsRefused) {
  const std::vector<std::pair<Controls, const char*>> lists{
      {kControls[4], "Maximum number of Motion files reached"},
      {kControls[5], "Maximum number of Impact files reached"},
      {kControls[6], "Maximum number of Lock-up files reached"},
  };
  Sound("more.lsu", 100);
  Open();
  for (const auto& [controls, text] : lists) {
    Fill(controls.kind, 12);
    messages.clear();
    Get<QRadioButton>(controls.option)->setChecked(true);
    DoubleClick("FileList", "more.lsu");
    EXPECT_EQ(messages, QStringList{QLatin1String(text)});
    EXPECT_EQ(List(controls.list)->model()->rowCount(), 12);
    EXPECT_EQ(set.Count(controls.kind), 12);
  }
}

TEST_F(SlotListsTest, RowsShowPositionDurationAndAVolumeThatIsNotFull) {
  Open();
  ASSERT_EQ(set.Add(core::sound::SlotKind::Motion, Sound("a.lsu", 48000)).Text(), "");
  ASSERT_EQ(set.Add(core::sound::SlotKind::Motion, Sound("b.lsu", 120000)).Text(), "");
  set.SetVolume(core::sound::SlotKind::Motion, 2, 80);
  EXPECT_EQ(Shows("MtFileList", "a.lsu", SoundRowDelegate::kNumberRole).toString(), "1");
  EXPECT_EQ(Shows("MtFileList", "b.lsu", SoundRowDelegate::kNumberRole).toString(), "2");
  EXPECT_EQ(Shows("MtFileList", "a.lsu", SoundRowDelegate::kTimeRole).toString(), "1.0 s");
  EXPECT_EQ(Shows("MtFileList", "b.lsu", SoundRowDelegate::kTimeRole).toString(), "2.5 s");
  EXPECT_EQ(Shows("MtFileList", "a.lsu", SoundRowDelegate::kVolumeRole).toString(), "");
  EXPECT_EQ(Shows("MtFileList", "b.lsu", SoundRowDelegate::kVolumeRole).toString(), "80 %");
  // 96,004 and 240,004 bytes in units of 1,024.
  EXPECT_EQ(Shows("MtFileList", "a.lsu", SoundRowDelegate::kSizeRole).toString(), "94 kB");
  EXPECT_EQ(Shows("MtFileList", "b.lsu", SoundRowDelegate::kSizeRole).toString(), "234 kB");
  EXPECT_EQ(Shows("MtFileList", "b.lsu", Qt::ToolTipRole).toString(), PathText("b.lsu") + "\n2.5 s, 234 kB");
  EXPECT_EQ(Shows("MtFileList", "b.lsu", Qt::AccessibleTextRole).toString(),
            "Motion 2: b.lsu, 2.5 s, 234 kB, volume 80 %");
}

/// What a row of that width looks like with these texts.
QImage Row(int width, const QString& volume, const QString& time, const QString& size) {
  QStandardItemModel model(1, 1);
  model.setData(model.index(0, 0), "a sound with a name.lsu");
  model.setData(model.index(0, 0), volume, SoundRowDelegate::kVolumeRole);
  model.setData(model.index(0, 0), time, SoundRowDelegate::kTimeRole);
  model.setData(model.index(0, 0), size, SoundRowDelegate::kSizeRole);
  QStyleOptionViewItem option;
  option.rect = QRect(0, 0, width, SoundRowDelegate::RowHeight(QFontMetrics(option.font)));
  option.state = QStyle::State_Enabled;
  QImage picture(option.rect.size(), QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  SoundRowDelegate().paint(&painter, option, model.index(0, 0));
  return picture;
}

TEST_F(SlotListsTest, ANarrowRowShowsTheNameThenTheVolumeThenTheTimeThenTheSize) {
  // Every figure takes as much room as the widest here, and a gap.
  const QFontMetrics metrics{QStyleOptionViewItem().font};
  const QString name = "a sound with a name.lsu";
  ASSERT_GT(metrics.horizontalAdvance("00.0 s"), metrics.horizontalAdvance("80 %"));
  const int figure = metrics.horizontalAdvance("00.0 s") + 8;
  const int whole = metrics.horizontalAdvance(name) + 16;
  const int size = std::max(figure, metrics.horizontalAdvance("94 kB") + 8);
  const int volumeFits = whole + figure;
  const int timeFits = volumeFits + figure;
  const int sizeFits = timeFits + size;
  const auto all = [](int width) { return Row(width, "80 %", "00.5 s", "94 kB"); };
  EXPECT_EQ(all(volumeFits - 1), Row(volumeFits - 1, "", "", ""));
  EXPECT_EQ(all(volumeFits), Row(volumeFits, "80 %", "", ""));
  EXPECT_EQ(all(timeFits - 1), Row(timeFits - 1, "80 %", "", ""));
  EXPECT_EQ(all(timeFits), Row(timeFits, "80 %", "00.5 s", ""));
  EXPECT_EQ(all(sizeFits - 1), Row(sizeFits - 1, "80 %", "00.5 s", ""));
  EXPECT_EQ(all(sizeFits), Row(sizeFits, "80 %", "00.5 s", "94 kB"));
  // Each of them can be seen.
  EXPECT_NE(Row(sizeFits, "80 %", "", ""), Row(sizeFits, "", "", ""));
  EXPECT_NE(Row(sizeFits, "80 %", "00.5 s", ""), Row(sizeFits, "80 %", "", ""));
  EXPECT_NE(Row(sizeFits, "80 %", "00.5 s", "94 kB"), Row(sizeFits, "80 %", "00.5 s", ""));
  // In a row without a volume the time has its room.
  EXPECT_EQ(Row(volumeFits, "", "00.5 s", "94 kB"), Row(volumeFits, "", "00.5 s", ""));
  EXPECT_NE(Row(volumeFits, "", "00.5 s", ""), Row(volumeFits, "", "", ""));
}

TEST_F(SlotListsTest, TheWholeNameStandsBesideTheFigures) {
  // A row that cuts the name off would show less of it than one without figures.
  const QFontMetrics metrics{QStyleOptionViewItem().font};
  const int name = metrics.horizontalAdvance("a sound with a name.lsu") + 8;
  const int width = name + 8 + metrics.horizontalAdvance("00.0 s") + 8;
  EXPECT_EQ(Row(width, "", "00.5 s", "").copy(0, 0, name, 40), Row(width, "", "", "").copy(0, 0, name, 40));
}

TEST_F(SlotListsTest, AClickIntoASlotMakesItTheOneThatTakesSounds) {
  Open();
  Fill(core::sound::SlotKind::Impact, 1);
  Click("ImpFileList", "impact 1.lsu");
  EXPECT_EQ(page->SelectedSlot(), core::sound::SlotKind::Impact);
  // Beside all rows, too.
  for (const Controls& each : kControls) {
    QWidget* const inside = List(each.list)->viewport();
    QTest::mouseClick(inside, Qt::LeftButton, {}, QPoint(inside->width() / 2, inside->height() - 2));
    EXPECT_EQ(page->SelectedSlot(), each.kind) << each.list;
  }
}

TEST_F(SlotListsTest, ListsSayHowManyOfTwelveTheyHold) {
  Open();
  Fill(core::sound::SlotKind::Impact, 3);
  QStringList texts;
  for (const QLabel* label : page->findChildren<QLabel*>())
    if (label->isVisible() && label->text().contains(QLatin1String(" of 12"))) texts.append(label->text());
  texts.sort();
  EXPECT_EQ(texts.join(QLatin1Char(',')).toStdString(), "0 of 12,0 of 12,3 of 12");
}

TEST_F(SlotListsTest, ASingleSlotShowsAVolumeThatIsNotFull) {
  Open();
  Fill(core::sound::SlotKind::PwrOff, 1);
  const auto shown = [this] {
    int labels = 0;
    for (const QLabel* label : page->findChildren<QLabel*>()) labels += static_cast<int>(label->text() == "45 %");
    return labels;
  };
  EXPECT_EQ(shown(), 0);
  set.SetVolume(core::sound::SlotKind::PwrOff, 1, 45);
  EXPECT_EQ(shown(), 1);
  set.Remove(core::sound::SlotKind::PwrOff, 1);
  EXPECT_EQ(shown(), 0);
}

TEST_F(SlotListsTest, RemovingFromAListShowsThePositionsVolume) {
  Open();
  Fill(core::sound::SlotKind::Motion, 3);
  set.SetVolume(core::sound::SlotKind::Motion, 2, 40);
  DoubleClick("MtFileList", "motion 2.lsu");
  EXPECT_EQ(Shown("MtFileList"), "motion 1.lsu motion 3.lsu");
  EXPECT_EQ(Names(core::sound::SlotKind::Motion), "motion 1.lsu@100 motion 3.lsu@40");
}

TEST_F(SlotListsTest, TheHintKeepsItsRunOfBlanks) {
  Open();
  const std::string hint = "Double-click to add/remove files          CTRL+Click to play LSU File";
  EXPECT_EQ(Text("HintLabel"), hint);
  QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
  QApplication::sendEvent(List("MtFileList")->viewport(), &enter);
  ASSERT_FALSE(hints.isEmpty());
  EXPECT_EQ(hints.last().toStdString(), hint);
}

TEST_F(SlotListsTest, ALoadedSetAppearsInTheLists) {
  Fill(core::sound::SlotKind::Boot, 1);
  Fill(core::sound::SlotKind::Lockup, 2);
  ASSERT_EQ(set.Save(folder / "a.lscfg", support::AnyDisk()).Text(), "");
  set.Clear();
  Open();
  Fill(core::sound::SlotKind::Motion, 2);
  ASSERT_TRUE(set.Load(folder / "a.lscfg").valid);
  EXPECT_EQ(Shown("BootFileList"), "boot 1.lsu");
  EXPECT_EQ(Shown("LkfileList"), "lockup 1.lsu lockup 2.lsu");
  EXPECT_EQ(Shown("MtFileList"), "");
}

TEST_F(SlotListsTest, WhileBusyNothingChanges) {
  Sound("a.lsu", 100);
  Open();
  Fill(core::sound::SlotKind::Boot, 1);
  page->SetBusy(true);
  DoubleClick("FileList", "a.lsu");
  DoubleClick("BootFileList", "boot 1.lsu");
  page->UndoAction()->trigger();
  EXPECT_EQ(Names(core::sound::SlotKind::Boot), "boot 1.lsu@100");
  EXPECT_FALSE(page->UndoAction()->isEnabled());
  page->SetBusy(false);
  EXPECT_TRUE(page->UndoAction()->isEnabled());
  DoubleClick("FileList", "a.lsu");
  EXPECT_EQ(Names(core::sound::SlotKind::Boot), "a.lsu@100");
}

TEST_F(SlotListsTest, EveryControlHasANameForScreenReaders) {
  Open();
  for (QWidget* control : page->findChildren<QWidget*>()) {
    if (control->focusPolicy() == Qt::NoFocus || !control->isVisible() || control->objectName().startsWith("qt_"))
      continue;
    const auto* button = qobject_cast<QAbstractButton*>(control);
    const bool hasName = !control->accessibleName().isEmpty() || (button != nullptr && !button->text().isEmpty());
    EXPECT_TRUE(hasName) << control->metaObject()->className() << " " << control->objectName().toStdString();
  }
}

}  // namespace
}  // namespace kestrin::ui::sound
