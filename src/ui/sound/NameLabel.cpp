// SPDX-License-Identifier: MIT
#include "ui/sound/NameLabel.h"

#include <QPainter>
#include <algorithm>

namespace kestrin::ui::sound {

namespace {

constexpr int kWidest = 200;
constexpr int kFewestLetters = 5;

}  // namespace

QSize NameLabel::sizeHint() const {
  return {std::min(kWidest, fontMetrics().horizontalAdvance(text()) + 1), QLabel::sizeHint().height()};
}

QSize NameLabel::minimumSizeHint() const {
  return {std::min(sizeHint().width(), kFewestLetters * fontMetrics().averageCharWidth()), sizeHint().height()};
}

void NameLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(text(), Qt::ElideMiddle, width()));
}

}  // namespace kestrin::ui::sound
