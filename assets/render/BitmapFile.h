// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QImage>

namespace kestrin::assets {

/// The bytes of a bitmap file that keeps the picture's alpha, which Qt reads but does not write. All numbers are
/// little-endian:
///
///     offset  size  content
///          0     2  "BM"
///          2     4  size of the file
///          6     4  0
///         10     4  138, the offset of the pixels
///         14     4  124, the size of this header (version 5, the version whose alpha Qt heeds)
///         18     4  width in pixels
///         22     4  height in pixels; positive: the bottom row comes first
///         26     2  1 plane
///         28     2  32 bits per pixel
///         30     4  3: the next masks say where the colours are
///         34     4  size of the pixels
///         38     8  pixels per metre, across and down: 3780 (96 per inch)
///         46     8  no colour table: 0, 0
///         54    16  masks of red, green, blue, alpha: 00FF0000, 0000FF00, 000000FF, FF000000
///         70     4  73524742: the colours are sRGB
///         74    48  end points and gamma, unused with sRGB: 0
///        122     4  4: a picture (how to convert it for other screens)
///        126    12  no colour profile: 0, 0, 0
///        138        the pixels: blue, green, red, alpha of one byte each; colours are not multiplied by alpha
[[nodiscard]] QByteArray BitmapFile(const QImage& picture);

}  // namespace kestrin::assets
