// SPDX-License-Identifier: MIT
#include <QContextMenuEvent>
#include <QMenu>
#include <QPushButton>
#include <QSlider>

#include "SoundPageFixture.h"
#include "ui/sound/SoundRowDelegate.h"

namespace kestrin::ui::sound {
namespace {

/// A set whose second of three motion sounds is missing, and its boot sound.
class MissingRowsTest : public SoundPageFixture {
 protected:
  void OpenWithMissing() {
    Open();
    QObject::connect(&*page, &SoundPage::locateRequested, &*page,
                     [this](const core::sound::SoundPlace& place) { located.push_back(place); });
    QObject::connect(&*page, &SoundPage::locateAllRequested, &*page, [this] { ++locatedAll; });
    Sound("m1.lsu", 100);
    Sound("m3.lsu", 100);
    const std::string text =
        "BOOT\r\n/gone/start.lsu\r\n 80\r\nPWRON\r\n\r\n0\r\nPWROFF\r\n\r\n0\r\nIDLE\r\n\r\n0\r\n"
        "MOTION-3\r\n" +
        (folder / "m1.lsu").string() + "\r\n 100\r\n/gone/m2.lsu\r\n 20\r\n" + (folder / "m3.lsu").string() +
        "\r\n 100\r\nIMPACT-0\r\nLOCKUP-0\r\n";
    ASSERT_TRUE(set.Load(support::WriteBytes(folder / "a.lscfg", text)).valid);
  }
  /// Where "Locate ..." stands in that row.
  QPoint ActionOf(const char* list, const QString& name) {
    const QModelIndex index = IndexOf(list, name);
    return SoundRowDelegate::ActionRect(List(list)->visualRect(index), List(list)->fontMetrics(), index).center();
  }
  QAction* Entry(QMenu& menu, const QString& text) {
    for (QAction* const action : menu.actions())
      if (action->text() == text) return action;
    return nullptr;
  }
  /// The menu that the right mouse button opens on that row.
  QMenu* MenuOf(const char* list, const QString& name) {
    const QPoint where = List(list)->visualRect(IndexOf(list, name)).topLeft() + QPoint(30, 5);
    QTest::mouseClick(List(list)->viewport(), Qt::LeftButton, {}, where);
    QContextMenuEvent event(QContextMenuEvent::Mouse, where, List(list)->viewport()->mapToGlobal(where));
    QApplication::sendEvent(List(list)->viewport(), &event);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) throw std::runtime_error("there is no menu");
    return menu;
  }

  std::vector<core::sound::SoundPlace> located;
  int locatedAll = 0;
};

TEST_F(MissingRowsTest, StayInTheirPlacesAndAreMarked) {
  ASSERT_NO_FATAL_FAILURE(OpenWithMissing());
  EXPECT_EQ(Shown("MtFileList"), "m1.lsu m2.lsu m3.lsu");
  EXPECT_EQ(Shown("BootFileList"), "start.lsu");
  const QModelIndex row = IndexOf("MtFileList", "m2.lsu");
  EXPECT_EQ(row.data(SoundRowDelegate::kNumberRole).toString(), "2");
  EXPECT_EQ(row.data(SoundRowDelegate::kActionRole).toString(), "Locate ...");
  EXPECT_EQ(row.data(SoundRowDelegate::kTimeRole).toString(), "");
  EXPECT_EQ(row.data(Qt::AccessibleTextRole).toString(), "Motion 2: m2.lsu, missing, Enter locates it");
  EXPECT_TRUE(row.data(Qt::ToolTipRole).toString().startsWith("/gone/m2.lsu\n"));
  EXPECT_EQ(IndexOf("MtFileList", "m3.lsu").data(SoundRowDelegate::kActionRole).toString(), "");
}

TEST_F(MissingRowsTest, AreNoneOfTheSoundsThatAreCounted) {
  ASSERT_NO_FATAL_FAILURE(OpenWithMissing());
  QStringList texts;
  for (const QLabel* const label : page->findChildren<QLabel*>())
    if (label->text().contains("issing") || label->text().contains(" of 12"))
      texts.append(label->text() + "|" + label->toolTip());
  texts.sort();
  EXPECT_EQ(texts, (QStringList{"0 of 12|", "0 of 12|", "1 missing|2 of 12, 1 missing", "Missing|"}));
}

TEST_F(MissingRowsTest, AClickOnLocateAsksForTheSoundAndOneOnTheNameSelectsIt) {
  ASSERT_NO_FATAL_FAILURE(OpenWithMissing());
  QTest::mouseClick(List("MtFileList")->viewport(), Qt::LeftButton, {}, ActionOf("MtFileList", "m2.lsu"));
  EXPECT_EQ(located, (std::vector<core::sound::SoundPlace>{{core::sound::SlotKind::Motion, 2}}));
  QTest::mouseClick(List("BootFileList")->viewport(), Qt::LeftButton, {}, ActionOf("BootFileList", "start.lsu"));
  EXPECT_EQ(located.size(), 2U);
  EXPECT_EQ(located.back(), (core::sound::SoundPlace{core::sound::SlotKind::Boot, 1}));
  const QRect row = List("MtFileList")->visualRect(IndexOf("MtFileList", "m2.lsu"));
  QTest::mouseClick(List("MtFileList")->viewport(), Qt::LeftButton, {}, row.topLeft() + QPoint(30, 5));
  EXPECT_EQ(located.size(), 2U);
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 2, missing");
}

TEST_F(MissingRowsTest, APressThatIsLetGoElsewhereLocatesNothing) {
  ASSERT_NO_FATAL_FAILURE(OpenWithMissing());
  QTest::mousePress(List("MtFileList")->viewport(), Qt::LeftButton, {}, ActionOf("MtFileList", "m2.lsu"));
  QTest::mouseRelease(List("MtFileList")->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_TRUE(located.empty());
}

TEST_F(MissingRowsTest, ADoubleClickOnLocateDoesNotTakeTheRowOutButOneOnTheNameDoes) {
  ASSERT_NO_FATAL_FAILURE(OpenWithMissing());
  const QPoint action = ActionOf("MtFileList", "m2.lsu");
  QTest::mouseDClick(List("MtFileList")->viewport(), Qt::LeftButton, {}, action);
  EXPECT_EQ(Shown("MtFileList"), "m1.lsu m2.lsu m3.lsu");
  const QRect row = List("MtFileList")->visualRect(IndexOf("MtFileList", "m2.lsu"));
  QTest::mouseDClick(List("MtFileList")->viewport(), Qt::LeftButton, {}, row.topLeft() + QPoint(30, 5));
  EXPECT_EQ(Shown("MtFileList"), "m1.lsu m3.lsu");
  page->UndoAction()->trigger();
  EXPECT_EQ(Shown("MtFileList"), "m1.lsu m2.lsu m3.lsu");
}

TEST_F(MissingRowsTest, EnterLocatesAndOnOtherRowsDoesNothing) {
  ASSERT_NO_FATAL_FAILURE(OpenWithMissing());
  Click("MtFileList", "m1.lsu");
  List("MtFileList")->setFocus();
  QTest::keyClick(List("MtFileList"), Qt::Key_Return);
  EXPECT_TRUE(located.empty());
  QTest::keyClick(List("MtFileList"), Qt::Key_Down);
  QTest::keyClick(List("MtFileList"), Qt::Key_Return);
  EXPECT_EQ(located, (std::vector<core::sound::SoundPlace>{{core::sound::SlotKind::Motion, 2}}));
}

TEST_F(MissingRowsTest, TheSelectedOneIsLocatedByTheButtonBelow) {
  ASSERT_NO_FATAL_FAILURE(OpenWithMissing());
  List("MtFileList")->setFocus();
  List("MtFileList")->setCurrentIndex(IndexOf("MtFileList", "m2.lsu"));
  auto* const button = Get<QPushButton>("PlayBtn");
  EXPECT_EQ(button->text(), "Locate ...");
  EXPECT_FALSE(Get<QSlider>("VolSlider")->isEnabled());
  EXPECT_EQ(Text("VolumeLabel"), "20 %");
  button->click();
  EXPECT_EQ(located, (std::vector<core::sound::SoundPlace>{{core::sound::SlotKind::Motion, 2}}));
  EXPECT_TRUE(played.isEmpty());
  // As soon as the sound is there, it can be played.
  ASSERT_EQ(*set.Locate({{{core::sound::SlotKind::Motion, 2}, {folder / "m1.lsu"}}}), 1);
  EXPECT_EQ(button->text(), "Play");
  EXPECT_TRUE(Get<QSlider>("VolSlider")->isEnabled());
  EXPECT_EQ(Shown("MtFileList"), "m1.lsu m1.lsu m3.lsu");
}

TEST_F(MissingRowsTest, CannotBePlayed) {
  ASSERT_NO_FATAL_FAILURE(OpenWithMissing());
  Press("MtFileList", "m2.lsu", Qt::ControlModifier);
  List("MtFileList")->setFocus();
  QTest::keyClick(List("MtFileList"), Qt::Key_Space);
  EXPECT_TRUE(played.isEmpty());
}

TEST_F(MissingRowsTest, TheirMenuOffersBothWaysToLocateThem) {
  ASSERT_NO_FATAL_FAILURE(OpenWithMissing());
  QMenu* menu = MenuOf("MtFileList", "m1.lsu");
  EXPECT_EQ(Entry(*menu, "Locate ..."), nullptr);
  menu->close();
  menu = MenuOf("MtFileList", "m2.lsu");
  ASSERT_NE(Entry(*menu, "Locate ..."), nullptr);
  ASSERT_NE(Entry(*menu, "Locate the sounds ..."), nullptr);
  EXPECT_FALSE(Entry(*menu, "Play")->isEnabled());
  Entry(*menu, "Locate ...")->trigger();
  Entry(*menu, "Locate the sounds ...")->trigger();
  menu->close();
  EXPECT_EQ(located, (std::vector<core::sound::SoundPlace>{{core::sound::SlotKind::Motion, 2}}));
  EXPECT_EQ(locatedAll, 1);
}

TEST_F(MissingRowsTest, MoveInTheirListByKey) {
  ASSERT_NO_FATAL_FAILURE(OpenWithMissing());
  List("MtFileList")->setFocus();
  List("MtFileList")->setCurrentIndex(IndexOf("MtFileList", "m2.lsu"));
  QTest::keyClick(List("MtFileList"), Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(Shown("MtFileList"), "m1.lsu m3.lsu m2.lsu");
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 3, missing");
}

TEST_F(MissingRowsTest, WhileBusyNothingIsLocated) {
  ASSERT_NO_FATAL_FAILURE(OpenWithMissing());
  page->SetBusy(true);
  QTest::mouseClick(List("MtFileList")->viewport(), Qt::LeftButton, {}, ActionOf("MtFileList", "m2.lsu"));
  EXPECT_FALSE(Get<QPushButton>("PlayBtn")->isEnabled());
  EXPECT_TRUE(located.empty());
}

}  // namespace
}  // namespace kestrin::ui::sound
