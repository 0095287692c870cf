// SPDX-License-Identifier: MIT
#include "ui/sound/MemoryBar.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::sound {

MemoryBar::MemoryBar(QWidget* parent) : QProgressBar(parent) {
  setTextVisible(false);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void MemoryBar::Show(const core::sound::MemoryUse& use) {
  m_use = use;
  // A bar from 0 to 0 would show that something is going on.
  setRange(0, static_cast<int>(std::max<std::int64_t>(1, use.capacity)));
  setValue(static_cast<int>(std::min(use.total, use.capacity)));
  update();
}

void MemoryBar::paintEvent(QPaintEvent* /*event*/) {
  using kit::ColorRole;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath groove;
  const qreal radius = height() / 2.0;
  groove.addRoundedRect(rect(), radius, radius);
  painter.setClipPath(groove);
  painter.fillPath(groove, kit::ColorOf(ColorRole::Line, palette()));
  // What does not fit is cut off where the memory ends.
  const auto all = static_cast<double>(std::max<std::int64_t>(1, m_use.capacity));
  double from = 0;
  for (std::size_t place = 0; place < core::sound::kSlots.size(); ++place) {
    const double to = from + static_cast<double>(m_use.samples[place]) / all * width();
    if (to > from) {
      // One pixel of the ground parts neighbours, so that they are told apart without colours.
      const double length = std::max(1.0, to - from - 1);
      painter.fillRect(QRectF(from, 0, length, height()), kit::SlotColor(core::sound::kSlots[place].kind, palette()));
    }
    from = to;
  }
  if (m_use.Fits()) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(kit::ColorOf(ColorRole::Error, palette()), 4));
  painter.drawPath(groove);
}

}  // namespace kestrin::ui::sound
