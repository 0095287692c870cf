// SPDX-License-Identifier: MIT
// The pictures as they stand in the program's folder after a build.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QImage>
#include <algorithm>
#include <set>

#include "support/Contrast.h"

namespace kestrin::assets {
namespace {

QImage Picture(const std::string& file) {
  return QImage(QCoreApplication::applicationDirPath() + '/' + QString::fromStdString(file));
}

template <typename Visit>
void ForEachPixel(const QImage& picture, Visit visit) {
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) visit(picture.pixelColor(x, y));
  }
}

int PixelsWithAlpha(const QImage& picture, int least, int most) {
  int count = 0;
  ForEachPixel(picture, [&](const QColor& color) { count += color.alpha() >= least && color.alpha() <= most ? 1 : 0; });
  return count;
}

struct Expected {
  const char* file;
  int side;
};

void PrintTo(const Expected& picture, std::ostream* out) { *out << picture.file; }

class ActivePictures : public testing::TestWithParam<Expected> {};

INSTANTIATE_TEST_SUITE_P(All, ActivePictures,
                         testing::Values(Expected{"corvent_small.bmp", 256}, Expected{"kestrin.bmp", 256},
                                         Expected{"LS_on.bmp", 96}, Expected{"LS_off.bmp", 96},
                                         Expected{"open.bmp", 96}, Expected{"save.bmp", 96}, Expected{"setup.bmp", 96},
                                         Expected{"view.bmp", 96}, Expected{"download.bmp", 96},
                                         Expected{"update.bmp", 96}, Expected{"play.bmp", 96}, Expected{"stop.bmp", 96},
                                         Expected{"undo.bmp", 96}, Expected{"redo.bmp", 96}, Expected{"remove.bmp", 96},
                                         Expected{"UpdLED.bmp", 96}, Expected{"apply.bmp", 96},
                                         Expected{"help.bmp", 96}, Expected{"copy.bmp", 96}, Expected{"shield.bmp", 96},
                                         Expected{"import.bmp", 96}, Expected{"try.bmp", 96}));

TEST_P(ActivePictures, AreDrawnOnTransparentGroundAndLargeEnoughToBeSharp) {
  const QImage picture = Picture(GetParam().file);
  ASSERT_EQ(picture.size(), QSize(GetParam().side, GetParam().side));
  ASSERT_TRUE(picture.hasAlphaChannel());
  const int pixels = picture.width() * picture.height();
  EXPECT_GT(PixelsWithAlpha(picture, 255, 255), pixels / 100) << "something is drawn";
  EXPECT_GT(PixelsWithAlpha(picture, 0, 0), pixels / 50) << "the ground is open";
  EXPECT_GT(PixelsWithAlpha(picture, 1, 254), 0) << "edges are smooth";
  EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0);
}

TEST_P(ActivePictures, StandOutOnLightAndOnDarkToolbars) {
  const QImage picture = Picture(GetParam().file);
  for (const QColor& ground : {QColor(0xff, 0xff, 0xff), QColor(0x24, 0x28, 0x30)}) {
    double best = 0;
    ForEachPixel(picture, [&](const QColor& color) {
      if (color.alpha() == 255) best = std::max(best, ui::kit::Contrast(color, ground));
    });
    EXPECT_GE(best, 3.0) << ground.name().toStdString();
  }
}

class ToolbarPictures : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(All, ToolbarPictures,
                         testing::Values("setup", "download", "update", "open", "save", "UpdLED", "apply"),
                         [](const auto& name) { return std::string(name.param); });

TEST_P(ToolbarPictures, TheDisabledPictureIsTheSameShapeMuted) {
  const QImage active = Picture(std::string(GetParam()) + ".bmp");
  const QImage off = Picture(std::string(GetParam()) + "_off.bmp");
  ASSERT_FALSE(active.isNull());
  ASSERT_EQ(active.size(), off.size());
  ASSERT_TRUE(off.hasAlphaChannel());
  EXPECT_NE(active, off);
  int drawn = 0;
  for (int y = 0; y < off.height(); ++y) {
    for (int x = 0; x < off.width(); ++x) {
      const QColor before = active.pixelColor(x, y);
      const QColor after = off.pixelColor(x, y);
      if (before.alpha() == 0) {
        ASSERT_EQ(after.alpha(), 0);
      }
      if (before.alpha() != 255) continue;
      ++drawn;
      ASSERT_GT(after.alpha(), 255 / 3);
      ASSERT_LT(after.alpha(), 255 * 2 / 3);
      ASSERT_LT(after.saturation(), 50);
    }
  }
  EXPECT_GT(drawn, 500);
}

TEST(OnlinePicture, OnAndOffDifferInShapeAndNotInColourAlone) {
  const QImage on = Picture("LS_on.bmp");
  const QImage off = Picture("LS_off.bmp");
  ASSERT_FALSE(on.isNull());
  ASSERT_FALSE(off.isNull());
  EXPECT_NE(on.convertToFormat(QImage::Format_Alpha8), off.convertToFormat(QImage::Format_Alpha8));
}

}  // namespace
}  // namespace kestrin::assets
