// SPDX-License-Identifier: MIT
#include <QSlider>
#include <QSpinBox>
#include <QTest>

#include "ui/sound/SoundPage.h"
#include "ui/window/HeldAudioTools.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

class Levelling : public MainFixture {
 protected:
  void SetUp() override {
    audio = &tools;
    StartOffline();
    window->activateWindow();
    ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
  }
  void TearDown() override {
    tools.LetGo();
    MainFixture::TearDown();
  }

  /// One sample in `every` is at full height, the others are 0: 10 * log10(every) less energy than with all of them.
  std::filesystem::path Sparse(const std::string& name, std::size_t every, std::size_t count = 4000) {
    std::vector<std::int16_t> samples(count, 0);
    for (std::size_t i = every; i + 1 < count; i += every) samples[i] = 20000;
    return WriteSoundFile(folder / name, samples);
  }
  /// Opens a set with the boot sound at full height and the power-on sound 20 LU below it.
  void OpenSet(std::size_t every = 100) {
    Sparse("loud.lsu", 1);
    Sparse("faint.lsu", every);
    const std::string set = "BOOT\r\n" + (folder / "loud.lsu").string() + "\r\n 70\r\nPWRON\r\n" +
                            (folder / "faint.lsu").string() +
                            "\r\n 80\r\nPWROFF\r\n\r\n 100\r\nIDLE\r\n\r\n 100\r\nMOTION-0\r\nIMPACT-0\r\nLOCKUP-0\r\n";
    dialogs.filesToOpen = {Text(WriteBytes(folder / "set.lscfg", set))};
    Button("LoadBtn").click();
    ASSERT_EQ(Volume("BootFileList"), 70);
  }
  /// The volume of the first sound of a slot, by the slider.
  int Volume(const char* list) {
    auto& view = Find<QListView>(list);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                      view.visualRect(view.model()->index(0, 0)).center());
    return Find<QSlider>("VolSlider").value();
  }
  QPushButton& Push(const char* name) const { return Find<QPushButton>(name); }
  void OpenSheet() {
    Push("LevelBtn").click();
    ASSERT_TRUE(Shown("LevelFrame"));
  }
  bool Done() {
    return Until([this] { return !Shown("LevelFrame"); });
  }

  HeldAudioTools tools;
};

TEST_F(Levelling, SetsTheVolumesAsOneStepAndTellsHowMany) {
  OpenSet();
  OpenSheet();
  Push("LevelNowBtn").click();
  ASSERT_TRUE(Done());
  EXPECT_EQ(LabelText("HelpLabel"), "The volumes are level: 2 of 2 have changed.");
  EXPECT_TRUE(dialogs.lists.empty());
  EXPECT_EQ(Volume("BootFileList"), 10);
  EXPECT_EQ(Volume("PwrOnFileList"), 100);
  EXPECT_EQ(Find<QAction>("UndoAction").text(), "Undo: Level the volumes");
  Find<QAction>("UndoAction").trigger();
  EXPECT_EQ(Volume("BootFileList"), 70);
  EXPECT_EQ(Volume("PwrOnFileList"), 80);
  EXPECT_EQ(Find<QAction>("UndoAction").text(), "Undo: Load set.lscfg");
}

TEST_F(Levelling, TakesTheBalanceOfTheSheetAndRemembersIt) {
  OpenSet();
  OpenSheet();
  // 6 LU above the boot sound by the balance, 20 below it by itself: 26 LU are 5 %.
  Find<QSpinBox>("Balance_pwron").setValue(4);
  dialogs.listAnswers = {false};
  Push("LevelNowBtn").click();
  ASSERT_TRUE(Done());
  EXPECT_EQ(Volume("BootFileList"), 5);
  EXPECT_EQ(settings.value("balance/pwron").toDouble(), 4);
  EXPECT_FALSE(settings.contains("balance/boot"));
  OpenSheet();
  EXPECT_EQ(Find<QSpinBox>("Balance_pwron").value(), 4);
  Push("UsualBalanceBtn").click();
  Push("LevelNowBtn").click();
  ASSERT_TRUE(Done());
  EXPECT_FALSE(settings.contains("balance/pwron"));
}

TEST_F(Levelling, ABalanceThatIsNotTakenIsNotKept) {
  OpenSet();
  OpenSheet();
  Find<QSpinBox>("Balance_boot").setValue(9);
  Push("CancelLevelBtn").click();
  ASSERT_TRUE(Done());
  OpenSheet();
  EXPECT_EQ(Find<QSpinBox>("Balance_boot").value(), -2);
}

TEST_F(Levelling, TellsInAListWhatCannotBeReached) {
  OpenSet(1900);
  OpenSheet();
  dialogs.listAnswers = {false};
  Push("LevelNowBtn").click();
  ASSERT_TRUE(Done());
  ASSERT_EQ(dialogs.lists.size(), 1U);
  EXPECT_EQ(dialogs.lists[0].headline, "The volumes are level: 2 of 2 have changed.");
  ASSERT_FALSE(dialogs.lists[0].lines.isEmpty());
  EXPECT_TRUE(dialogs.lists[0].lines.back().startsWith("\"faint.lsu\" (Power On) is much quieter than the others"));
  EXPECT_EQ(dialogs.lists[0].action, "");
}

TEST_F(Levelling, CancelStopsItAndChangesNothing) {
  OpenSet();
  OpenSheet();
  tools.Hold();
  Push("LevelNowBtn").click();
  EXPECT_FALSE(Push("LevelNowBtn").isEnabled());
  Push("CancelLevelBtn").click();
  EXPECT_EQ(LabelText("HelpLabel"), "Levelling was stopped. No volume was changed.");
  EXPECT_TRUE(Shown("LevelFrame"));
  EXPECT_TRUE(Push("LevelNowBtn").isEnabled());
  tools.LetGo();
  // Closes it now.
  Push("CancelLevelBtn").click();
  ASSERT_TRUE(Done());
  EXPECT_EQ(Volume("BootFileList"), 70);
  EXPECT_EQ(Find<QAction>("UndoAction").text(), "Undo: Load set.lscfg");
}

TEST_F(Levelling, ShowsHowFarItIs) {
  Sparse("loud.lsu", 1);
  OpenSet();
  OpenSheet();
  tools.Hold();
  Push("LevelNowBtn").click();
  EXPECT_EQ(LabelText("LevelState"), "Measuring the sounds ...");
  tools.LetGo();
  ASSERT_TRUE(Done());
}

TEST_F(Levelling, NothingElseCanChangeTheSetMeanwhile) {
  OpenSet();
  OpenSheet();
  tools.Hold();
  Push("LevelNowBtn").click();
  EXPECT_FALSE(Button("LoadBtn").isEnabled());
  EXPECT_FALSE(Find<QAction>("UndoAction").isEnabled());
  EXPECT_FALSE(Find<QAction>("LevelAction").isEnabled());
  tools.LetGo();
  ASSERT_TRUE(Done());
  EXPECT_TRUE(Button("LoadBtn").isEnabled());
  EXPECT_TRUE(Find<QAction>("LevelAction").isEnabled());
}

TEST_F(Levelling, ClosingTheWindowStopsIt) {
  OpenSet();
  OpenSheet();
  tools.Hold();
  Push("LevelNowBtn").click();
  window->EndNow();
  EXPECT_TRUE(window->IsOver());
  tools.LetGo();
}

TEST_F(Levelling, AnEmptySetIsToldInTheHelpLine) {
  Push("LevelBtn").click();
  EXPECT_FALSE(Shown("LevelFrame"));
  EXPECT_EQ(LabelText("HelpLabel"), "There are no sounds to level. Add some first.");
}

TEST_F(Levelling, OpensByItsKey) {
  OpenSet();
  QTest::keyClick(window.get(), Qt::Key_L, Qt::ControlModifier);
  EXPECT_TRUE(Shown("LevelFrame"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(Shown("LevelFrame"));
}

TEST_F(Levelling, TheFocusComesBackWhereItWas) {
  OpenSet();
  Push("LevelBtn").setFocus();
  OpenSheet();
  EXPECT_EQ(QApplication::focusWidget(), &Push("LevelNowBtn"));
  Push("LevelNowBtn").click();
  ASSERT_TRUE(Done());
  EXPECT_EQ(QApplication::focusWidget(), &Push("LevelBtn"));
}

using WithoutAudio = MainFixture;

TEST_F(WithoutAudio, NothingOffersIt) {
  StartOffline();
  EXPECT_FALSE(Shown("LevelBtn"));
  EXPECT_FALSE(Find<QAction>("LevelAction").isVisible());
}

class PlayAsOnBoard : public MainFixture {};

TEST_F(PlayAsOnBoard, WritesWhatTheBoardMakesOfIt) {
  settings.setValue("asOnBoard", true);
  StartOffline();
  // One sample at the peak and silence around it: at 50 % it is coded as 499.5 of 1,023, the second of its pair.
  std::vector<std::int16_t> samples(100, 0);
  samples[10] = 30000;
  const auto sound = WriteSoundFile(folder / "a.lsu", samples);
  dialogs.filesToOpen = {Text(WriteBytes(folder / "set.lscfg", "BOOT\r\n" + sound.string() +
                                                                   "\r\n 50\r\nPWRON\r\n\r\n 100\r\nPWROFF\r\n\r\n "
                                                                   "100\r\nIDLE\r\n\r\n 100\r\nMOTION-0\r\nIMPACT-0\r\n"
                                                                   "LOCKUP-0\r\n"))};
  Button("LoadBtn").click();
  auto& list = Find<QListView>("BootFileList");
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                    list.visualRect(list.model()->index(0, 0)).center());
  Find<QPushButton>("PlayBtn").click();
  ASSERT_TRUE(Until([this] { return !player.played.empty(); }));
  const std::string wav = ReadBytes(player.played.back());
  ASSERT_EQ(wav.size(), 44 + 2 * 100U);
  const auto at = [&wav](std::size_t sample) {
    return static_cast<std::int16_t>(static_cast<unsigned char>(wav[44 + 2 * sample]) |
                                     static_cast<unsigned char>(wav[45 + 2 * sample]) << 8);
  };
  // 500 of 1,023 of full scale, a sample later than in the file.
  EXPECT_EQ(at(11), 16015);
  EXPECT_EQ(at(10), 0);
  EXPECT_EQ(at(12), 0);
}

}  // namespace
}  // namespace kestrin::support
