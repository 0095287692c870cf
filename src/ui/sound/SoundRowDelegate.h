// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

#include "ui/kit/Grid.h"

namespace kestrin::ui::sound {

/// Draws a row of a sound list: a number, the name, and soft figures at the right. A narrow row shows the name alone;
/// with more room the volume joins it, then the time, then the size.
class SoundRowDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  /// The text before the name, like a position; may be empty.
  static constexpr int kNumberRole = Qt::UserRole;
  /// The figures; any may be empty.
  static constexpr int kVolumeRole = Qt::UserRole + 1;
  static constexpr int kTimeRole = Qt::UserRole + 2;
  static constexpr int kSizeRole = Qt::UserRole + 3;
  /// Whether this sound is playing.
  static constexpr int kPlayingRole = Qt::UserRole + 4;
  /// What a click into the right end of the row does, in the place of figures. Rows that have it carry a warning sign.
  static constexpr int kActionRole = Qt::UserRole + 5;

  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  /// The part of a row's rectangle in which kActionRole stands; empty when the row has none.
  [[nodiscard]] static QRect ActionRect(const QRect& row, const QFontMetrics& metrics, const QModelIndex& index);
  /// The height of a row in that font.
  [[nodiscard]] static int RowHeight(const QFontMetrics& metrics) { return metrics.height() + kit::kGrid; }
};

}  // namespace kestrin::ui::sound
