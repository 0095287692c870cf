// SPDX-License-Identifier: MIT
#include "ui/led/BladeView.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace kestrin::ui::led {

namespace {

constexpr int kHeight = 44;
constexpr qreal kRadius = 6;
constexpr qreal kMargin = 14;
constexpr qreal kHiltLength = 64;
constexpr qreal kHiltThickness = 12;
constexpr qreal kBladeThickness = 10;
/// Rings of light round the blade, each a pixel farther out.
constexpr int kGlow = 14;
constexpr QRgb kSteel = 0xff8f99a8;
constexpr QRgb kGrip = 0xff3a414d;
constexpr QRgb kTube = 0xff2a303a;

QColor Between(const QColor& one, const QColor& other, double share) {
  const auto part = static_cast<float>(share);
  return QColor::fromRgbF(one.redF() + (other.redF() - one.redF()) * part,
                          one.greenF() + (other.greenF() - one.greenF()) * part,
                          one.blueF() + (other.blueF() - one.blueF()) * part);
}

void PaintHilt(QPainter& painter, const QRectF& hilt) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(kSteel));
  painter.drawRoundedRect(hilt, 2.5, 2.5);
  painter.setBrush(QColor(kGrip));
  constexpr int kRibs = 4;
  constexpr qreal kRib = 5;
  for (int rib = 0; rib < kRibs; ++rib)
    painter.drawRoundedRect(QRectF(hilt.left() + 8 + rib * 2 * kRib, hilt.top(), kRib, hilt.height()), 1, 1);
}

void PaintBlade(QPainter& painter, const QRectF& blade, const BladeLight& light) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(kTube));
  painter.drawRoundedRect(blade, blade.height() / 2, blade.height() / 2);
  if (light.brightness <= 0) return;
  QColor glow = light.hue;
  for (int ring = kGlow; ring > 0; --ring) {
    // Rings lie on one another: towards the blade they add up.
    glow.setAlphaF(static_cast<float>(0.10 * light.brightness * (kGlow + 1 - ring) / kGlow));
    painter.setBrush(glow);
    painter.drawRoundedRect(blade.adjusted(0, -ring, ring, ring), blade.height() / 2 + ring, blade.height() / 2 + ring);
  }
  const QColor tube = Between(QColor(kTube), light.hue, light.brightness);
  painter.setBrush(tube);
  painter.drawRoundedRect(blade, blade.height() / 2, blade.height() / 2);
  // A bright blade looks nearly white in its middle.
  painter.setBrush(Between(tube, Qt::white, 0.75 * light.brightness * light.brightness));
  const qreal inset = blade.height() * 0.28;
  const QRectF core = blade.adjusted(0, inset, -inset, -inset);
  painter.drawRoundedRect(core, core.height() / 2, core.height() / 2);
}

}  // namespace

BladeView::BladeView(QWidget* parent) : QWidget(parent) {
  setFixedHeight(kHeight);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void BladeView::Show(const BladeLight& light) {
  if (light == m_light) return;
  m_light = light;
  update();
}

void BladeView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath ground;
  ground.addRoundedRect(rect(), kRadius, kRadius);
  painter.fillPath(ground, QColor(kGround));
  painter.setClipPath(ground);
  const qreal middle = height() / 2.0;
  const qreal hilt = std::min(kHiltLength, width() / 4.0);
  const QRectF blade(kMargin + hilt, middle - kBladeThickness / 2, width() - 2 * kMargin - hilt, kBladeThickness);
  PaintBlade(painter, blade, m_light);
  PaintHilt(painter, {kMargin, middle - kHiltThickness / 2, hilt, kHiltThickness});
}

}  // namespace kestrin::ui::led
