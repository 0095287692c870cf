// SPDX-License-Identifier: MIT
#include "ui/motion/MarkRow.h"

#include <QPainter>

#include "ui/kit/Grid.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::motion {

namespace {

constexpr int kRing = 24;
/// Of the next one's ring to its halo.
constexpr int kHalo = 3;

}  // namespace

MarkRow::MarkRow(const QString& name, core::sound::SlotKind slot, std::size_t steps, QWidget* parent)
    : QWidget(parent), m_slot(slot), m_steps(steps) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setAccessibleName(name);
  Show(0, false);
}

void MarkRow::Show(std::size_t done, bool isTheirTurn) {
  m_done = done;
  m_isTheirTurn = isTheirTurn;
  setAccessibleDescription(tr("%1 of %2 done").arg(done).arg(m_steps));
  update();
}

QSize MarkRow::sizeHint() const {
  const auto steps = static_cast<int>(m_steps);
  return {steps * kRing + (steps - 1) * kit::kGrid + 2 * kHalo, kRing + 2 * kHalo};
}

void MarkRow::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor color = kit::SlotColor(m_slot, palette());
  QRectF ring(kHalo, kHalo, kRing, kRing);
  for (std::size_t step = 0; step < m_steps; ++step, ring.translate(kRing + kit::kGrid, 0)) {
    const QPointF middle = ring.center();
    if (step < m_done) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(color);
      painter.drawEllipse(ring);
      painter.setPen(
          QPen(kit::ColorOf(kit::ColorRole::Card, palette()), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      painter.drawPolyline(QPolygonF({middle + QPointF(-5, 0), middle + QPointF(-1.5, 3.5), middle + QPointF(5, -4)}));
      continue;
    }
    const bool isNext = m_isTheirTurn && step == m_done;
    if (isNext && !kit::IsHighContrast(palette())) {
      QColor halo = color;
      halo.setAlphaF(0.3F);
      painter.setPen(Qt::NoPen);
      painter.setBrush(halo);
      painter.drawEllipse(ring.adjusted(-kHalo, -kHalo, kHalo, kHalo));
    }
    painter.setPen(QPen(isNext ? color : kit::ColorOf(kit::ColorRole::Outline, palette()), 2));
    painter.setBrush(kit::ColorOf(kit::ColorRole::Card, palette()));
    painter.drawEllipse(ring.adjusted(1, 1, -1, -1));
    painter.setPen(kit::ColorOf(isNext ? kit::ColorRole::Text : kit::ColorRole::Soft, palette()));
    painter.drawText(ring, Qt::AlignCenter, QString::number(step + 1));
  }
}

}  // namespace kestrin::ui::motion
