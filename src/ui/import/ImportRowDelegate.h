// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

namespace kestrin::ui::imports {

/// Paints the rows of the import sheet: tick, name, length, what will be changed, the slot's chip, size, and the two
/// halves that are heard.
class ImportRowDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  /// The height of all rows.
  static constexpr int kRowHeight = 26;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  /// A chip in a slot's colour, or with a dashed edge for a guess; `slot` 0 is the folder only. Without an arrow it is
  /// only a sign.
  static void PaintChip(QPainter& painter, const QRect& where, const QString& text, int slot, bool isSure,
                        bool hasArrow, const QPalette& palette);
};

}  // namespace kestrin::ui::imports
