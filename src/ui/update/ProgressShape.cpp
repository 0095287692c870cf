// SPDX-License-Identifier: MIT
#include "ui/update/ProgressShape.h"

#include <QPainter>
#include <QPainterPath>

#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::update {

ProgressShape::ProgressShape(QWidget& background) : QProgressBar(&background) {
  constexpr int kWhole = 100;
  setRange(0, kWhole);
  setValue(0);
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void ProgressShape::SetFullWidth(std::int16_t width) {
  m_fullWidth = width;
  resize(width, parentWidget()->height());
  update();
}

void ProgressShape::SetPercentage(std::int32_t percentage) {
  if (m_percentage == percentage) return;
  m_percentage = percentage;
  // What screen readers tell.
  setValue(percentage);
  update();
}

double ProgressShape::ShapeWidth() const {
  constexpr double kHundred = 100.0;
  return static_cast<double>(m_fullWidth * m_percentage) / kHundred;
}

void ProgressShape::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double radius = height() / 2.0;
  QPainterPath whole;
  whole.addRoundedRect(QRectF(0, 0, m_fullWidth, height()), radius, radius);
  QPainterPath share;
  share.addRoundedRect(QRectF(0, 0, ShapeWidth(), height()), radius, radius);
  // A short share keeps inside the rounded end of the whole.
  painter.fillPath(share.intersected(whole), kit::ColorOf(kit::ColorRole::Accent, palette()));
}

}  // namespace kestrin::ui::update
