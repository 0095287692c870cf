// SPDX-License-Identifier: MIT
#include "ui/doctor/Shelf.h"

#include <QLayout>

namespace kestrin::ui::doctor {

namespace {

/// The least that can be read at a time.
constexpr int kLeastHeight = 72;

}  // namespace

Shelf::Shelf(QWidget& contents, int width, int margin, QWidget* parent) : QScrollArea(parent), m_margin(margin) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFixedWidth(width);
  // It stands on the sheet's own ground.
  viewport()->setAutoFillBackground(false);
  setWidget(&contents);
  // The area has given it a ground.
  contents.setAutoFillBackground(false);
  SetMargin(margin);
}

QSize Shelf::sizeHint() const {
  const QLayout& contents = *widget()->layout();
  return {width(), contents.heightForWidth(width() - m_margin + contents.contentsMargins().right())};
}

QSize Shelf::minimumSizeHint() const { return {width(), kLeastHeight}; }

void Shelf::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  SetMargin(m_margin - (width() - viewport()->width()));
}

void Shelf::SetMargin(int right) {
  QLayout& contents = *widget()->layout();
  QMargins margins = contents.contentsMargins();
  margins.setRight(right);
  contents.setContentsMargins(margins);
}

}  // namespace kestrin::ui::doctor
