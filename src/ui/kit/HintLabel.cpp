// SPDX-License-Identifier: MIT
#include "ui/kit/HintLabel.h"

#include <QPainter>
#include <algorithm>

namespace kestrin::ui::kit {

QStringList HintLabel::Parts() const {
  QStringList parts;
  for (const QString& part : text().split(QStringLiteral("  "), Qt::SkipEmptyParts)) parts.append(part.trimmed());
  return parts;
}

QStringList HintLabel::Lines(int width) const {
  return fontMetrics().horizontalAdvance(text()) <= width ? QStringList(text()) : Parts();
}

int HintLabel::heightForWidth(int width) const {
  return static_cast<int>(Lines(width).size()) * fontMetrics().lineSpacing();
}

QSize HintLabel::sizeHint() const { return minimumSizeHint(); }

QSize HintLabel::minimumSizeHint() const {
  const QStringList parts = Parts();
  int width = 0;
  for (const QString& part : parts) width = std::max(width, fontMetrics().horizontalAdvance(part));
  return {width, std::max(1, static_cast<int>(parts.size())) * fontMetrics().lineSpacing()};
}

void HintLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignTop, Lines(width()).join(QLatin1Char('\n')));
}

}  // namespace kestrin::ui::kit
