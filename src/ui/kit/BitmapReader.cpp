// SPDX-License-Identifier: MIT
#include "ui/kit/BitmapReader.h"

#include <QFile>
#include <QtEndian>
#include <array>
#include <cstdint>

namespace kestrin::ui::kit {

namespace {

constexpr int kPixelsAt = 138;
constexpr std::uint32_t kLargestSide = 4096;

struct Word {
  int offset;
  std::uint32_t value;
};

/// What the header of such a file says besides the size of its picture.
constexpr std::array<Word, 8> kHeader{{
    {10, kPixelsAt},
    {14, 124},
    {26, 1U | 32U << 16},
    {30, 3},
    {54, 0x00FF0000},
    {58, 0x0000FF00},
    {62, 0x000000FF},
    {66, 0xFF000000},
}};

std::uint32_t WordAt(const QByteArray& bytes, int offset) {
  return qFromLittleEndian<std::uint32_t>(bytes.constData() + offset);
}

bool IsAsBuilt(const QByteArray& bytes) {
  if (bytes.size() < kPixelsAt || !bytes.startsWith("BM")) return false;
  for (const Word& word : kHeader)
    if (WordAt(bytes, word.offset) != word.value) return false;
  return true;
}

}  // namespace

QImage ReadBitmap(const QString& path) {
  constexpr int kPixelSize = 4;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QByteArray bytes = file.readAll();
  if (!IsAsBuilt(bytes)) return QImage::fromData(bytes);
  const std::uint32_t width = WordAt(bytes, 18);
  const std::uint32_t height = WordAt(bytes, 22);
  if (width == 0 || height == 0 || width > kLargestSide || height > kLargestSide) return QImage::fromData(bytes);
  if (bytes.size() < kPixelsAt + qsizetype{kPixelSize} * width * height) return {};

  QImage picture(static_cast<int>(width), static_cast<int>(height), QImage::Format_ARGB32);
  const char* row = bytes.constData() + kPixelsAt;
  // The bottom row comes first.
  for (int y = picture.height() - 1; y >= 0; --y, row += qsizetype{kPixelSize} * width)
    qFromLittleEndian<std::uint32_t>(row, width, picture.scanLine(y));
  return picture;
}

}  // namespace kestrin::ui::kit
