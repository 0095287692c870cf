#include "app/theme/Card.h"

#include <QPainter>
#include <QPainterPath>

#include "app/theme/ThemeColors.h"

namespace kestrin::app {
namespace {

constexpr qreal kRadius = 8;
constexpr qreal kStripe = 4;

}  // namespace

Card::Card(QWidget* parent) : QFrame(parent) {}

void Card::SetSlot(std::optional<sound::SlotKind> slot) {
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
  painter.fillPath(shape, ColorOf(ColorRole::Card, palette()));
  if (m_slot) {
    painter.save();
    painter.setClipPath(shape);
    painter.fillRect(QRectF(0, 0, kStripe + width - 1, height()), SlotColor(*m_slot, palette()));
    painter.restore();
  }
  if (m_slot && !m_isChosen) {
    // The stripe is this side's line.
    QPainterPath besideStripe;
    besideStripe.addRect(QRectF(kStripe, 0, this->width() - kStripe, height()));
    painter.setClipPath(besideStripe);
  }
  painter.strokePath(shape, QPen(ColorOf(m_isChosen ? ColorRole::Accent : ColorRole::Line, palette()), width));
}

}  // namespace kestrin::app
