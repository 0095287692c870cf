// SPDX-License-Identifier: MIT
#include <QAction>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QSlider>

#include "SoundPageFixture.h"
#include "ui/kit/HelpText.h"
#include "ui/sound/WaveformView.h"

namespace kestrin::ui::sound {
namespace {

using core::sound::HeardSound;
using core::sound::SlotKind;

class AsOnBoardTest : public SoundPageFixture {
 protected:
  void Open() {
    SoundPageFixture::Open();
    QObject::connect(&*page, &SoundPage::playAsOnBoardRequested, &*page,
                     [this](const HeardSound& sound) { heard.push_back(sound); });
  }
  QCheckBox& Box() { return *Get<QCheckBox>("AsOnBoardBox"); }

  std::vector<HeardSound> heard;
};

TEST_F(AsOnBoardTest, IsOffAtFirstAndSoundsPlayAsTheirFilesHoldThem) {
  Open();
  Fill(SlotKind::Motion, 1);
  Click("MtFileList", "motion 1.lsu");
  EXPECT_FALSE(Box().isChecked());
  Get<QPushButton>("PlayBtn")->click();
  EXPECT_EQ(played, QStringList{PathText("motion 1.lsu")});
  EXPECT_TRUE(heard.empty());
}

TEST_F(AsOnBoardTest, EveryWayToPlayASoundOfASlotTakesItsVolumeAlong) {
  Open();
  Fill(SlotKind::Motion, 2);
  set.SetVolume(SlotKind::Motion, 2, 40);
  Click("MtFileList", "motion 2.lsu");
  Box().click();
  Get<QPushButton>("PlayBtn")->click();
  QTest::keyClick(List("MtFileList"), Qt::Key_Space);
  Press("MtFileList", "motion 2.lsu", Qt::ControlModifier);
  QTest::mouseRelease(List("MtFileList")->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      PointOf("MtFileList", "motion 2.lsu"));
  const QPoint where = PointOf("MtFileList", "motion 2.lsu");
  QContextMenuEvent event(QContextMenuEvent::Mouse, where, List("MtFileList")->viewport()->mapToGlobal(where));
  QApplication::sendEvent(List("MtFileList")->viewport(), &event);
  auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  for (QAction* const action : menu->actions())
    if (action->text() == "Play") action->trigger();
  menu->close();

  ASSERT_EQ(heard.size(), 4U);
  for (const HeardSound& sound : heard) {
    EXPECT_EQ(sound.path, folder / "motion 2.lsu");
    EXPECT_TRUE(sound.asOnBoard);
    ASSERT_TRUE(sound.placed);
    EXPECT_EQ(sound.placed->Volume(), 40);
    EXPECT_EQ(sound.placed->Peak(), 2000);
  }
  EXPECT_TRUE(played.isEmpty());
  Box().click();
  Get<QPushButton>("PlayBtn")->click();
  EXPECT_EQ(played.size(), 1);
}

TEST_F(AsOnBoardTest, AFileInNoSlotHasNoVolume) {
  Sound("a.lsu", 100);
  Open();
  Click("FileList", "a.lsu");
  Box().click();
  QTest::keyClick(List("FileList"), Qt::Key_Space);
  Get<QPushButton>("PlayBtn")->click();
  ASSERT_EQ(heard.size(), 2U);
  for (const HeardSound& sound : heard) EXPECT_EQ(sound, (HeardSound{folder / "a.lsu", true}));
}

TEST_F(AsOnBoardTest, TheSettingsKeepIt) {
  const QString file = PathText("settings.ini");
  Open();
  {
    QSettings settings(file, QSettings::IniFormat);
    page->KeepAsOnBoard(settings);
    EXPECT_FALSE(Box().isChecked());
    Box().click();
    page.reset();
  }
  QSettings settings(file, QSettings::IniFormat);
  Open();
  page->KeepAsOnBoard(settings);
  EXPECT_TRUE(Box().isChecked());
  Fill(SlotKind::Boot, 1);
  Press("BootFileList", "boot 1.lsu", Qt::ControlModifier);
  EXPECT_EQ(heard.size(), 1U);
  Box().click();
  EXPECT_FALSE(settings.value("asOnBoard").toBool());
  page.reset();
}

TEST_F(AsOnBoardTest, TheWaveformSaysAndShowsIt) {
  Open();
  Fill(SlotKind::Motion, 1);
  auto& waveform = *Get<WaveformView>("Waveform");
  int answers = 0;
  QObject::connect(&waveform, &WaveformView::ready, &waveform, [&answers] { ++answers; });
  Click("MtFileList", "motion 1.lsu");
  ASSERT_TRUE(QTest::qWaitFor([&] { return answers == 1; }, 20000));
  EXPECT_EQ(waveform.accessibleName(), "Waveform of the selected sound");
  Box().click();
  EXPECT_EQ(waveform.accessibleName(), "Waveform of the selected sound as on the board");
  ASSERT_TRUE(QTest::qWaitFor([&] { return answers == 2; }, 20000));
  // Another volume is another sound: it is read again, and the shape stays meanwhile.
  Get<QSlider>("VolSlider")->setValue(10);
  EXPECT_TRUE(waveform.HasShape());
  ASSERT_TRUE(QTest::qWaitFor([&] { return answers == 3; }, 20000));
  Box().click();
  ASSERT_TRUE(QTest::qWaitFor([&] { return answers == 4; }, 20000));
  // As the file holds it, nothing has to be read for another volume.
  Get<QSlider>("VolSlider")->setValue(20);
  QApplication::processEvents();
  EXPECT_TRUE(waveform.HasShape());
  EXPECT_EQ(answers, 4);
}

TEST_F(AsOnBoardTest, TheHelpLineTellsWhatItIsFor) {
  Open();
  EXPECT_TRUE(kit::HelpTextOf(Box()).contains("as the board will play them"));
}

}  // namespace
}  // namespace kestrin::ui::sound
