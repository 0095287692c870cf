// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

namespace kestrin::ui::stage {

/// Paints the rows of TryRows: a title for each slot with its colour along the side, sounds with their volumes as bars,
/// which are sliders under the pointer and where the keyboard is, and what sounds lit in its slot's colour.
class TryRowDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  static constexpr int kRowHeight = 22;

  using QStyledItemDelegate::QStyledItemDelegate;

  /// Where a row's volume is, with room around it to hit it.
  [[nodiscard]] static QRect VolumeRect(const QRect& row, const QFontMetrics& metrics);
  /// The volume, 0 .. 100, that a pointer at that place of the row stands for.
  [[nodiscard]] static int VolumeAt(int x, const QRect& row, const QFontMetrics& metrics);
  /// Bars that move while something sounds: another picture with every step.
  void SetStep(int step) { m_step = step; }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  void PaintTitle(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
  void PaintSound(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;

  int m_step = 0;
};

}  // namespace kestrin::ui::stage
