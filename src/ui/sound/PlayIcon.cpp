// SPDX-License-Identifier: MIT
#include "ui/sound/PlayIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::sound {

namespace {

constexpr int kSide = 16;
constexpr int kSign = 10;

QPainterPath Triangle(const QRectF& box) {
  QPainterPath path;
  path.moveTo(box.left() + box.width() * 0.1, box.top());
  path.lineTo(box.right(), box.center().y());
  path.lineTo(box.left() + box.width() * 0.1, box.bottom());
  path.closeSubpath();
  return path;
}

}  // namespace

void PaintPlaySign(QPainter& painter, const QRect& where, const QPalette& palette) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  QRectF box(0, 0, kSign, kSign);
  box.moveCenter(QRectF(where).center());
  painter.fillPath(Triangle(box), kit::ColorOf(kit::ColorRole::Accent, palette));
  painter.restore();
}

QIcon PlayIcon(bool stop, const QPalette& palette, qreal devicePixelRatio) {
  QIcon icon;
  for (const auto& [mode, group] :
       {std::pair{QIcon::Normal, QPalette::Normal}, {QIcon::Disabled, QPalette::Disabled}}) {
    QPixmap pixmap(QSize(kSide, kSide) * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box((kSide - kSign) / 2.0, (kSide - kSign) / 2.0, kSign, kSign);
    const QColor color = palette.color(group, QPalette::ButtonText);
    if (stop)
      painter.fillRect(box, color);
    else
      painter.fillPath(Triangle(box), color);
    painter.end();
    icon.addPixmap(pixmap, mode);
  }
  return icon;
}

}  // namespace kestrin::ui::sound
