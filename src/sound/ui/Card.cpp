#include "sound/ui/Card.h"

#include <QPainter>
#include <QPainterPath>

#include "app/theme/ThemeColors.h"

namespace kestrin::sound::ui {

Card::Card(QWidget* parent) : QFrame(parent) {}

QColor Card::Stripe() const { return {}; }

void Card::SetHighlighted(bool highlighted) {
  m_highlighted = highlighted;
  update();
}

void Card::paintEvent(QPaintEvent* /*event*/) {
  constexpr qreal kRadius = 6;
  constexpr int kStripe = 3;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath outline;
  outline.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
  painter.fillPath(outline, app::ColorOf(app::ColorRole::Card, palette()));
  if (const QColor stripe = Stripe(); stripe.isValid()) {
    painter.save();
    painter.setClipPath(outline);
    painter.fillRect(0, 0, kStripe, height(), stripe);
    painter.restore();
  }
  const QColor line = app::ColorOf(m_highlighted ? app::ColorRole::Accent : app::ColorRole::Line, palette());
  if (!m_highlighted) {
    painter.setPen(line);
    painter.drawPath(outline);
    return;
  }
  QPainterPath thick;
  thick.addRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kRadius, kRadius);
  painter.setPen(QPen(line, 2));
  painter.drawPath(thick);
}

}  // namespace kestrin::sound::ui
