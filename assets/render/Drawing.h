// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QString>

namespace kestrin::assets {

/// The drawing in the SVG file as a square picture of that many pixels a side on a transparent ground; a null picture
/// when the file is missing or is no drawing.
[[nodiscard]] QImage Draw(const QString& drawing, int side);

/// The same picture for a thing that cannot be used now: without colour and see-through, so that it steps back on light
/// and on dark ground alike.
[[nodiscard]] QImage Muted(const QImage& picture);

}  // namespace kestrin::assets
