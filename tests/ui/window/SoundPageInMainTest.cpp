// SPDX-License-Identifier: MIT
#include <QAbstractItemModel>
#include <QRadioButton>
#include <QTest>

#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

/// The sound page inside the window. The explorer shows the program's folder.
class SoundPageInMain : public MainFixture {
 protected:
  QListView& Files() { return Find<QListView>("FileList"); }
  /// Waits until the explorer shows that many sounds.
  void WaitForFiles(int count) {
    ASSERT_TRUE(Until([&] { return Files().model()->rowCount() == count; })) << Files().model()->rowCount();
  }
  QPoint PointOf(int row) { return Files().visualRect(Files().model()->index(row, 0)).center(); }
  void DoubleClick(int row) {
    QTest::mouseClick(Files().viewport(), Qt::LeftButton, Qt::NoModifier, PointOf(row));
    QTest::mouseDClick(Files().viewport(), Qt::LeftButton, Qt::NoModifier, PointOf(row));
  }
  void Press(int row, Qt::KeyboardModifiers held) {
    QTest::mousePress(Files().viewport(), Qt::LeftButton, held, PointOf(row));
    QTest::mouseRelease(Files().viewport(), Qt::LeftButton, held, PointOf(row));
  }
};

TEST_F(SoundPageInMain, SaysThatAListIsFull) {
  support::WriteSoundFile(program / "a.lsu", support::SomeSamples(100));
  StartOffline();
  ASSERT_NO_FATAL_FAILURE(WaitForFiles(1));
  Find<QRadioButton>("MtOption").setChecked(true);
  for (int count = 1; count <= 12; ++count) DoubleClick(0);
  EXPECT_EQ(dialogs.errors, std::vector<QString>{});
  DoubleClick(0);
  EXPECT_EQ(dialogs.errors, std::vector<QString>{"Maximum number of Motion files reached"});
  EXPECT_EQ(Find<QListView>("MtFileList").model()->rowCount(), 12);
}

TEST_F(SoundPageInMain, SaysThatAFileIsNoSoundAndKeepsTheOneThatIsThere) {
  support::WriteSoundFile(program / "a.lsu", support::SomeSamples(100));
  // One sample too few.
  support::WriteSoundFile(program / "b.lsu", support::SomeSamples(48));
  StartOffline();
  ASSERT_NO_FATAL_FAILURE(WaitForFiles(2));
  DoubleClick(0);
  EXPECT_EQ(dialogs.errors, std::vector<QString>{});
  DoubleClick(1);
  EXPECT_EQ(dialogs.errors, std::vector<QString>{"Not a valid file"});
  EXPECT_TRUE(dialogs.lastDetail.contains("b.lsu\" is too short")) << dialogs.lastDetail.toStdString();
  const QAbstractItemModel& boot = *Find<QListView>("BootFileList").model();
  ASSERT_EQ(boot.rowCount(), 1);
  EXPECT_EQ(boot.index(0, 0).data().toString(), "a.lsu");
}

TEST_F(SoundPageInMain, PlaysWithCtrlAndTheMouseAndWithNothingElseHeld) {
  support::WriteSoundFile(program / "a.lsu", support::SomeSamples(100, 20000, 1));
  const auto second = support::WriteSoundFile(program / "b.lsu", support::SomeSamples(100, 20000, 2));
  StartOffline();
  ASSERT_NO_FATAL_FAILURE(WaitForFiles(2));
  for (const Qt::KeyboardModifiers held :
       {Qt::KeyboardModifiers(Qt::NoModifier), Qt::ControlModifier | Qt::ShiftModifier,
        Qt::ControlModifier | Qt::AltModifier}) {
    Press(0, held);
    EXPECT_FALSE(Shown("WaitFrame")) << held;
  }
  Press(1, Qt::ControlModifier);
  EXPECT_TRUE(Shown("WaitFrame"));
  ASSERT_TRUE(Until([this] { return !player.played.empty(); }));
  EXPECT_EQ(support::ReadBytes(program / "temp.wav").substr(44), support::ReadBytes(second).substr(4));
  EXPECT_EQ(player.played.size(), 1U);
  EXPECT_EQ(dialogs.errors, std::vector<QString>{});
}

TEST_F(SoundPageInMain, LetsASetBeSentExactlyWhileItFitsTheBoard) {
  // Two thirds of the memory each.
  support::WriteSoundFile(program / "a.lsu", support::SomeSamples(1862080));
  Start();
  ASSERT_NO_FATAL_FAILURE(WaitForFiles(1));
  EXPECT_TRUE(Button("SendBtn").isEnabled());
  DoubleClick(0);
  EXPECT_TRUE(Button("SendBtn").isEnabled());
  Find<QRadioButton>("IdleOption").setChecked(true);
  DoubleClick(0);
  EXPECT_FALSE(Button("SendBtn").isEnabled());
  Button("UndoBtn").click();
  EXPECT_TRUE(Button("SendBtn").isEnabled());
}

}  // namespace
}  // namespace kestrin::support
