// SPDX-License-Identifier: MIT
#include "render/Drawing.h"

#include <QPainter>
#include <QSvgRenderer>

namespace kestrin::assets {

QImage Draw(const QString& drawing, int side) {
  QSvgRenderer renderer;
  if (!renderer.load(drawing)) return {};
  QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  renderer.render(&painter);
  painter.end();
  return picture.convertToFormat(QImage::Format_ARGB32);
}

QImage Muted(const QImage& picture) {
  constexpr QRgb kGrey = qRgb(0x7d, 0x87, 0x94);
  constexpr int kAlphaPercent = 55;
  QImage muted = picture.convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < muted.height(); ++y) {
    for (int x = 0; x < muted.width(); ++x) {
      const int alpha = qAlpha(muted.pixel(x, y)) * kAlphaPercent / 100;
      muted.setPixel(x, y, qRgba(qRed(kGrey), qGreen(kGrey), qBlue(kGrey), alpha));
    }
  }
  return muted;
}

}  // namespace kestrin::assets
