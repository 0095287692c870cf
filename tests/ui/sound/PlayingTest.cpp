// SPDX-License-Identifier: MIT
#include <QPushButton>

#include "SoundPageFixture.h"
#include "ui/sound/SoundRowDelegate.h"

namespace kestrin::ui::sound {
namespace {

class PlayingTest : public SoundPageFixture {};

struct Held {
  Qt::KeyboardModifiers keys;
  bool plays;
};

TEST_F(PlayingTest, OnlyCtrlAloneAndTheMousePlay) {
  const std::vector<Held> cases{
      {Qt::NoModifier, false},
      {Qt::ControlModifier, true},
      {Qt::ShiftModifier, false},
      {Qt::AltModifier, false},
      {Qt::ControlModifier | Qt::ShiftModifier, false},
      {Qt::ControlModifier | Qt::AltModifier, false},
  };
  Sound("a.lsu", 100);
  Open();
  Fill(core::sound::SlotKind::Motion, 2);
  Fill(core::sound::SlotKind::Boot, 1);
  const std::vector<std::pair<const char*, QString>> places{
      {"FileList", "a.lsu"}, {"MtFileList", "motion 2.lsu"}, {"BootFileList", "boot 1.lsu"}};
  for (const auto& [list, name] : places)
    for (const Held& each : cases) {
      played.clear();
      Press(list, name, each.keys);
      // The press plays; the release is not waited for.
      EXPECT_EQ(played, each.plays ? QStringList{PathText(name.toStdString())} : QStringList())
          << list << " with " << each.keys;
      QTest::mouseRelease(List(list)->viewport(), Qt::LeftButton, each.keys, PointOf(list, name));
    }
}

TEST_F(PlayingTest, OtherButtonsAndEmptyPlacesDoNotPlay) {
  Open();
  Fill(core::sound::SlotKind::Motion, 1);
  QTest::mousePress(List("MtFileList")->viewport(), Qt::MiddleButton, Qt::ControlModifier,
                    PointOf("MtFileList", "motion 1.lsu"));
  QTest::mousePress(List("MtFileList")->viewport(), Qt::LeftButton, Qt::ControlModifier,
                    QPoint(5, List("MtFileList")->viewport()->height() - 3));
  QTest::mousePress(List("BootFileList")->viewport(), Qt::LeftButton, Qt::ControlModifier, QPoint(5, 5));
  EXPECT_TRUE(played.isEmpty());
}

TEST_F(PlayingTest, TwoFastPressesWithCtrlPlayTwiceAndRemoveNothing) {
  Open();
  Fill(core::sound::SlotKind::Motion, 1);
  const QPoint where = PointOf("MtFileList", "motion 1.lsu");
  QTest::mouseClick(List("MtFileList")->viewport(), Qt::LeftButton, Qt::ControlModifier, where);
  QTest::mouseDClick(List("MtFileList")->viewport(), Qt::LeftButton, Qt::ControlModifier, where);
  EXPECT_EQ(set.Count(core::sound::SlotKind::Motion), 1);
  EXPECT_GE(played.size(), 2);
}

TEST_F(PlayingTest, SpacePlaysTheCurrentSound) {
  Open();
  Fill(core::sound::SlotKind::Motion, 2);
  Click("MtFileList", "motion 2.lsu");
  QTest::keyClick(List("MtFileList"), Qt::Key_Space);
  EXPECT_EQ(played, QStringList{PathText("motion 2.lsu")});
}

TEST_F(PlayingTest, TheButtonPlaysAndStopsTheSelectedSound) {
  Open();
  Fill(core::sound::SlotKind::Motion, 1);
  auto* button = Get<QPushButton>("PlayBtn");
  EXPECT_FALSE(button->isEnabled());
  Click("MtFileList", "motion 1.lsu");
  EXPECT_EQ(button->text(), "Play");
  button->click();
  EXPECT_EQ(played, QStringList{PathText("motion 1.lsu")});
  page->SetPlaying(folder / "motion 1.lsu");
  EXPECT_EQ(button->text(), "Stop");
  EXPECT_TRUE(IndexOf("MtFileList", "motion 1.lsu").data(SoundRowDelegate::kPlayingRole).toBool());
  button->click();
  EXPECT_EQ(stops, 1);
  page->SetPlaying({});
  EXPECT_EQ(button->text(), "Play");
  EXPECT_FALSE(IndexOf("MtFileList", "motion 1.lsu").data(SoundRowDelegate::kPlayingRole).toBool());
}

TEST_F(PlayingTest, EscapeStopsOnlyWhileASoundPlays) {
  Open();
  QTest::keyClick(List("FileList"), Qt::Key_Escape);
  EXPECT_EQ(stops, 0);
  page->SetPlaying("a.lsu");
  QTest::keyClick(List("FileList"), Qt::Key_Escape);
  EXPECT_EQ(stops, 1);
}

TEST_F(PlayingTest, PlayingIsPossibleWhileBusy) {
  Open();
  Fill(core::sound::SlotKind::Boot, 1);
  page->SetBusy(true);
  Press("BootFileList", "boot 1.lsu", Qt::ControlModifier);
  EXPECT_EQ(played.size(), 1);
}

}  // namespace
}  // namespace kestrin::ui::sound
