// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPointF>
#include <QRectF>

class QPainter;

namespace kestrin::ui::stage {

/// Where the parts of a saber are on a stage, for one way to hold it.
class SaberPlace {
 public:
  /// On a stage of that size, pointing to so many degrees upwards from the right.
  SaberPlace(const QSizeF& stage, double degrees);

  /// The length of a pixel of the drawing for which all measures were made.
  [[nodiscard]] double Unit() const { return m_unit; }
  [[nodiscard]] double Degrees() const { return m_degrees; }
  /// Where the hand holds it; where the blade comes out; how long the blade is when all of it is out.
  [[nodiscard]] QPointF Hand() const { return m_hand; }
  [[nodiscard]] QPointF Mouth() const;
  [[nodiscard]] double Length() const { return m_length; }
  /// The point of the blade so far from the mouth, as a share of its length.
  [[nodiscard]] QPointF Along(double share) const;
  /// To which degrees the blade is led by a pointer there.
  [[nodiscard]] static double DegreesTowards(const QSizeF& stage, const QPointF& pointer);

 private:
  double m_unit;
  double m_degrees;
  QPointF m_hand;
  double m_length;
};

/// How a blade shines.
struct Shine {
  /// Its colour at full brightness, and how bright it is, from 0 to 1.
  QColor hue;
  double brightness = 1;
  /// How strong its flash is, and the colour of that.
  double flash = 0;
  QColor flashHue = Qt::white;
  /// How much of it is out, from 0 to 1.
  double extent = 0;
  /// Light is never quite steady: a little more or less of it, about 1.
  double shimmer = 1;
};

/// Paints the blade of a saber in its light, layer by layer, straight onto the stage: sharp on every screen, and in
/// little more time than filling its ground takes.
class BladePainter {
 public:
  /// The light on the ground below the blade.
  static void PaintFloor(QPainter& painter, const QSizeF& stage, const SaberPlace& place, const Shine& shine);
  /// What a quick blade draws behind itself, from those degrees on.
  static void PaintTrail(QPainter& painter, const SaberPlace& place, double fromDegrees, const Shine& shine);
  static void PaintBlade(QPainter& painter, const SaberPlace& place, const Shine& shine);
  /// Sparks where the blade is hit, `age` seconds after they began to fly; `seed` gives others.
  static void PaintSparks(QPainter& painter, const SaberPlace& place, const Shine& shine, double age, unsigned seed);

  /// All that the light of a blade in that place reaches, its floor not among it.
  [[nodiscard]] static QRectF Reach(const SaberPlace& place);
};

}  // namespace kestrin::ui::stage
