// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

class QFontMetrics;

namespace kestrin::ui::imports {

/// Where things stand in a row of the import sheet, and in the header above the rows.
struct ImportColumns {
  QRect tick;
  QRect name;
  QRect length;
  QRect changes;
  QRect slot;
  QRect size;
  QRect before;
  QRect after;
  /// There is no room for the size, or for more than the signs of what is heard.
  bool hasSize = true;
  bool hasCaptions = true;

  /// Divides a row's rectangle for that font.
  [[nodiscard]] static ImportColumns Of(const QRect& row, const QFontMetrics& metrics);
  /// The narrowest row in which all can be read.
  [[nodiscard]] static int LeastWidth(const QFontMetrics& metrics);
};

}  // namespace kestrin::ui::imports
