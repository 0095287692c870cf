// SPDX-License-Identifier: MIT
#include "ui/kit/WrapLabel.h"

#include <QPainter>
#include <QStaticText>
#include <QTextOption>
#include <algorithm>
#include <cmath>

namespace kestrin::ui::kit {

WrapLabel::WrapLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  // Only so does a label have a height that depends on its width.
  setWordWrap(true);
}

QStaticText WrapLabel::Laid(int width) const {
  // What static text takes for the end of a line.
  QStaticText laid(text().replace(QLatin1Char('\n'), QChar::LineSeparator));
  laid.setTextFormat(Qt::PlainText);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  laid.setTextOption(option);
  laid.setTextWidth(width);
  laid.prepare({}, font());
  return laid;
}

int WrapLabel::heightForWidth(int width) const {
  return std::max(fontMetrics().height(), static_cast<int>(std::ceil(Laid(width).size().height())));
}

QSize WrapLabel::sizeHint() const {
  constexpr int kWidth = 320;
  return {kWidth, heightForWidth(kWidth)};
}

QSize WrapLabel::minimumSizeHint() const { return {0, fontMetrics().height()}; }

void WrapLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawStaticText(0, 0, Laid(width()));
}

}  // namespace kestrin::ui::kit
