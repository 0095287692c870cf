// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <algorithm>
#include <cmath>

namespace kestrin::ui::kit {

/// Relative luminance of an sRGB colour by the Web Content Accessibility Guidelines 2.1, from 0 (black) to 1 (white).
inline double Luminance(const QColor& color) {
  const auto linear = [](int channel) {
    const double share = channel / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.red()) + 0.7152 * linear(color.green()) + 0.0722 * linear(color.blue());
}

/// Contrast of two colours by the same guidelines, from 1 (none) to 21 (black on white).
inline double Contrast(const QColor& one, const QColor& other) {
  const double a = Luminance(one);
  const double b = Luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace kestrin::ui::kit
