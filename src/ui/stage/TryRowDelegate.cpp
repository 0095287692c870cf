// SPDX-License-Identifier: MIT
#include "ui/stage/TryRowDelegate.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/kit/Grid.h"
#include "ui/kit/ThemeColors.h"
#include "ui/stage/TryRows.h"

namespace kestrin::ui::stage {

using kit::ColorOf;
using kit::ColorRole;

namespace {

constexpr int kTitleHeight = 30;
constexpr int kSide = 4;
constexpr int kBarWidth = 48;
constexpr int kBarHeight = 4;
constexpr int kKnob = 11;
constexpr int kSoundingWidth = 18;

int PercentWidth(const QFontMetrics& metrics) { return metrics.horizontalAdvance(QStringLiteral("100 %")); }

/// The row without the colour along its side.
QRect Inside(const QRect& row) { return row.adjusted(kSide + kit::kGrid, 0, -kit::kHalf, 0); }

QRectF BarRect(const QRect& row, const QFontMetrics& metrics) {
  const QRect room = Inside(row);
  const double left = room.right() - kit::kHalf - PercentWidth(metrics) - kit::kGrid - kBarWidth;
  return {left, room.center().y() - kBarHeight / 2.0 + 0.5, kBarWidth, kBarHeight};
}

/// A few bars as of a meter; which of them is high changes with every step.
void PaintSounding(QPainter& painter, const QPointF& bottomLeft, const QColor& color, int step) {
  constexpr int kBars = 4;
  for (int bar = 0; bar < kBars; ++bar) {
    const double height = 3 + 9 * std::abs(std::sin(step * 0.9 + bar * 1.7));
    painter.fillRect(QRectF(bottomLeft.x() + bar * 4.5, bottomLeft.y() - height, 3, height), color);
  }
}

}  // namespace

QRect TryRowDelegate::VolumeRect(const QRect& row, const QFontMetrics& metrics) {
  const QRect bar = BarRect(row, metrics).toAlignedRect();
  return {bar.left() - kit::kGrid, row.top(), bar.width() + 2 * kit::kGrid, row.height()};
}

int TryRowDelegate::VolumeAt(int x, const QRect& row, const QFontMetrics& metrics) {
  const QRectF bar = BarRect(row, metrics);
  return static_cast<int>(std::lround(std::clamp((x - bar.left()) / bar.width(), 0.0, 1.0) * 100));
}

QSize TryRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int least = QFontMetrics(option.font).height() + kit::kHalf;
  const int height = index.data(TryRows::kIsTitle).toBool() ? kTitleHeight : kRowHeight;
  return {160, std::max(height, least)};
}

void TryRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  if (index.data(TryRows::kIsTitle).toBool())
    PaintTitle(*painter, option, index);
  else
    PaintSound(*painter, option, index);
  painter->restore();
}

void TryRowDelegate::PaintTitle(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const auto slot = static_cast<core::sound::SlotKind>(index.data(TryRows::kSlot).toInt());
  const QRect text = Inside(option.rect).adjusted(kit::kHalf, kit::kGrid, 0, 0);
  painter.fillRect(QRect(option.rect.left(), text.top(), kSide, text.height()), kit::SlotColor(slot, option.palette));
  QFont bold = option.font;
  bold.setBold(true);
  painter.setFont(bold);
  painter.setPen(ColorOf(ColorRole::Text, option.palette));
  painter.drawText(text, Qt::AlignVCenter | Qt::AlignLeft, index.data(Qt::DisplayRole).toString());
  painter.setFont(option.font);
  painter.setPen(ColorOf(ColorRole::Soft, option.palette));
  painter.drawText(text.adjusted(0, 0, -kit::kHalf, 0), Qt::AlignVCenter | Qt::AlignRight,
                   index.data(TryRows::kNumber).toString());
}

void TryRowDelegate::PaintSound(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const QPalette& palette = option.palette;
  const auto slot = static_cast<core::sound::SlotKind>(index.data(TryRows::kSlot).toInt());
  const QColor color = kit::SlotColor(slot, palette);
  const bool isLit = index.data(TryRows::kIsLit).toBool();
  const bool isMissing = index.data(TryRows::kIsMissing).toBool();
  const bool isHere = option.state.testFlag(QStyle::State_HasFocus);
  const bool isHot = option.state.testFlag(QStyle::State_MouseOver);
  painter.fillRect(QRect(option.rect.left(), option.rect.top(), kSide, option.rect.height()), color);

  const QRectF box = QRectF(Inside(option.rect)).adjusted(0.5, 0.5, -0.5, -0.5);
  QColor ground = Qt::transparent;
  QColor edge = Qt::transparent;
  if (isLit) {
    ground = kit::IsHighContrast(palette) ? ColorOf(ColorRole::Card, palette) : color;
    if (!kit::IsHighContrast(palette)) ground.setAlphaF(0.26F);
    edge = color;
  } else if (isHot) {
    ground = ColorOf(ColorRole::AccentSoft, palette);
  }
  if (isHere) edge = ColorOf(ColorRole::Accent, palette);
  painter.setBrush(ground);
  painter.setPen(edge == QColor(Qt::transparent) ? QPen(Qt::NoPen) : QPen(edge, isHere ? 2 : 1));
  painter.drawRoundedRect(box, 3, 3);

  const QFontMetrics metrics(option.font);
  const QColor text = ColorOf(isMissing ? ColorRole::Soft : ColorRole::Text, palette);
  QRect room = Inside(option.rect).adjusted(kit::kHalf, 0, -kit::kHalf, 0);
  const QString number = index.data(TryRows::kNumber).toString();
  if (!number.isEmpty()) {
    const int width = metrics.horizontalAdvance(QStringLiteral("12"));
    painter.setPen(ColorOf(ColorRole::Soft, palette));
    painter.drawText(QRect(room.left(), room.top(), width, room.height()), Qt::AlignVCenter | Qt::AlignRight, number);
    room.setLeft(room.left() + width + kit::kGrid);
  }

  const int volume = index.data(TryRows::kVolume).toInt();
  painter.setPen(ColorOf(isMissing ? ColorRole::Soft : ColorRole::Text, palette));
  painter.drawText(room, Qt::AlignVCenter | Qt::AlignRight, isMissing ? tr("missing") : tr("%1 %").arg(volume));
  if (!isMissing) {
    const QRectF bar = BarRect(option.rect, metrics);
    const double share = std::clamp(volume / 100.0, 0.0, 1.0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ColorOf(ColorRole::Line, palette));
    painter.drawRoundedRect(bar, kBarHeight / 2.0, kBarHeight / 2.0);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(bar.left(), bar.top(), bar.width() * share, bar.height()), kBarHeight / 2.0,
                            kBarHeight / 2.0);
    if (isHot || isHere) {
      painter.setBrush(ColorOf(ColorRole::Card, palette));
      painter.setPen(QPen(color, 2));
      painter.drawEllipse(QPointF(bar.left() + bar.width() * share, bar.center().y()), kKnob / 2.0, kKnob / 2.0);
    }
    room.setRight(static_cast<int>(bar.left()) - kit::kGrid);
  }

  QFont font = option.font;
  font.setBold(isLit);
  painter.setFont(font);
  painter.setPen(text);
  const QFontMetrics shown(font);
  const int most = room.width() - (isLit ? kSoundingWidth + kit::kGrid : 0);
  QString name = index.data(Qt::DisplayRole).toString();
  // All have the same ending: it goes first.
  if (shown.horizontalAdvance(name) > most && name.contains(QLatin1Char('.')))
    name.truncate(name.lastIndexOf(QLatin1Char('.')));
  name = shown.elidedText(name, Qt::ElideMiddle, most);
  painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft, name);
  if (isLit)
    PaintSounding(painter, QPointF(room.left() + shown.horizontalAdvance(name) + kit::kGrid, room.center().y() + 6),
                  color, m_step);
}

}  // namespace kestrin::ui::stage
