// SPDX-License-Identifier: MIT
#include "ui/kit/Card.h"

#include <QPainter>
#include <QPainterPath>

#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::kit {
namespace {

constexpr qreal kRadius = 8;
constexpr int kStripe = 4;

}  // namespace

Card::Card(QWidget* parent) : QFrame(parent) {}

void Card::SetSlot(std::optional<core::sound::SlotKind> slot) {
  m_slot = slot;
  update();
}

void Card::SetChosen(bool isChosen) {
  m_isChosen = isChosen;
  update();
}

void Card::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const qreal width = m_isChosen ? 2 : 1;
  const QRectF edge = QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2);
  QPainterPath shape;
  shape.addRoundedRect(edge, kRadius - width / 2, kRadius - width / 2);
  const QColor inside = ColorOf(ColorRole::Card, palette());
  if (m_slot) {
    // Each side is painted for itself: to paint within a path costs many times as much as within a rectangle.
    const int stripe = kStripe + (m_isChosen ? 1 : 0);
    painter.setClipRect(0, 0, stripe, height());
    painter.fillPath(shape, SlotColor(*m_slot, palette()));
    painter.setClipRect(rect().adjusted(stripe, 0, 0, 0));
    painter.fillPath(shape, inside);
    // The stripe is this side's line, unless the card is chosen.
    painter.setClipping(!m_isChosen);
  } else {
    painter.fillPath(shape, inside);
  }
  painter.strokePath(shape, QPen(ColorOf(m_isChosen ? ColorRole::Accent : ColorRole::Line, palette()), width));
}

}  // namespace kestrin::ui::kit
