// SPDX-License-Identifier: MIT
#include "render/IconFile.h"

#include <QBuffer>
#include <QDataStream>
#include <vector>

namespace kestrin::assets {

namespace {

constexpr int kLargestBitmap = 64;
constexpr quint32 kShortHeader = 40;
constexpr quint16 kBitsPerPixel = 32;

QByteArray PngData(const QImage& picture) {
  QByteArray data;
  QBuffer buffer(&data);
  buffer.open(QIODevice::WriteOnly);
  picture.save(&buffer, "PNG");
  return data;
}

/// One row of the mask, of whole four bytes.
QByteArray MaskRow(const QImage& picture, int y) {
  constexpr int kBits = 8;
  constexpr int kStep = 32;
  QByteArray row((picture.width() + kStep - 1) / kStep * 4, '\0');
  for (int x = 0; x < picture.width(); ++x)
    if (qAlpha(picture.pixel(x, y)) == 0)
      row[x / kBits] = static_cast<char>(static_cast<unsigned char>(row[x / kBits]) | (0x80U >> (x % kBits)));
  return row;
}

QByteArray BitmapData(const QImage& picture) {
  QByteArray data;
  QDataStream out(&data, QIODevice::WriteOnly);
  out.setByteOrder(QDataStream::LittleEndian);
  out << kShortHeader << qint32{picture.width()} << qint32{2 * picture.height()} << quint16{1} << kBitsPerPixel;
  out << quint32{0} << quint32{0} << quint32{0} << quint32{0} << quint32{0} << quint32{0};
  for (int y = picture.height() - 1; y >= 0; --y)
    for (int x = 0; x < picture.width(); ++x) out << quint32{picture.pixel(x, y)};
  for (int y = picture.height() - 1; y >= 0; --y) data += MaskRow(picture, y);
  return data;
}

}  // namespace

QByteArray IconFile(std::span<const QImage> pictures) {
  constexpr quint32 kStart = 6;
  constexpr quint32 kEntry = 16;
  std::vector<QByteArray> all;
  for (const QImage& picture : pictures) {
    const QImage image = picture.convertToFormat(QImage::Format_ARGB32);
    all.push_back(image.width() > kLargestBitmap ? PngData(image) : BitmapData(image));
  }
  QByteArray file;
  QDataStream out(&file, QIODevice::WriteOnly);
  out.setByteOrder(QDataStream::LittleEndian);
  const auto count = static_cast<quint32>(all.size());
  out << quint16{0} << quint16{1} << static_cast<quint16>(count);
  quint32 offset = kStart + kEntry * count;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const auto size = static_cast<quint32>(all[i].size());
    // 256 does not fit, and 0 stands for it.
    out << static_cast<quint8>(pictures[i].width()) << static_cast<quint8>(pictures[i].height()) << quint16{0};
    out << quint16{1} << kBitsPerPixel << size << offset;
    offset += size;
  }
  for (const QByteArray& data : all) file += data;
  return file;
}

}  // namespace kestrin::assets
