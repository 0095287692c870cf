#pragma once

#include <QStyledItemDelegate>

namespace kestrin::sound::ui {

/// Draws a row of a sound list: a number, the name, and soft figures at the right.
class SoundRowDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  /// The text before the name, like a position; may be empty.
  static constexpr int kNumberRole = Qt::UserRole;
  /// The figures at the right: what is read first stands rightmost.
  static constexpr int kDetailRole = Qt::UserRole + 1;
  /// More of them, left of the others; left out where there is no room.
  static constexpr int kFurtherRole = Qt::UserRole + 2;
  /// The last to find room, left of all others: only where the whole name has room beside it.
  static constexpr int kLastRole = Qt::UserRole + 4;
  /// Whether this sound is playing.
  static constexpr int kPlayingRole = Qt::UserRole + 3;

  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  /// The height of a row in that font.
  [[nodiscard]] static int RowHeight(const QFontMetrics& metrics) { return metrics.height() + 8; }
};

}  // namespace kestrin::sound::ui
