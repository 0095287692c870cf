// SPDX-License-Identifier: MIT
#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>

#include "SoundPageFixture.h"

namespace kestrin::ui::sound {
namespace {

class SoundMenusTest : public SoundPageFixture {
 protected:
  /// The menu that the right mouse button opens on that sound.
  QMenu* MenuOf(const char* list, const QString& name) {
    Click(list, name);
    const QPoint where = PointOf(list, name);
    QContextMenuEvent event(QContextMenuEvent::Mouse, where, List(list)->viewport()->mapToGlobal(where));
    QApplication::sendEvent(List(list)->viewport(), &event);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) throw std::runtime_error("there is no menu");
    return menu;
  }
  QAction* Entry(QMenu* menu, const QString& text) {
    for (QAction* action : menu->actions())
      if (action->text().remove('&') == text) return action;
    throw std::runtime_error("there is no entry " + text.toStdString());
  }
  /// Chooses an entry, as a click does.
  void Choose(QMenu* menu, const QString& text) {
    Entry(menu, text)->trigger();
    menu->close();
  }
};

TEST_F(SoundMenusTest, AFileIsAddedToTheSelectedSlotOrAnother) {
  Sound("a.lsu", 100);
  Open();
  page->FocusSlot(core::sound::SlotKind::Idle);
  Choose(MenuOf("FileList", "a.lsu"), "Add to Idle");
  EXPECT_EQ(Shown("IdleFileList"), "a.lsu");
  QMenu* menu = MenuOf("FileList", "a.lsu");
  Entry(Entry(menu, "Add to slot")->menu(), "Lock-up")->trigger();
  menu->close();
  EXPECT_EQ(Shown("LkfileList"), "a.lsu");
  Choose(MenuOf("FileList", "a.lsu"), "Play");
  EXPECT_EQ(played, QStringList{PathText("a.lsu")});
}

TEST_F(SoundMenusTest, ASoundIsPlayedRemovedAndReordered) {
  Open();
  Fill(core::sound::SlotKind::Motion, 3);
  Choose(MenuOf("MtFileList", "motion 2.lsu"), "Play");
  EXPECT_EQ(played, QStringList{PathText("motion 2.lsu")});
  Choose(MenuOf("MtFileList", "motion 2.lsu"), "Move up");
  EXPECT_EQ(Shown("MtFileList"), "motion 2.lsu motion 1.lsu motion 3.lsu");
  Choose(MenuOf("MtFileList", "motion 2.lsu"), "Move down");
  EXPECT_EQ(Shown("MtFileList"), "motion 1.lsu motion 2.lsu motion 3.lsu");
  Choose(MenuOf("MtFileList", "motion 2.lsu"), "Remove");
  EXPECT_EQ(Shown("MtFileList"), "motion 1.lsu motion 3.lsu");
}

TEST_F(SoundMenusTest, ASoundIsMovedAndCopiedToAnotherSlot) {
  Open();
  Fill(core::sound::SlotKind::Motion, 2);
  QMenu* menu = MenuOf("MtFileList", "motion 1.lsu");
  Entry(Entry(menu, "Move to")->menu(), "Boot")->trigger();
  menu->close();
  EXPECT_EQ(Shown("BootFileList"), "motion 1.lsu");
  EXPECT_EQ(Shown("MtFileList"), "motion 2.lsu");
  menu = MenuOf("MtFileList", "motion 2.lsu");
  Entry(Entry(menu, "Copy to")->menu(), "Impact")->trigger();
  menu->close();
  EXPECT_EQ(Shown("ImpFileList"), "motion 2.lsu");
  EXPECT_EQ(Shown("MtFileList"), "motion 2.lsu");
}

TEST_F(SoundMenusTest, OnlyWhatIsPossibleCanBeChosen) {
  Open();
  Fill(core::sound::SlotKind::Motion, 2);
  QMenu* menu = MenuOf("MtFileList", "motion 1.lsu");
  EXPECT_FALSE(Entry(menu, "Move up")->isEnabled());
  EXPECT_TRUE(Entry(menu, "Move down")->isEnabled());
  menu->close();
  page->SetBusy(true);
  menu = MenuOf("MtFileList", "motion 1.lsu");
  EXPECT_TRUE(Entry(menu, "Play")->isEnabled());
  EXPECT_FALSE(Entry(menu, "Remove")->isEnabled());
  EXPECT_FALSE(Entry(menu, "Move to")->isEnabled());
  menu->close();
}

}  // namespace
}  // namespace kestrin::ui::sound
