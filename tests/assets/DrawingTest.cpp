// SPDX-License-Identifier: MIT
#include "render/Drawing.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace kestrin::assets {
namespace {

class Drawings : public testing::Test {
 protected:
  [[nodiscard]] QString File(const QByteArray& content) const {
    const QString path = m_folder.filePath("a drawing.svg");
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) file.write(content);
    return path;
  }

  QTemporaryDir m_folder;
};

TEST_F(Drawings, ADrawingFillsItsSquareOnTransparentGround) {
  const QString file = File(
      R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24"><rect width="12" height="24" fill="#3b82f6"/></svg>)");
  const QImage picture = Draw(file, 48);
  ASSERT_EQ(picture.size(), QSize(48, 48));
  EXPECT_EQ(picture.pixel(10, 24), 0xff3b82f6U);
  EXPECT_EQ(qAlpha(picture.pixel(40, 24)), 0);
}

TEST_F(Drawings, WhatIsNoDrawingIsANullPicture) {
  EXPECT_TRUE(Draw(m_folder.filePath("missing.svg"), 48).isNull());
  EXPECT_TRUE(Draw(File("no drawing"), 48).isNull());
}

TEST_F(Drawings, AMutedPictureKeepsItsShapeWithoutItsColour) {
  QImage picture(2, 1, QImage::Format_ARGB32);
  picture.setPixel(0, 0, 0xffff0000U);
  picture.setPixel(1, 0, 0x00000000U);
  const QImage muted = Muted(picture);
  EXPECT_EQ(qAlpha(muted.pixel(0, 0)), 140) << "55 % of 255";
  EXPECT_EQ(qAlpha(muted.pixel(1, 0)), 0);
  const QColor color = muted.pixelColor(0, 0);
  EXPECT_LT(color.saturation(), 50);
}

}  // namespace
}  // namespace kestrin::assets
