// SPDX-License-Identifier: MIT
#include "ui/sound/WaveformView.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QTest>

#include "support/TestFiles.h"

namespace kestrin::ui::sound {
namespace {

class WaveformViewTest : public ::testing::Test {
 protected:
  WaveformViewTest() {
    QObject::connect(&view, &WaveformView::ready, [this] { ++answers; });
    view.resize(300, 80);
    view.SetColor(Qt::red);
  }
  void Show(const std::filesystem::path& path) {
    const int before = answers;
    view.Show(path);
    ASSERT_TRUE(QTest::qWaitFor([&] { return answers > before; }, 20000));
  }
  /// The pixels that the shape covers from top to bottom in the middle of the view.
  int Height() {
    const QImage image = view.grab().toImage();
    int top = image.height();
    int bottom = -1;
    for (int x = 100; x < 200; ++x)
      for (int y = 0; y < image.height(); ++y)
        if (image.pixelColor(x, y).red() > 200 && image.pixelColor(x, y).green() < 100) {
          top = std::min(top, y);
          bottom = std::max(bottom, y);
        }
    return bottom - top + 1;
  }

  support::TemporaryFolder folder;
  WaveformView view;
  int answers = 0;
};

TEST_F(WaveformViewTest, TheShapeGrowsWithTheVolume) {
  Show(support::WriteSoundFile(folder / "a.lsu", support::SomeSamples(48000)));
  EXPECT_TRUE(view.HasShape());
  // Between the margins of 4 pixels at 100 %.
  view.SetVolume(100);
  EXPECT_NEAR(Height(), 72, 3);
  view.SetVolume(50);
  EXPECT_NEAR(Height(), 36, 3);
  view.SetVolume(0);
  EXPECT_LE(Height(), 3);
  // It never leaves the view.
  view.SetVolume(400);
  EXPECT_NEAR(Height(), 72, 3);
}

TEST_F(WaveformViewTest, AsOnTheBoardTheShapeIsAsHighAsTheBoardPlaysIt) {
  core::sound::LSU_SoundFile sound;
  ASSERT_TRUE(sound.ReadFile(support::WriteSoundFile(folder / "a.lsu", support::SomeSamples(48000))));
  const auto show = [&](std::int16_t volume) {
    sound.SetVolume(volume);
    const int before = answers;
    view.ShowHeard({folder / "a.lsu", true, sound});
    ASSERT_TRUE(QTest::qWaitFor([&] { return answers > before; }, 20000));
  };
  // 72 pixels are full scale, which a sound at 100 % does not reach: 999 of 1,023.
  show(100);
  EXPECT_NEAR(Height(), 70, 3);
  show(50);
  EXPECT_NEAR(Height(), 35, 3);
  // Its volume is in it already.
  view.SetVolume(10);
  EXPECT_NEAR(Height(), 35, 3);
  show(150);
  EXPECT_FALSE(view.HasShape());
}

TEST_F(WaveformViewTest, AFileThatCannotBeReadHasNoShape) {
  Show(folder / "missing.lsu");
  EXPECT_FALSE(view.HasShape());
}

TEST_F(WaveformViewTest, OnlyTheLastFileAnswers) {
  const auto a = support::WriteSoundFile(folder / "a.lsu", support::SomeSamples(480000));
  const auto b = support::WriteSoundFile(folder / "b.lsu", support::SomeSamples(100));
  view.Show(a);
  view.Show(folder / "missing.lsu");
  Show(b);
  EXPECT_TRUE(view.HasShape());
  EXPECT_EQ(answers, 1);
  view.Show({});
  EXPECT_FALSE(view.HasShape());
}

TEST_F(WaveformViewTest, AViewMayGoWhileItsFileIsRead) {
  const auto a = support::WriteSoundFile(folder / "a.lsu", support::SomeSamples(480000));
  for (int round = 0; round < 20; ++round) {
    WaveformView other;
    other.Show(a);
  }
}

}  // namespace
}  // namespace kestrin::ui::sound
