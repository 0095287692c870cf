#include "sound/ui/ElidedLabel.h"

#include <QPainter>

namespace kestrin::sound::ui {

QSize ElidedLabel::minimumSizeHint() const {
  constexpr int kLetters = 4;
  return {kLetters * fontMetrics().averageCharWidth(), QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(text(), Qt::ElideMiddle, width()));
}

}  // namespace kestrin::sound::ui
