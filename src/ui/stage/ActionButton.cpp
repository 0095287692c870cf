// SPDX-License-Identifier: MIT
#include "ui/stage/ActionButton.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>
#include <cmath>
#include <numbers>

#include "ui/kit/ControlPainter.h"
#include "ui/kit/Grid.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::stage {

namespace {

constexpr int kHeight = 44;
constexpr int kSign = 22;
constexpr int kKeyHeight = 20;
/// Between the picture, the words and the key.
constexpr int kGap = kit::kGrid + kit::kHair;

QFont Bold(QFont font) {
  font.setBold(true);
  return font;
}

}  // namespace

ActionButton::ActionButton(const QString& name, Sign sign, const QString& text, const QString& key, QWidget* parent)
    : QPushButton(text, parent), m_sign(sign), m_key(key) {
  setObjectName(name);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

int ActionButton::KeyWidth() const { return QFontMetrics(Bold(font())).horizontalAdvance(m_key) + 2 * kit::kGrid; }

QSize ActionButton::sizeHint() const {
  const int text = QFontMetrics(Bold(font())).horizontalAdvance(this->text());
  return {kSign + text + KeyWidth() + 2 * kGap + 2 * kit::kGrid, kHeight};
}

QSize ActionButton::minimumSizeHint() const {
  // Where there is little room the picture goes.
  return {sizeHint().width() - kSign - kGap - kit::kGrid, kHeight - kit::kGrid};
}

void ActionButton::PaintSign(QPainter& painter, const QRectF& box) const {
  painter.translate(box.topLeft());
  painter.scale(box.width() / 24, box.height() / 24);
  const QColor grey = kit::ColorOf(kit::ColorRole::Soft, palette());
  const QColor blue = kit::ColorOf(kit::ColorRole::Accent, palette());
  const auto pen = [](const QColor& color) { return QPen(color, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin); };
  painter.setBrush(Qt::NoBrush);
  switch (m_sign) {
    case Sign::Power:
      painter.setPen(pen(grey));
      painter.drawArc(QRectF(4, 4.5, 16, 16), (90 + 38) * 16, (360 - 76) * 16);
      painter.setPen(pen(blue));
      painter.drawLine(QPointF(12, 3), QPointF(12, 11));
      break;
    case Sign::Swing: {
      painter.setPen(pen(grey));
      painter.drawLine(QPointF(4, 20), QPointF(13, 11));
      painter.setPen(pen(blue));
      painter.drawArc(QRectF(-4, 4, 24, 24), 5 * 16, 75 * 16);
      painter.drawPolyline(QPolygonF({QPointF(16.4, 12.2), QPointF(20, 16), QPointF(22.4, 11.4)}));
      break;
    }
    case Sign::Hit:
      painter.setPen(pen(grey));
      painter.drawLine(QPointF(3, 21), QPointF(10.5, 13.5));
      painter.setPen(pen(blue));
      for (int ray = 0; ray < 8; ++ray) {
        const double way = ray * std::numbers::pi / 4;
        const QPointF to(std::cos(way), std::sin(way));
        if (ray != 3) painter.drawLine(QPointF(14, 10) + 4.2 * to, QPointF(14, 10) + 7.6 * to);
      }
      break;
    case Sign::Lockup:
      painter.setPen(pen(grey));
      painter.drawLine(QPointF(4, 20), QPointF(20, 4));
      painter.setPen(pen(blue));
      painter.drawLine(QPointF(4, 4), QPointF(20, 20));
      break;
  }
}

void ActionButton::paintEvent(QPaintEvent* /*event*/) {
  QStyleOption option;
  option.initFrom(this);
  if (isDown()) option.state |= QStyle::State_Sunken;
  if (isChecked()) option.state |= QStyle::State_On;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const kit::ControlPainter controls(&painter, &option);
  controls.ButtonPanel(false, false);
  if (isEnabled() && (isDown() || isChecked()) && !hasFocus())
    controls.Box(QRectF(rect()), 5, Qt::transparent, kit::ColorOf(kit::ColorRole::Accent, palette()), 1);

  const QFontMetrics metrics(Bold(font()));
  const int words = metrics.horizontalAdvance(text());
  const bool hasSign = width() >= sizeHint().width() - kit::kGrid;
  const int all = (hasSign ? kSign + kGap : 0) + words + kGap + KeyWidth();
  double left = (width() - all) / 2.0;
  if (hasSign) {
    painter.save();
    PaintSign(painter, QRectF(left, (height() - kSign) / 2.0, kSign, kSign));
    painter.restore();
    left += kSign + kGap;
  }
  painter.setFont(Bold(font()));
  const QColor ink = palette().color(isEnabled() ? QPalette::Normal : QPalette::Disabled, QPalette::ButtonText);
  painter.setPen(ink);
  painter.drawText(QRectF(left, 0, words + 1, height()), Qt::AlignVCenter | Qt::AlignLeft, text());
  left += words + kGap;
  const QRectF key(left, (height() - kKeyHeight) / 2.0, KeyWidth(), kKeyHeight);
  controls.Box(key, 4, Qt::transparent, kit::ColorOf(kit::ColorRole::Outline, palette()), 1);
  painter.drawText(key, Qt::AlignCenter, m_key);
}

}  // namespace kestrin::ui::stage
