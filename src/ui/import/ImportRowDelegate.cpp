// SPDX-License-Identifier: MIT
#include "ui/import/ImportRowDelegate.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionButton>
#include <QWidget>
#include <algorithm>

#include "core/sound/SlotKind.h"
#include "ui/import/ImportColumns.h"
#include "ui/import/ImportModel.h"
#include "ui/import/ImportTexts.h"
#include "ui/kit/ControlPainter.h"
#include "ui/kit/Grid.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::imports {

using kit::ColorOf;
using kit::ColorRole;

namespace {

constexpr int kChipHeight = 20;
constexpr int kDot = 8;
constexpr int kArrow = 14;
constexpr int kSign = 10;
constexpr int kWarningSign = 14;
/// How strong the slot's colour is on a chip's ground, and on its edge.
constexpr float kTint = 0.14F;
constexpr float kEdge = 0.55F;
/// The same of what cannot be imported on its row.
constexpr float kErrorTint = 0.1F;

QColor Mixed(const QColor& one, const QColor& other, float share) {
  const auto mix = [share](float a, float b) { return a * share + b * (1 - share); };
  return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                          mix(one.blueF(), other.blueF()));
}

/// A mixture where the palette bears one: with high contrast it is the ground itself.
QColor Tinted(const QColor& color, const QColor& ground, float share, const QPalette& palette) {
  return kit::IsHighContrast(palette) ? ground : Mixed(color, ground, share);
}

void PaintGround(QPainter& painter, const QStyleOptionViewItem& option, bool isFailed) {
  const QPalette& palette = option.palette;
  const QColor card = ColorOf(ColorRole::Card, palette);
  if (option.state.testFlag(QStyle::State_Selected))
    painter.fillRect(option.rect, ColorOf(ColorRole::Selection, palette));
  else if (isFailed)
    painter.fillRect(option.rect, Tinted(ColorOf(ColorRole::Error, palette), card, kErrorTint, palette));
  else if (option.state.testFlag(QStyle::State_MouseOver))
    painter.fillRect(option.rect, ColorOf(ColorRole::AccentSoft, palette));
  // As sharp as the lines of cards.
  painter.fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1),
                   ColorOf(ColorRole::Line, palette));
}

void PaintTick(QPainter& painter, const QRect& where, const QStyleOptionViewItem& option, const QModelIndex& index) {
  QStyleOptionButton box;
  box.palette = option.palette;
  box.rect = where;
  box.state = index.data(Qt::CheckStateRole).toInt() == Qt::Checked ? QStyle::State_On : QStyle::State_Off;
  if (!index.data(ImportModel::kIsFailed).toBool()) box.state |= QStyle::State_Enabled;
  kit::ControlPainter(&painter, &box).CheckBox();
}

/// A ring or a triangle with an exclamation mark.
void PaintSign(QPainter& painter, const QRect& where, const QColor& color) {
  QRectF box(0, 0, kWarningSign, kWarningSign);
  box.moveCenter(QRectF(where).center());
  painter.setPen(QPen(color, 1.4));
  painter.setBrush(Qt::NoBrush);
  painter.drawEllipse(box.adjusted(0.7, 0.7, -0.7, -0.7));
  painter.fillRect(QRectF(box.center().x() - 0.8, box.top() + 3.4, 1.6, 4.4), color);
  painter.fillRect(QRectF(box.center().x() - 0.8, box.top() + 9, 1.6, 1.6), color);
}

void PaintChanges(QPainter& painter, QRect where, const QStyleOptionViewItem& option, const QModelIndex& index) {
  const auto tone = static_cast<ImportModel::Tone>(index.data(ImportModel::kTone).toInt());
  ColorRole role = ColorRole::Text;
  if (tone == ImportModel::Tone::Quiet) role = ColorRole::Soft;
  if (tone == ImportModel::Tone::Warning) role = ColorRole::Warning;
  if (tone == ImportModel::Tone::Error) role = ColorRole::Error;
  const QColor color = ColorOf(role, option.palette);
  if (role == ColorRole::Warning || role == ColorRole::Error) {
    PaintSign(painter, QRect(where.left(), where.top(), kWarningSign, where.height()), color);
    where.setLeft(where.left() + kWarningSign + kit::kGrid);
  }
  painter.setPen(color);
  const QString text = index.data(ImportModel::kChanges).toString();
  painter.drawText(where, Qt::AlignVCenter | Qt::AlignLeft,
                   option.fontMetrics.elidedText(text, Qt::ElideRight, where.width()));
}

/// What stands before the text of a button: a triangle, or a square while it plays.
void PaintPlay(QPainter& painter, const QRectF& box, const QColor& color, bool isPlaying) {
  if (isPlaying) return painter.fillRect(box.adjusted(0.5, 0.5, -0.5, -0.5), color);
  QPainterPath triangle;
  triangle.moveTo(box.left() + 1, box.top());
  triangle.lineTo(box.right(), box.center().y());
  triangle.lineTo(box.left() + 1, box.bottom());
  triangle.closeSubpath();
  painter.fillPath(triangle, color);
}

/// The two buttons, which are one frame with a line in its middle.
class Halves {
 public:
  Halves(QPainter& painter, const ImportColumns& columns, const QStyleOptionViewItem& option, const QModelIndex& index)
      : m_painter(painter),
        m_option(option),
        m_hasCaptions(columns.hasCaptions),
        m_canPlay(index.data(ImportModel::kCanPlay).toInt()),
        m_playing(index.data(ImportModel::kPlaying).toInt()) {
    if (m_canPlay == 0) return;
    const QRectF frame = QRectF(columns.before.united(columns.after)).adjusted(0.5, 2.5, -0.5, -3.5);
    QPainterPath shape;
    shape.addRoundedRect(frame, kRadius, kRadius);
    m_painter.fillPath(shape, ColorOf(ColorRole::Card, m_option.palette));
    m_painter.save();
    m_painter.setClipPath(shape);
    for (const ImportModel::Half half : {ImportModel::Half::Before, ImportModel::Half::After})
      if (static_cast<int>(half) == m_playing)
        m_painter.fillRect(half == ImportModel::Half::Before ? columns.before : columns.after,
                           ColorOf(ColorRole::Accent, m_option.palette));
    m_painter.restore();
    m_painter.strokePath(shape, QPen(ColorOf(ColorRole::Line, m_option.palette), 1));
    m_painter.setPen(ColorOf(ColorRole::Line, m_option.palette));
    m_painter.drawLine(QPointF(columns.after.left() + 0.5, frame.top()),
                       QPointF(columns.after.left() + 0.5, frame.bottom()));
    Caption(columns.before, ImportModel::Half::Before, ImportTexts::tr("Before"));
    Caption(columns.after, ImportModel::Half::After, ImportTexts::tr("After"));
  }

 private:
  static constexpr qreal kRadius = 5;

  void Caption(const QRect& where, ImportModel::Half half, const QString& name) {
    const bool isPlaying = static_cast<int>(half) == m_playing;
    const bool canPlay = (m_canPlay & (1 << static_cast<int>(half))) != 0;
    QColor color = m_option.palette.color(canPlay ? QPalette::Normal : QPalette::Disabled, QPalette::ButtonText);
    if (isPlaying) color = ColorOf(ColorRole::AccentText, m_option.palette);
    const QString text = !m_hasCaptions ? QString() : isPlaying ? ImportTexts::tr("Stop") : name;
    const int width =
        !m_hasCaptions ? kSign : kSign + kit::kHalf + kit::kHair + m_option.fontMetrics.horizontalAdvance(text);
    const QRectF sign(where.center().x() - width / 2.0 + 1, where.center().y() - kSign / 2.0 + 0.5, kSign, kSign);
    PaintPlay(m_painter, sign, color, isPlaying);
    m_painter.setPen(color);
    const QRect rest(static_cast<int>(sign.right()) + kit::kHalf + kit::kHair, where.top(), where.width(),
                     where.height());
    m_painter.drawText(rest, Qt::AlignVCenter | Qt::AlignLeft, text);
  }

  QPainter& m_painter;
  const QStyleOptionViewItem& m_option;
  bool m_hasCaptions;
  int m_canPlay;
  int m_playing;
};

}  // namespace

void ImportRowDelegate::PaintChip(QPainter& painter, const QRect& where, const QString& text, int slot, bool isSure,
                                  bool hasArrow, const QPalette& palette) {
  QRectF chip(where.left() + 0.5, 0, where.width() - 1, kChipHeight - 1);
  chip.moveCenter(QPointF(chip.center().x(), QRectF(where).center().y()));
  const QColor card = ColorOf(ColorRole::Card, palette);
  const QColor own = slot == 0 ? ColorOf(ColorRole::Outline, palette)
                               : kit::SlotColor(static_cast<core::sound::SlotKind>(slot), palette);
  QPainterPath shape;
  shape.addRoundedRect(chip, chip.height() / 2, chip.height() / 2);
  painter.fillPath(shape, Tinted(own, card, kTint, palette));
  QPen edge(isSure ? Tinted(own, card, kEdge, palette) : own, 1);
  if (kit::IsHighContrast(palette)) edge.setColor(own);
  if (!isSure) edge.setDashPattern({3, 2.5});
  painter.strokePath(shape, edge);
  int left = where.left() + kit::kGrid;
  if (slot != 0) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(own);
    painter.drawEllipse(QRectF(left, chip.center().y() - kDot / 2.0, kDot, kDot));
    left += kDot + kit::kHalf + kit::kHair;
  } else {
    left += kit::kHair;
  }
  painter.setPen(ColorOf(ColorRole::Text, palette));
  painter.drawText(QRect(left, where.top(), where.right() - left, where.height()), Qt::AlignVCenter | Qt::AlignLeft,
                   text);
  if (!hasArrow) return;
  QStyleOptionButton arrow;
  arrow.palette = palette;
  arrow.state = QStyle::State_Enabled;
  kit::ControlPainter(&painter, &arrow)
      .Chevron(QRectF(chip.right() - kArrow - kit::kHalf, chip.top(), kArrow, chip.height()), false, true);
}

void ImportRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const QPalette& palette = option.palette;
  const bool isFailed = index.data(ImportModel::kIsFailed).toBool();
  ImportColumns columns = ImportColumns::Of(option.rect, option.fontMetrics);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setFont(option.font);
  PaintGround(*painter, option, isFailed);
  PaintTick(*painter, columns.tick, option, index);
  const bool isComing = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
  painter->setPen(ColorOf(isComing || isFailed ? ColorRole::Text : ColorRole::Soft, palette));
  painter->drawText(
      columns.name, Qt::AlignVCenter | Qt::AlignLeft,
      option.fontMetrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideMiddle, columns.name.width()));
  painter->setPen(ColorOf(ColorRole::Soft, palette));
  const QString length = index.data(ImportModel::kLength).toString();
  // Why a sound is left out needs all the room that there is.
  if (isFailed)
    columns.changes.setCoords(columns.length.left(), option.rect.top(), columns.after.right(), option.rect.bottom());
  else
    painter->drawText(columns.length, Qt::AlignVCenter | Qt::AlignRight,
                      length.isEmpty() ? QStringLiteral("\u2013") : length);
  PaintChanges(*painter, columns.changes, option, index);
  if (!isFailed) {
    PaintChip(*painter, columns.slot, index.data(ImportModel::kSlotText).toString(),
              index.data(ImportModel::kSlot).toInt(), index.data(ImportModel::kIsSure).toBool(), true, palette);
    painter->setPen(ColorOf(ColorRole::Soft, palette));
    if (columns.hasSize)
      painter->drawText(columns.size, Qt::AlignVCenter | Qt::AlignRight, index.data(ImportModel::kSize).toString());
    const Halves halves(*painter, columns, option, index);
  }
  if (option.state.testFlag(QStyle::State_HasFocus)) {
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(ColorOf(ColorRole::Accent, palette));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
  }
  painter->restore();
}

QSize ImportRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const {
  return {ImportColumns::LeastWidth(option.fontMetrics),
          std::max(kRowHeight, option.fontMetrics.height() + kit::kGrid)};
}

}  // namespace kestrin::ui::imports
