// SPDX-License-Identifier: MIT
#include "render/BitmapFile.h"

#include <cstdint>

namespace kestrin::assets {
namespace {

constexpr std::uint32_t kPixelsAt = 138;
constexpr std::uint32_t kHeaderSize = 124;
constexpr std::uint32_t kMasksFollow = 3;
constexpr std::uint32_t kPixelsPerMetre = 3780;
constexpr std::uint32_t kStandardColours = 0x73524742;
constexpr std::uint32_t kIsPicture = 4;

/// Appends the low `size` bytes of the value, least significant first.
void Put(QByteArray& bytes, std::uint32_t value, int size) {
  for (int i = 0; i < size; ++i) bytes.append(static_cast<char>((value >> (8 * i)) & 0xFFU));
}

void PutZeros(QByteArray& bytes, int size) { bytes.append(size, '\0'); }

}  // namespace

QByteArray BitmapFile(const QImage& picture) {
  const QImage straight = picture.convertToFormat(QImage::Format_ARGB32);
  const auto width = static_cast<std::uint32_t>(straight.width());
  const auto height = static_cast<std::uint32_t>(straight.height());
  const std::uint32_t pixels = width * height * 4;

  QByteArray bytes;
  bytes.reserve(static_cast<int>(kPixelsAt + pixels));
  bytes.append("BM");
  Put(bytes, kPixelsAt + pixels, 4);
  PutZeros(bytes, 4);
  Put(bytes, kPixelsAt, 4);
  Put(bytes, kHeaderSize, 4);
  Put(bytes, width, 4);
  Put(bytes, height, 4);
  Put(bytes, 1, 2);
  Put(bytes, 32, 2);
  Put(bytes, kMasksFollow, 4);
  Put(bytes, pixels, 4);
  Put(bytes, kPixelsPerMetre, 4);
  Put(bytes, kPixelsPerMetre, 4);
  PutZeros(bytes, 8);
  for (const std::uint32_t mask : {0x00FF0000U, 0x0000FF00U, 0x000000FFU, 0xFF000000U}) Put(bytes, mask, 4);
  Put(bytes, kStandardColours, 4);
  PutZeros(bytes, 48);
  Put(bytes, kIsPicture, 4);
  PutZeros(bytes, 12);
  for (int y = straight.height() - 1; y >= 0; --y) {
    for (int x = 0; x < straight.width(); ++x) Put(bytes, straight.pixel(x, y), 4);
  }
  return bytes;
}

}  // namespace kestrin::assets
