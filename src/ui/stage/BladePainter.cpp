// SPDX-License-Identifier: MIT
#include "ui/stage/BladePainter.h"

#include <QConicalGradient>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "ui/stage/BladeMotion.h"

namespace kestrin::ui::stage {

namespace {

/// The drawing for which the measures below were made.
constexpr QSizeF kDrawing(920, 378);
constexpr double kHandX = 0.158;
constexpr double kHandY = 0.735;
constexpr double kHandToMouth = 100;
constexpr double kBladeLength = 622;
/// A blade that points up is seen shorter, as if it pointed away, so that more of it stays on the stage.
constexpr double kShortest = 0.66;
/// Half the thickness of the tube, and how far its light reaches from the middle.
constexpr double kTube = 11;
constexpr double kReach = 108;

constexpr double kRadian = std::numbers::pi / 180;

QColor WithAlpha(const QColor& color, double alpha) {
  QColor changed = color;
  changed.setAlphaF(static_cast<float>(std::clamp(alpha, 0.0, 1.0)));
  return changed;
}

QColor Mixed(const QColor& one, const QColor& other, double share) {
  const auto part = static_cast<float>(std::clamp(share, 0.0, 1.0));
  const auto mix = [part](float from, float to) { return from + (to - from) * part; };
  return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                          mix(one.blueF(), other.blueF()), mix(one.alphaF(), other.alphaF()));
}

QColor HueOf(const Shine& shine) { return Mixed(shine.hue, shine.flashHue, 0.65 * shine.flash); }

/// The light at that distance from the middle of the blade, both in units: a white core, the coloured tube, a near
/// glow that falls off steeply and a wide one that hardly does.
QColor LightAt(double distance, const Shine& shine) {
  const double bright = std::clamp(shine.brightness * shine.shimmer + 0.35 * shine.flash, 0.0, 1.3);
  const QColor hue = HueOf(shine);
  const double core = kTube * (0.54 + 0.24 * shine.flash);
  // One on the core, nothing from the tube's edge on.
  const double white = std::clamp((kTube * 1.04 - distance) / (kTube * 1.04 - core), 0.0, 1.0);
  const double tube = std::clamp((kTube * 1.3 - distance) / (kTube * 0.36), 0.0, 1.0);
  const double outside = std::max(0.0, distance - kTube);
  const double near = 0.62 * std::exp(-outside / 13.0);
  const double wide = 0.20 * std::exp(-outside * outside / (2 * 38.0 * 38.0));
  // All of it ends at the edge of what is painted, without a step.
  const double edge = std::clamp((kReach - distance) / 30.0, 0.0, 1.0);
  const double glow = 1 - (1 - near * bright) * (1 - wide * bright);
  const double alpha = 1 - (1 - tube * std::min(1.0, bright)) * (1 - glow * edge);
  const double whiteness = white * white * (3 - 2 * white) * std::min(1.0, 0.25 + 0.75 * bright);
  return WithAlpha(Mixed(hue, QColor(255, 255, 255), 0.96 * whiteness + 0.10 * tube * (1 - whiteness)), alpha);
}

/// The same as the stops of a gradient from the middle outwards, `toward` 1, or inwards, -1, of half a gradient.
void SetStops(QGradient& gradient, const Shine& shine, bool isHalf) {
  // Close together where the light changes quickly.
  constexpr std::array kPlaces{0.0,  0.3, 0.5, 0.62, 0.7, 0.78, 0.86, 0.94, 1.02, 1.1, 1.2, 1.32, 1.5,
                               1.75, 2.0, 2.4, 2.8,  3.3, 3.8,  4.4,  5.0,  5.8,  6.6, 7.4, 8.2,  9.0};
  QGradientStops stops;
  for (const double place : kPlaces) {
    const double share = std::min(1.0, place * kTube / kReach);
    const QColor color = LightAt(place * kTube, shine);
    if (isHalf) {
      stops.append({share, color});
    } else {
      stops.append({0.5 + share / 2, color});
      if (share > 0) stops.prepend({0.5 - share / 2, color});
    }
  }
  const QColor none = WithAlpha(HueOf(shine), 0);
  stops.append({1, none});
  if (!isHalf) stops.prepend({0, none});
  gradient.setStops(stops);
}

/// Numbers that look as if by chance, from 0 to 1, the same every time.
double Chance(unsigned seed, unsigned number) {
  std::uint32_t state = seed * 2654435761U + number * 40503U + 12345U;
  state ^= state >> 15;
  state *= 2246822519U;
  state ^= state >> 13;
  return (state & 0xFFFFU) / 65535.0;
}

/// Turns the painter so that the blade lies to the right of its mouth.
void TurnTo(QPainter& painter, const SaberPlace& place) {
  painter.translate(place.Mouth());
  // A level one too is turned by a hair: light that is exactly level is painted a pixel or two beside its place.
  constexpr double kHair = 0.01;
  painter.rotate(std::abs(place.Degrees()) < kHair ? kHair : -place.Degrees());
}

}  // namespace

SaberPlace::SaberPlace(const QSizeF& stage, double degrees)
    : m_unit(std::min(stage.width() / kDrawing.width(), stage.height() / kDrawing.height() * 1.15)),
      m_degrees(degrees),
      m_hand(stage.width() * kHandX, stage.height() * kHandY) {
  const double rise = std::sin(std::max(1.0, degrees) * kRadian);
  const double most = kBladeLength * m_unit;
  const double width = stage.width() - m_hand.x() - (kHandToMouth + 3 * kTube) * m_unit;
  const double room = (m_hand.y() - 2 * kTube * m_unit) / rise - kHandToMouth * m_unit;
  m_length = std::clamp(room, most * kShortest, std::min(most, width));
}

QPointF SaberPlace::Mouth() const {
  return m_hand + kHandToMouth * m_unit * QPointF(std::cos(m_degrees * kRadian), -std::sin(m_degrees * kRadian));
}

QPointF SaberPlace::Along(double share) const {
  return Mouth() + share * m_length * QPointF(std::cos(m_degrees * kRadian), -std::sin(m_degrees * kRadian));
}

double SaberPlace::DegreesTowards(const QSizeF& stage, const QPointF& pointer) {
  const SaberPlace place(stage, BladeMotion::kHeld);
  const QPointF to = pointer - place.Hand();
  // Beside the hand a hair's breadth would turn the blade all around.
  const double right = std::max(to.x(), 80 * place.Unit());
  return std::clamp(std::atan2(-to.y(), right) / kRadian, BladeMotion::kLowest, BladeMotion::kHighest);
}

void BladePainter::PaintFloor(QPainter& painter, const QSizeF& stage, const SaberPlace& place, const Shine& shine) {
  if (shine.extent <= 0) return;
  const QPointF middle = place.Along(shine.extent / 2);
  const double half = place.Length() * shine.extent / 2 * std::cos(place.Degrees() * kRadian);
  const double width = half + 190 * place.Unit();
  const double height = 82 * place.Unit();
  const double floor = stage.height() * 0.97;
  // The farther up the blade, the weaker its light below.
  const double near = std::clamp(1.25 - (floor - middle.y()) / stage.height(), 0.25, 1.0);
  const double strength = 0.34 * near * std::min(1.0, shine.brightness) * std::min(1.0, shine.extent * 1.5);
  painter.save();
  painter.translate(middle.x(), floor);
  painter.scale(width, height);
  QRadialGradient light(QPointF(0, 0), 1);
  for (const double share : {0.0, 0.15, 0.3, 0.45, 0.6, 0.75, 0.9})
    light.setColorAt(share, WithAlpha(shine.hue, strength * std::pow(std::cos(share * std::numbers::pi / 2), 2)));
  light.setColorAt(1, WithAlpha(shine.hue, 0));
  painter.fillRect(QRectF(-1, -1, 2, 1 + (stage.height() - floor) / height), light);
  painter.restore();
}

void BladePainter::PaintTrail(QPainter& painter, const SaberPlace& place, double fromDegrees, const Shine& shine) {
  const double span = place.Degrees() - fromDegrees;
  constexpr double kLeast = 1.5;
  if (std::abs(span) < kLeast || shine.extent <= 0) return;
  const double inner = (kHandToMouth + 10) * place.Unit();
  const double outer = kHandToMouth * place.Unit() + place.Length() * shine.extent;
  const auto circle = [&place](double radius) {
    return QRectF(place.Hand().x() - radius, place.Hand().y() - radius, 2 * radius, 2 * radius);
  };
  QPainterPath sheet;
  sheet.arcMoveTo(circle(inner), fromDegrees);
  sheet.arcTo(circle(inner), fromDegrees, span);
  sheet.arcTo(circle(outer), place.Degrees(), -span);
  sheet.closeSubpath();
  // Angles of the gradient grow as those of the blade do.
  QConicalGradient light(place.Hand(), std::min(fromDegrees, place.Degrees()));
  const double turn = std::abs(span) / 360;
  const double strength = 0.36 * std::min(1.0, shine.brightness) * std::min(1.0, std::abs(span) / 14);
  for (const double share : {0.0, 0.25, 0.5, 0.75, 1.0}) {
    const double toBlade = span > 0 ? share : 1 - share;
    light.setColorAt(share * turn, WithAlpha(HueOf(shine), strength * toBlade * toBlade));
  }
  // A gradient goes all around: what lies before its beginning is its end.
  light.setColorAt(std::min(0.99, turn + 0.02), WithAlpha(HueOf(shine), span > 0 ? strength : 0));
  light.setColorAt(1, WithAlpha(HueOf(shine), span > 0 ? 0 : strength));
  painter.fillPath(sheet, light);
}

void BladePainter::PaintBlade(QPainter& painter, const SaberPlace& place, const Shine& shine) {
  if (shine.extent <= 0 || shine.brightness + shine.flash <= 0) return;
  const double unit = place.Unit();
  const double reach = kReach * unit;
  // The light ends where the tube is round.
  const double tip = std::max(0.0, place.Length() * shine.extent - kTube * unit);
  painter.save();
  TurnTo(painter, place);
  // Hard edges: three pieces that meet without a seam, and nothing of their light is left at the others.
  painter.setRenderHint(QPainter::Antialiasing, false);
  QLinearGradient along(0, -reach, 0, reach);
  SetStops(along, shine, false);
  // A long fill lets the light slip off the middle, a part of a step with each pixel; a short one does not.
  constexpr double kPiece = 80;
  for (double from = 0; from < tip; from += kPiece)
    painter.fillRect(QRectF(from, -reach, std::min(kPiece, tip - from), 2 * reach), along);
  for (const double end : {0.0, tip}) {
    QRadialGradient round(QPointF(end, 0), reach);
    SetStops(round, shine, true);
    painter.fillRect(end > 0 ? QRectF(tip, -reach, reach, 2 * reach) : QRectF(-reach, -reach, reach, 2 * reach), round);
  }
  painter.restore();
}

void BladePainter::PaintSparks(QPainter& painter, const SaberPlace& place, const Shine& shine, double age,
                               unsigned seed) {
  constexpr double kLife = 0.38;
  constexpr unsigned kSparks = 22;
  if (age < 0 || age >= kLife || shine.extent < 1) return;
  const double unit = place.Unit();
  const QPointF from = place.Along(0.58 + 0.22 * Chance(seed, 0));
  const double fade = 1 - age / kLife;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  QRadialGradient bloom(from, 46 * unit);
  bloom.setColorAt(0, WithAlpha(Qt::white, 0.75 * fade * fade));
  bloom.setColorAt(0.3, WithAlpha(Mixed(shine.hue, Qt::white, 0.5), 0.4 * fade * fade));
  bloom.setColorAt(1, WithAlpha(shine.hue, 0));
  painter.fillRect(QRectF(from.x() - 46 * unit, from.y() - 46 * unit, 92 * unit, 92 * unit), bloom);
  for (unsigned spark = 1; spark <= kSparks; ++spark) {
    const double way = 2 * std::numbers::pi * Chance(seed, spark);
    const double speed = (220 + 520 * Chance(seed, spark + 100)) * unit;
    const double fall = 420 * unit;
    const auto at = [&](double moment) {
      const double gone = moment * (1 - 0.9 * moment);
      return from + QPointF(std::cos(way) * speed * gone, std::sin(way) * speed * gone + fall * moment * moment / 2);
    };
    const QColor warm(255, 236, 200);
    painter.setPen(
        QPen(WithAlpha(warm, fade * (0.6 + 0.4 * Chance(seed, spark + 200))), 1.8 * unit, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(at(std::max(0.0, age - 0.035)), at(age));
  }
  painter.restore();
}

QRectF BladePainter::Reach(const SaberPlace& place) {
  const double reach = kReach * place.Unit();
  const QPointF from = place.Mouth();
  const QPointF to = place.Along(1);
  return QRectF(from, QSizeF(to.x() - from.x(), to.y() - from.y())).normalized().adjusted(-reach, -reach, reach, reach);
}

}  // namespace kestrin::ui::stage
