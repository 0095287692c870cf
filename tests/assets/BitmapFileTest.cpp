// SPDX-License-Identifier: MIT
#include "render/BitmapFile.h"

#include <gtest/gtest.h>

namespace kestrin::assets {
namespace {

TEST(BitmapFile, HasTheBytesOfABitmapWithAlpha) {
  QImage picture(2, 2, QImage::Format_ARGB32);
  picture.setPixel(0, 0, 0xff112233U);
  picture.setPixel(1, 0, 0x80445566U);
  picture.setPixel(0, 1, 0x00778899U);
  picture.setPixel(1, 1, 0xffaabbccU);

  QByteArray expected("BM");
  expected += QByteArray::fromHex("9a000000 00000000 8a000000");   // 154 bytes, the pixels at 138
  expected += QByteArray::fromHex("7c000000 02000000 02000000");   // a header of 124 bytes, 2 by 2 pixels
  expected += QByteArray::fromHex("0100 2000 03000000 10000000");  // 1 plane, 32 bits, masks, 16 bytes of pixels
  expected += QByteArray::fromHex("c40e0000 c40e0000 00000000 00000000");  // 96 per inch, no colour table
  expected += QByteArray::fromHex("0000ff00 00ff0000 ff000000 000000ff");  // red, green, blue, alpha
  expected += QByteArray::fromHex("42475273") + QByteArray(48, '\0');      // sRGB
  expected += QByteArray::fromHex("04000000") + QByteArray(12, '\0');
  expected += QByteArray::fromHex("99887700 ccbbaaff");  // the bottom row first
  expected += QByteArray::fromHex("332211ff 66554480");

  EXPECT_EQ(BitmapFile(picture).toHex(), expected.toHex());
}

TEST(BitmapFile, IsReadBackAsItWas) {
  QImage picture(5, 3, QImage::Format_ARGB32);
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 5; ++x) picture.setPixel(x, y, qRgba(10 * x, 20 * y, 200, 60 * x));
  }
  const QImage read = QImage::fromData(BitmapFile(picture), "BMP");
  ASSERT_TRUE(read.hasAlphaChannel());
  EXPECT_EQ(read.convertToFormat(QImage::Format_ARGB32), picture);
}

}  // namespace
}  // namespace kestrin::assets
