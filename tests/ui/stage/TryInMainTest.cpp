// SPDX-License-Identifier: MIT
// The page "Try the saber" in the window as a whole.

#include <QCheckBox>
#include <QTabBar>
#include <QTest>

#include "support/FakeOutput.h"
#include "ui/led/LedPanelFixture.h"
#include "ui/sound/SoundPage.h"
#include "ui/stage/BladeMotion.h"
#include "ui/stage/SoundReader.h"
#include "ui/stage/StageView.h"
#include "ui/stage/TryList.h"
#include "ui/window/Pages.h"

namespace kestrin::support {
namespace {

using core::sound::SlotKind;
using testing::HasSubstr;
using ui::window::Pages;

class TryInMain : public LedPanelFixture {
 protected:
  TryInMain() { output = &loudspeaker; }

  void Open() {
    Button("TryBtn").click();
    ASSERT_TRUE(Until([this] { return !Reader().IsReading(); }));
  }
  [[nodiscard]] ui::stage::SoundReader& Reader() const { return *window->findChild<ui::stage::SoundReader*>(); }
  void OpenSet() {
    window->OpenSet(CompleteSet(4800));
    ASSERT_TRUE(Until([this] { return LabelText("SetLabel").contains("complete"); }));
  }
  [[nodiscard]] Pages::Page ShownPage() const { return window->findChild<Pages*>()->Shown(); }
  void Key(int key) { QTest::keyClick(window->focusWidget(), static_cast<Qt::Key>(key)); }
  /// Lets time pass, with the stage's pictures and the loudspeaker.
  void Pass(int milliseconds) {
    for (int passed = 0; passed < milliseconds; passed += 10) {
      if (loudspeaker.IsPlaying()) loudspeaker.Pull(480);
      clock.Advance(std::chrono::milliseconds(10));
      Tick("StageTimer");
    }
  }

  FakeOutput loudspeaker;
};

TEST_F(TryInMain, ComesAndGoesWithItsButton) {
  StartOffline();
  EXPECT_FALSE(Button("TryBtn").isChecked());
  Open();
  EXPECT_EQ(ShownPage(), Pages::Page::Try);
  EXPECT_TRUE(Button("TryBtn").isChecked());
  EXPECT_TRUE(Shown("TryFrame"));
  EXPECT_EQ(window->focusWidget()->objectName(), "StageView");
  Button("TryBtn").click();
  EXPECT_EQ(ShownPage(), Pages::Page::Sounds);
  EXPECT_FALSE(Button("TryBtn").isChecked());
  Open();
  Key(Qt::Key_Escape);
  EXPECT_EQ(ShownPage(), Pages::Page::Sounds);
  EXPECT_FALSE(Button("TryBtn").isChecked());
  Open();
  Find<QPushButton>("TryBackBtn").click();
  EXPECT_EQ(ShownPage(), Pages::Page::Sounds);
}

TEST_F(TryInMain, PlaysTheSetThatIsOpen) {
  StartOffline();
  OpenSet();
  Open();
  Pass(300);
  Key(Qt::Key_P);
  EXPECT_TRUE(loudspeaker.IsPlaying());
  EXPECT_NE(loudspeaker.Pull(480), std::vector<std::int16_t>(480, 0));
  Key(Qt::Key_Escape);
  EXPECT_FALSE(loudspeaker.IsPlaying());
}

TEST_F(TryInMain, ASetThatIsOpenedMeanwhileIsTriedNext) {
  StartOffline();
  Open();
  window->OpenSet(CompleteSet(4800));
  ASSERT_TRUE(Until([this] { return Find<ui::stage::TryList>("TryList").model()->rowCount() == 14; }));
  EXPECT_EQ(ShownPage(), Pages::Page::Try);
  ASSERT_TRUE(Until([this] { return !Reader().IsReading(); }));
  Key(Qt::Key_P);
  EXPECT_TRUE(loudspeaker.IsPlaying());
}

TEST_F(TryInMain, AVolumeOfTheStageIsTheSetsAndCanBeTakenBackThere) {
  StartOffline();
  OpenSet();
  Open();
  auto& list = Find<ui::stage::TryList>("TryList");
  list.setFocus();
  list.setCurrentIndex(list.model()->index(1, 0));
  QTest::keyClick(&list, Qt::Key_Left);
  EXPECT_THAT(list.currentIndex().data(Qt::AccessibleTextRole).toString().toStdString(), HasSubstr("volume 95 %"));
  EXPECT_TRUE(Button("UndoBtn").isEnabled());
  QTest::keySequence(&list, QKeySequence::Undo);
  EXPECT_THAT(list.currentIndex().data(Qt::AccessibleTextRole).toString().toStdString(), HasSubstr("volume 100 %"));
}

TEST_F(TryInMain, ASoundThatIsChosenPlaysAndIsFoundInItsSlot) {
  StartOffline();
  OpenSet();
  Open();
  auto& list = Find<ui::stage::TryList>("TryList");
  const QModelIndex motion = list.model()->match(list.model()->index(0, 0), Qt::DisplayRole, "s5.lsu").value(0);
  ASSERT_TRUE(motion.isValid());
  list.setFocus();
  list.setCurrentIndex(motion);
  QTest::keyClick(&list, Qt::Key_Return);
  ASSERT_TRUE(Until([this] { return !player.played.empty(); }));
  Key(Qt::Key_Escape);
  EXPECT_FALSE(player.status.playing) << "it ends with the page";
  EXPECT_EQ(LabelText("SelectedSoundLabel"), "s5.lsu");
  EXPECT_EQ(window->findChild<ui::sound::SoundPage*>()->SelectedSlot(), SlotKind::Motion);
}

TEST_F(TryInMain, SharesAsOnTheBoardWithTheSoundsAndRemembersFewerFlashes) {
  StartOffline();
  auto& here = Find<QCheckBox>("TryAsOnBoardBox");
  auto& there = Find<QCheckBox>("AsOnBoardBox");
  EXPECT_FALSE(here.isChecked());
  there.setChecked(true);
  EXPECT_TRUE(here.isChecked());
  here.setChecked(false);
  EXPECT_FALSE(there.isChecked());
  EXPECT_FALSE(settings.value("asOnBoard").toBool());
  EXPECT_TRUE(Find<QCheckBox>("TryFewerBox").isChecked());
  Find<QCheckBox>("TryFewerBox").click();
  window.reset();
  StartOffline();
  EXPECT_FALSE(Find<QCheckBox>("TryFewerBox").isChecked());
}

TEST_F(TryInMain, TellsWhenThereIsNoSound) {
  loudspeaker.Fail("There is no sound service.");
  StartOffline();
  OpenSet();
  Open();
  Pass(20);
  EXPECT_EQ(LabelText("HelpLabel"), "No sound: There is no sound service. The saber goes on without it.");
}

TEST_F(TryInMain, StaysWhenABoardComesOrGoes) {
  StartOffline();
  Open();
  agent->Plug();
  ASSERT_TRUE(Until([this] { return Shown("SerialLabel"); }));
  EXPECT_EQ(ShownPage(), Pages::Page::Try);
}

TEST_F(TryInMain, ABoardThatHoldsNoSensibleValuesMovesNoBladeThatRests) {
  std::filesystem::create_directories(folder / "board");
  WriteBytes(folder / "board" / "board.json", R"({"id":4389,"accelerometer":[0,0,0,0,0,0]})");
  Start("dir=" + core::base::TextOf(folder / "board"));
  OpenSet();
  Open();
  const auto swings = [this] {
    const auto& model = *Find<ui::stage::TryList>("TryList").model();
    for (int row = 0; row < model.rowCount(); ++row) {
      const QString told = model.index(row, 0).data(Qt::AccessibleTextRole).toString();
      if (told.startsWith("Motion") && told.endsWith("sounding")) return true;
    }
    return false;
  };
  Pass(300);
  Key(Qt::Key_P);
  Pass(300);
  emit Find<ui::stage::StageView>("StageView").led(16);
  for (int picture = 0; picture < 30; ++picture) {
    Pass(10);
    EXPECT_FALSE(swings()) << picture;
  }
  Key(Qt::Key_S);
  Pass(10);
  EXPECT_TRUE(swings()) << "the blade is out";
}

TEST_F(TryInMain, ShinesInTheColourOfTheLedSettings) {
  StartLed(12);
  ASSERT_TRUE(Find<QTabBar>("PageTabs").isVisible());
  const auto open = [this](const char* levels) {
    const std::string text = std::string("KestdrinLEDSettings#1\r\nPULSE+Low=") + levels + "+High=" + levels +
                             "+Times=1500_2000_2.5_500\r\nFOC=9_10_11_12+Times=40_80_4\r\n";
    window->OpenPath(WriteBytes(folder / "blade.ldset", text));
    dialogs.okAnswers = {true};
    QApplication::processEvents();
    dialogs.okAnswers.clear();
  };
  const auto glow = [this] {
    Pass(600);
    const auto& stage = Find<ui::stage::StageView>("StageView");
    const ui::stage::SaberPlace place{QSizeF(stage.size()), ui::stage::BladeMotion::kHeld};
    QPointF where = place.Along(0.5);
    where.ry() -= 18 * place.Unit();
    return Find<ui::stage::StageView>("StageView").grab().toImage().pixelColor(where.toPoint());
  };
  open("255_0_0_0");
  Open();
  EXPECT_FALSE(Find<QTabBar>("PageTabs").isVisible());
  Key(Qt::Key_P);
  Pass(400);
  EXPECT_GT(glow().red(), glow().green() + 60);
  EXPECT_GT(glow().red(), glow().blue() + 60);
  Key(Qt::Key_Escape);
  EXPECT_TRUE(Find<QTabBar>("PageTabs").isVisible());
  open("0_0_255_0");
  Open();
  Key(Qt::Key_P);
  Pass(400);
  EXPECT_GT(glow().blue(), glow().red() + 60);
}

TEST_F(TryInMain, CannotBeOpenedWhileADownloadRuns) {
  Start();
  OpenSet();
  bool wasAsked = false;
  When([this] { return Shown("DownloadFrame"); },
       [&] {
         wasAsked = true;
         EXPECT_FALSE(Button("TryBtn").isEnabled());
       });
  Button("SendBtn").click();
  EXPECT_TRUE(wasAsked);
  EXPECT_EQ(LabelText("InformationLabel"), "SUCCESS !");
}

}  // namespace
}  // namespace kestrin::support
