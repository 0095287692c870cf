// SPDX-License-Identifier: MIT
#include "ui/motion/Shelf.h"

#include <QEvent>
#include <QLayout>

namespace kestrin::ui::motion {

Shelf::Shelf(const QString& name, QWidget& contents, QWidget* parent) : QScrollArea(parent) {
  setObjectName(name);
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setAutoFillBackground(false);
  setWidget(&contents);
  // The area has given them a ground.
  contents.setAutoFillBackground(false);
}

void Shelf::Measure() {
  widget()->layout()->activate();
  updateGeometry();
}

QSize Shelf::sizeHint() const { return widget()->sizeHint(); }

QSize Shelf::minimumSizeHint() const {
  return {widget()->minimumSizeHint().width(), QScrollArea::minimumSizeHint().height()};
}

bool Shelf::eventFilter(QObject* watched, QEvent* event) {
  const bool consumed = QScrollArea::eventFilter(watched, event);
  // An area keeps to itself what its contents need.
  if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
  return consumed;
}

}  // namespace kestrin::ui::motion
