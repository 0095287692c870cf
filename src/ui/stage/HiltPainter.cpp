// SPDX-License-Identifier: MIT
#include "ui/stage/HiltPainter.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <algorithm>

#include "ui/stage/BladePainter.h"

namespace kestrin::ui::stage {

namespace {

enum class Metal { Steel, Dark, Brass };

/// A turned piece, along the hilt from the mouth (0) backwards, with half its thickness at both ends.
struct Piece {
  double from;
  double to;
  double fromHalf;
  double toHalf;
  Metal metal;
};

/// From the pommel to the mouth, so that each ring lies over what it holds.
constexpr Piece kPieces[] = {
    {-208, -200, 12.0, 14.5, Metal::Steel},
    {-200, -190, 14.5, 14.5, Metal::Steel},
    {-190, -187, 12.5, 12.5, Metal::Dark},
    {-187, -184, 14.8, 14.8, Metal::Brass},
    {-184, -100, 12.6, 12.6, Metal::Dark},
    // The rings of the grip.
    {-180, -173, 14.2, 14.2, Metal::Steel},
    {-166, -159, 14.2, 14.2, Metal::Steel},
    {-152, -145, 14.2, 14.2, Metal::Steel},
    {-138, -131, 14.2, 14.2, Metal::Steel},
    {-124, -117, 14.2, 14.2, Metal::Steel},
    {-110, -103, 14.2, 14.2, Metal::Steel},
    // The box with the button, and the neck.
    {-102, -99, 15.8, 15.8, Metal::Brass},
    {-99, -62, 17.0, 17.0, Metal::Steel},
    {-62, -59, 15.8, 15.8, Metal::Brass},
    {-59, -40, 12.2, 12.2, Metal::Steel},
    {-54, -51, 13.2, 13.2, Metal::Dark},
    {-47, -44, 13.2, 13.2, Metal::Dark},
    // The emitter.
    {-40, -34, 13.0, 17.2, Metal::Steel},
    {-34, -14, 17.2, 18.2, Metal::Steel},
    {-30, -26, 17.9, 18.1, Metal::Dark},
    {-14, -10, 18.6, 18.6, Metal::Brass},
    {-10, 5, 18.2, 16.0, Metal::Steel},
};

QPainterPath ShapeOf(const Piece& piece) {
  QPainterPath path;
  path.moveTo(piece.from, -piece.fromHalf);
  path.lineTo(piece.to, -piece.toHalf);
  path.lineTo(piece.to, piece.toHalf);
  path.lineTo(piece.from, piece.fromHalf);
  path.closeSubpath();
  return path;
}

/// The way light from above lies on something round.
QLinearGradient LookOf(const Piece& piece) {
  const double half = std::max(piece.fromHalf, piece.toHalf);
  QLinearGradient look(0, -half, 0, half);
  struct Stop {
    double share;
    QRgb steel;
    QRgb dark;
    QRgb brass;
  };
  constexpr Stop kStops[] = {
      {0.00, 0xff5b646f, 0xff14181d, 0xff5d5138}, {0.10, 0xff9aa5b1, 0xff252b33, 0xff9a8860},
      {0.24, 0xfff4f8fb, 0xff5a6572, 0xfff3e2b4}, {0.34, 0xffccd4dc, 0xff39424c, 0xffc9b079},
      {0.55, 0xff87919d, 0xff1d2229, 0xff8a7548}, {0.80, 0xff454d57, 0xff0d1014, 0xff4a3f28},
      {0.92, 0xff2a3037, 0xff0a0c0f, 0xff2c2516}, {1.00, 0xff4a535d, 0xff1b2026, 0xff4b402b},
  };
  for (const Stop& stop : kStops)
    look.setColorAt(stop.share, QColor(piece.metal == Metal::Steel  ? stop.steel
                                       : piece.metal == Metal::Dark ? stop.dark
                                                                    : stop.brass));
  return look;
}

/// Into the mouth one looks a little: it is dark, or white-hot.
void PaintMouth(QPainter& painter, const QColor& hue, double bright) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xff07090b));
  painter.drawEllipse(QPointF(5, 0), 3.2, 15.6);
  QLinearGradient light(0, -15.6, 0, 15.6);
  QColor rim = hue;
  rim.setAlphaF(static_cast<float>(bright));
  QColor core(Qt::white);
  core.setAlphaF(static_cast<float>(bright));
  light.setColorAt(0, rim);
  light.setColorAt(0.3, core);
  light.setColorAt(0.7, core);
  light.setColorAt(1, rim);
  painter.setBrush(light);
  painter.drawEllipse(QPointF(5, 0), 3.2, 15.6);
}

void PaintButton(QPainter& painter, const Shine& shine) {
  const QPointF where(-80, -2);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xff11151a));
  painter.drawEllipse(where, 6.4, 6.4);
  painter.setPen(QPen(QColor(0xff717c88), 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawEllipse(where, 6.0, 6.0);
  // It is lit also while the blade is in: the board is awake.
  const double bright = 0.45 + 0.55 * shine.extent;
  QRadialGradient light(where, 4.4);
  QColor core = shine.hue.lighter(150);
  QColor rim = shine.hue;
  core.setAlphaF(static_cast<float>(bright));
  rim.setAlphaF(static_cast<float>(bright * 0.8));
  light.setColorAt(0, core);
  light.setColorAt(1, rim);
  painter.setPen(Qt::NoPen);
  painter.setBrush(light);
  painter.drawEllipse(where, 4.0, 4.0);
}

}  // namespace

void HiltPainter::Paint(QPainter& painter, const SaberPlace& place, const Shine& shine) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(place.Mouth());
  painter.rotate(-place.Degrees());
  painter.scale(place.Unit(), place.Unit());
  const double bright = std::min(1.0, shine.brightness + shine.flash) * std::min(1.0, shine.extent * 4);
  QLinearGradient thrown(5, 0, -96, 0);
  QColor light = shine.hue;
  light.setAlphaF(static_cast<float>(0.62 * bright));
  thrown.setColorAt(0, light);
  light.setAlphaF(static_cast<float>(0.20 * bright));
  thrown.setColorAt(0.35, light);
  light.setAlphaF(0);
  thrown.setColorAt(1, light);
  for (const Piece& piece : kPieces) {
    const QPainterPath shape = ShapeOf(piece);
    painter.fillPath(shape, LookOf(piece));
    if (bright > 0 && piece.to > -96) painter.fillPath(shape, thrown);
    // A dark line where one piece meets the next.
    painter.fillRect(QRectF(piece.from - 0.4, -piece.fromHalf, 0.8, 2 * piece.fromHalf), QColor(0, 0, 0, 110));
  }
  PaintMouth(painter, shine.hue, bright);
  PaintButton(painter, shine);
  painter.restore();
}

}  // namespace kestrin::ui::stage
