// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QString>

namespace kestrin::ui::kit {

/// The picture in a bitmap file; null when it is missing or damaged. Files as the build makes them (version 5, 32 bits
/// a pixel with alpha) are taken in one go, which is many times quicker than Qt's way, pixel by pixel; all others are
/// read by Qt.
[[nodiscard]] QImage ReadBitmap(const QString& path);

}  // namespace kestrin::ui::kit
