// SPDX-License-Identifier: MIT
#include "ui/kit/LinkButton.h"

#include <QPainter>
#include <QStyleOption>

#include "ui/kit/ControlPainter.h"
#include "ui/kit/Grid.h"

namespace kestrin::ui::kit {

LinkButton::LinkButton(const QString& name, const QString& text, QWidget* parent) : QPushButton(text, parent) {
  setObjectName(name);
  // A click does something; the keyboard stays where it is.
  setFocusPolicy(Qt::TabFocus);
  setCursor(Qt::PointingHandCursor);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const {
  // Room for the ring beside the text.
  return fontMetrics().size(Qt::TextShowMnemonic, text()).grownBy({kHalf, kHair, kHalf, kHair});
}

void LinkButton::paintEvent(QPaintEvent* /*event*/) {
  QStyleOption option;
  option.initFrom(this);
  QPainter painter(this);
  ControlPainter(&painter, &option).ButtonPanel(false, true);
  QFont underlined = font();
  underlined.setUnderline(true);
  painter.setFont(underlined);
  painter.setPen(palette().color(QPalette::Link));
  painter.drawText(rect(), Qt::AlignCenter, text());
}

}  // namespace kestrin::ui::kit
