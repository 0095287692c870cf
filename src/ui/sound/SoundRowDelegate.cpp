// SPDX-License-Identifier: MIT
#include "ui/sound/SoundRowDelegate.h"

#include <QPainter>
#include <QPainterPath>
#include <QWidget>
#include <algorithm>
#include <utility>
#include <vector>

#include "ui/kit/Grid.h"
#include "ui/kit/ThemeColors.h"
#include "ui/sound/PlayIcon.h"

namespace kestrin::ui::sound {

namespace {

/// A figure of a row: where it stands from the right, and how much room it takes.
struct Figure {
  int role;
  QString text;
  int width = 0;
};

/// The figures for which there is room beside the whole name, from the right to the left.
std::vector<Figure> FiguresBeside(const QString& name, int room, const QFontMetrics& metrics,
                                  const QModelIndex& index) {
  std::vector<Figure> shown;
  int left = room - metrics.horizontalAdvance(name);
  for (const int role : {SoundRowDelegate::kVolumeRole, SoundRowDelegate::kTimeRole, SoundRowDelegate::kSizeRole}) {
    QString text = index.data(role).toString();
    if (text.isEmpty()) continue;
    // Figures of a list stand in columns when they are about equally long.
    const int width = std::max(metrics.horizontalAdvance(text), metrics.horizontalAdvance(QStringLiteral("00.0 s")));
    left -= width + kit::kGrid;
    if (left < 0) break;
    shown.push_back({role, std::move(text), width});
  }
  // Where there is a time, it stands rightmost, so that the times of a list make a column.
  if (shown.size() > 1 && shown[1].role == SoundRowDelegate::kTimeRole) std::swap(shown[0], shown[1]);
  return shown;
}

/// The sign of a sound that is missing, in the middle of the rectangle.
void PaintWarningSign(QPainter& painter, const QRect& where, const QPalette& palette) {
  constexpr double kSide = 14;
  QRectF box(0, 0, kSide, kSide);
  box.moveCenter(QRectF(where).center());
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath sign;
  sign.setFillRule(Qt::OddEvenFill);
  sign.moveTo(box.center().x(), box.top());
  sign.lineTo(box.right(), box.bottom() - 1);
  sign.lineTo(box.left(), box.bottom() - 1);
  sign.closeSubpath();
  // The stroke and the dot of an exclamation mark.
  sign.addRect(box.center().x() - 0.9, box.top() + 5, 1.8, 4);
  sign.addRect(box.center().x() - 0.9, box.top() + 10, 1.8, 1.8);
  painter.fillPath(sign, kit::ColorOf(kit::ColorRole::Warning, palette));
  painter.restore();
}

}  // namespace

QRect SoundRowDelegate::ActionRect(const QRect& row, const QFontMetrics& metrics, const QModelIndex& index) {
  const QString action = index.data(kActionRole).toString();
  if (action.isEmpty()) return {};
  const int width = metrics.horizontalAdvance(action) + kit::kWide;
  return {row.right() - width + 1, row.top(), width, row.height()};
}

void SoundRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  using kit::ColorRole;
  const QPalette& palette = option.palette;
  const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
  const QColor text = palette.color(isEnabled ? QPalette::Normal : QPalette::Disabled, QPalette::Text);
  const QColor soft = isEnabled ? kit::ColorOf(ColorRole::Soft, palette) : text;

  painter->save();
  painter->setFont(option.font);
  if (option.state.testFlag(QStyle::State_Selected))
    painter->fillRect(option.rect, kit::ColorOf(ColorRole::Selection, palette));
  else if (option.state.testFlag(QStyle::State_MouseOver))
    painter->fillRect(option.rect, kit::ColorOf(ColorRole::AccentSoft, palette));

  QRect room = option.rect.adjusted(kit::kGrid, 0, -kit::kGrid, 0);
  const QFontMetrics metrics(option.font);
  const bool isPlaying = index.data(kPlayingRole).toBool();
  if (const QString number = index.data(kNumberRole).toString(); !number.isEmpty()) {
    const int width = metrics.horizontalAdvance(QStringLiteral("12"));
    if (!isPlaying) {
      painter->setPen(soft);
      painter->drawText(QRect(room.left(), room.top(), width, room.height()), Qt::AlignVCenter | Qt::AlignRight,
                        number);
    }
    if (isPlaying) PaintPlaySign(*painter, QRect(room.left(), room.top(), width, room.height()), palette);
    room.setLeft(room.left() + width + kit::kGrid);
  } else if (isPlaying) {
    PaintPlaySign(*painter, QRect(room.left(), room.top(), kit::kWide, room.height()), palette);
    room.setLeft(room.left() + kit::kWide);
  }

  const QString name = index.data(Qt::DisplayRole).toString();
  if (const QRect action = ActionRect(option.rect, metrics, index); action.isValid()) {
    // On the ground of a selected row the accent would be hard to read.
    const bool isPlain = !isEnabled || option.state.testFlag(QStyle::State_Selected);
    painter->setPen(isPlain ? text : kit::ColorOf(ColorRole::Accent, palette));
    painter->drawText(action, Qt::AlignCenter, index.data(kActionRole).toString());
    room.setRight(action.left() - 1);
    PaintWarningSign(*painter, QRect(room.left(), room.top(), kit::kWide, room.height()), palette);
    room.setLeft(room.left() + kit::kWide + kit::kHalf);
  }
  painter->setPen(soft);
  for (const Figure& figure : FiguresBeside(name, room.width(), metrics, index)) {
    painter->drawText(room, Qt::AlignVCenter | Qt::AlignRight, figure.text);
    room.setRight(room.right() - figure.width - kit::kGrid);
  }

  painter->setPen(text);
  painter->drawText(room, Qt::AlignVCenter | Qt::AlignLeft, metrics.elidedText(name, Qt::ElideMiddle, room.width()));
  if (option.state.testFlag(QStyle::State_HasFocus)) {
    painter->setPen(kit::ColorOf(ColorRole::Accent, palette));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
  }
  painter->restore();
}

QSize SoundRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const {
  const QFontMetrics metrics(option.font);
  return {metrics.averageCharWidth() * 12, RowHeight(metrics)};
}

}  // namespace kestrin::ui::sound
