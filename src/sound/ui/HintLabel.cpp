#include "sound/ui/HintLabel.h"

#include <QPainter>
#include <algorithm>

namespace kestrin::sound::ui {

QStringList HintLabel::Lines(int width) const {
  if (fontMetrics().horizontalAdvance(text()) <= width) return {text()};
  QStringList lines;
  for (const QString& part : text().split(QStringLiteral("  "), Qt::SkipEmptyParts)) lines.append(part.trimmed());
  return lines;
}

int HintLabel::heightForWidth(int width) const {
  return static_cast<int>(Lines(width).size()) * fontMetrics().lineSpacing();
}

QSize HintLabel::sizeHint() const { return minimumSizeHint(); }

QSize HintLabel::minimumSizeHint() const {
  int width = 0;
  for (const QString& line : Lines(0)) width = std::max(width, fontMetrics().horizontalAdvance(line));
  return {width, heightForWidth(width)};
}

void HintLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignTop, Lines(width()).join(QLatin1Char('\n')));
}

}  // namespace kestrin::sound::ui
