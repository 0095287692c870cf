// SPDX-License-Identifier: MIT
#include "ui/board/BoardChip.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>

#include "ui/kit/ControlPainter.h"
#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::board {

namespace {

using kit::ColorOf;
using kit::ColorRole;

constexpr int kHeight = 24;
constexpr int kDot = 8;
constexpr int kArrow = 22;
/// The widest that it wants to be; what does not fit is in the tool tip.
constexpr int kWidest = 360;
constexpr int kLeast = 96;
constexpr double kDisabledOpacity = 0.5;
/// Of the warning's colour in the ground, of 255.
constexpr int kTint = 30;

ColorRole DotOf(BoardChip::State state) {
  switch (state) {
    case BoardChip::State::Same:
      return ColorRole::Ok;
    case BoardChip::State::Differs:
      return ColorRole::Warning;
    case BoardChip::State::Other:
      return ColorRole::Accent;
    default:
      return ColorRole::Soft;
  }
}

}  // namespace

BoardChip::BoardChip(QWidget* parent) : QToolButton(parent) {
  setObjectName("BoardChip");
  setFocusPolicy(Qt::TabFocus);
  setPopupMode(QToolButton::DelayedPopup);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  kit::SetHelp(*this, tr("What the board holds: click to compare it with this set, arrow down for more"));
}

void BoardChip::Show(State state, const QString& words, int more, const QString& all) {
  m_state = state;
  m_words = tr("Board: %1").arg(words);
  m_more = more > 0 ? tr("+%1").arg(more) : QString();
  const QString whole = tr("Board: %1").arg(all);
  setText(Words());
  setAccessibleName(whole);
  setAccessibleDescription(tr("Opens the comparison of this set and the board"));
  setToolTip(whole);
  updateGeometry();
  update();
}

QString BoardChip::Words() const { return m_more.isEmpty() ? m_words : m_words + ' ' + m_more; }

QSize BoardChip::sizeHint() const {
  QFont bold = font();
  bold.setBold(true);
  const int more = m_more.isEmpty() ? 0 : kit::kHalf + QFontMetrics(bold).horizontalAdvance(m_more);
  const int words = fontMetrics().horizontalAdvance(m_words) + 1;
  return {std::min(kWidest, kit::kGrid + kDot + kit::kHalf + words + more + kArrow), kHeight};
}

QSize BoardChip::minimumSizeHint() const { return {std::min(kLeast, sizeHint().width()), kHeight}; }

void BoardChip::paintEvent(QPaintEvent* /*event*/) {
  QStyleOption option;
  option.initFrom(this);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!isEnabled()) painter.setOpacity(kDisabledOpacity);
  const bool isPlain = kit::IsHighContrast(palette());
  QColor ground = ColorOf(ColorRole::Card, palette());
  const bool warns = m_state == State::Differs && !isPlain;
  const QColor tone = ColorOf(warns ? ColorRole::Warning : ColorRole::Outline, palette());
  const kit::ControlPainter controls(&painter, &option);
  const QRectF box = QRectF(rect());
  controls.Box(box, kHeight / 2.0, ground, hasFocus() ? ColorOf(ColorRole::Accent, palette()) : tone,
               hasFocus() ? 2 : 1);
  if (warns || underMouse()) {
    QColor tint = warns ? tone : ColorOf(ColorRole::Accent, palette());
    tint.setAlpha(kTint);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tint);
    if (!isPlain) painter.drawRoundedRect(box.adjusted(1, 1, -1, -1), kHeight / 2.0 - 1, kHeight / 2.0 - 1);
  }
  painter.setPen(Qt::NoPen);
  painter.setBrush(ColorOf(DotOf(m_state), palette()));
  painter.drawEllipse(QRectF(kit::kGrid, (height() - kDot) / 2.0, kDot, kDot));

  QRect room = rect().adjusted(kit::kGrid + kDot + kit::kHalf, 0, -kArrow, 0);
  QFont bold = font();
  bold.setBold(true);
  const int more = m_more.isEmpty() ? 0 : kit::kHalf + QFontMetrics(bold).horizontalAdvance(m_more);
  const QString words = fontMetrics().elidedText(m_words, Qt::ElideRight, room.width() - more);
  painter.setPen(ColorOf(ColorRole::Text, palette()));
  painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, words);
  if (more > 0) {
    room.setLeft(room.left() + fontMetrics().horizontalAdvance(words) + kit::kHalf);
    painter.setFont(bold);
    painter.setPen(ColorOf(ColorRole::Warning, palette()));
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, m_more);
  }
  controls.Chevron(QRectF(width() - kArrow, 0, kArrow - kit::kHalf, height()), false, isEnabled());
}

void BoardChip::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && menu() != nullptr && event->pos().x() >= width() - kArrow) return showMenu();
  QToolButton::mousePressEvent(event);
}

void BoardChip::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Down && menu() != nullptr) return showMenu();
  QToolButton::keyPressEvent(event);
}

}  // namespace kestrin::ui::board
