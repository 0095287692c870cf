// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QImage>
#include <span>

namespace kestrin::assets {

/// The bytes of an icon file (.ico) with these square pictures of up to 256 pixels a side. All numbers are
/// little-endian:
///
///     offset  size  content
///          0     6  0, 1 (icons), number of pictures; two bytes each
///          6    16  for each picture: width, height (one byte each, 0 for 256), two bytes 0, 1 plane, 32 bits per
///          pixel
///                   (two bytes each), size of its data, its offset in the file (four bytes each)
///                   the data of the pictures, one behind the other
///
/// Up to 64 pixels a side the data is what a bitmap file has behind its first 14 bytes, with a header of 40 bytes that
/// tells the height doubled, and a mask of one bit per pixel behind the pixels (1: see-through; rows of whole four
/// bytes), which counts only where nobody heeds alpha. Larger pictures are whole PNG files, which is a tenth of the
/// size.
[[nodiscard]] QByteArray IconFile(std::span<const QImage> pictures);

}  // namespace kestrin::assets
