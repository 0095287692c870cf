// SPDX-License-Identifier: MIT
#include "render/IconFile.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImageReader>
#include <array>

namespace kestrin::assets {
namespace {

TEST(IconFile, HasTheBytesOfAnIconOfOneSmallPicture) {
  QImage picture(2, 2, QImage::Format_ARGB32);
  picture.setPixel(0, 0, 0xff112233U);
  picture.setPixel(1, 0, 0x80445566U);
  picture.setPixel(0, 1, 0x00778899U);
  picture.setPixel(1, 1, 0xffaabbccU);

  QByteArray expected = QByteArray::fromHex("0000 0100 0100");          // icons, one of them
  expected += QByteArray::fromHex("02 02 0000 0100 2000");              // 2 by 2, 1 plane, 32 bits
  expected += QByteArray::fromHex("40000000 16000000");                 // 64 bytes, at 22
  expected += QByteArray::fromHex("28000000 02000000 04000000");        // a header of 40 bytes, 2 by twice 2
  expected += QByteArray::fromHex("0100 2000") + QByteArray(24, '\0');  // nothing that needs saying
  expected += QByteArray::fromHex("99887700 ccbbaaff");                 // the bottom row first
  expected += QByteArray::fromHex("332211ff 66554480");
  expected += QByteArray::fromHex("80000000 00000000");  // the mask: one pixel is see-through, below on the left

  EXPECT_EQ(IconFile(std::array{picture}).toHex(), expected.toHex());
}

TEST(IconFile, HoldsAWholePngForLargePictures) {
  QImage picture(256, 256, QImage::Format_ARGB32);
  picture.fill(0x80123456U);
  const QByteArray file = IconFile(std::array{picture});
  EXPECT_EQ(file.mid(6, 4).toHex(), "00000000");  // 0 is 256
  EXPECT_EQ(file.mid(18, 4).toHex(), "16000000");
  EXPECT_EQ(QImage::fromData(file.mid(22), "PNG").convertToFormat(QImage::Format_ARGB32), picture);
}

TEST(IconFile, OfSeveralPicturesIsReadBackAsItWas) {
  // Qt gives back half transparent colours multiplied by their alpha, which rounds them: so there are none.
  std::vector<QImage> pictures;
  for (const int side : {16, 20, 33, 64, 128}) {
    QImage picture(side, side, QImage::Format_ARGB32);
    for (int y = 0; y < side; ++y)
      for (int x = 0; x < side; ++x) picture.setPixel(x, y, (x + y) % 3 == 0 ? 0U : qRgb(x, y, side));
    pictures.push_back(picture);
  }
  QByteArray file = IconFile(pictures);
  QBuffer buffer(&file);
  QImageReader reader(&buffer, "ICO");
  ASSERT_EQ(reader.imageCount(), 5) << reader.errorString().toStdString();
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    ASSERT_TRUE(reader.jumpToImage(static_cast<int>(i)));
    EXPECT_EQ(reader.read().convertToFormat(QImage::Format_ARGB32), pictures[i]) << i;
  }
}

}  // namespace
}  // namespace kestrin::assets
