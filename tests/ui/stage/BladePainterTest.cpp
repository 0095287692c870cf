// SPDX-License-Identifier: MIT
#include "ui/stage/BladePainter.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <cmath>
#include <numbers>

namespace kestrin::support {
namespace {

using ui::stage::BladePainter;
using ui::stage::SaberPlace;
using ui::stage::Shine;

/// A blade that is all out, on a stage of 1920 x 1080 with that many pixels for each.
class PaintedBlade {
 public:
  PaintedBlade(double degrees, double ratio) : m_place(kStage, degrees), m_ratio(ratio) {
    m_image = QImage((kStage * ratio).toSize(), QImage::Format_RGB32);
    m_image.setDevicePixelRatio(ratio);
    m_image.fill(Qt::black);
    QPainter painter(&m_image);
    BladePainter::PaintBlade(painter, m_place, Shine{.hue = QColor(0, 220, 190), .extent = 1});
  }

  /// How far the light reaches at that share of the length until it is less than half of the green it has at its most,
  /// in pixels of the image: to one side, `way` 1, or to the other, -1.
  [[nodiscard]] double HalfAt(double share, double way) const {
    const QPointF from = m_place.Along(share) * m_ratio;
    const double across = (m_place.Degrees() + 90) * std::numbers::pi / 180;
    const QPointF step(std::cos(across) * way, -std::sin(across) * way);
    double distance = 0;
    while (Green(from + distance * step) > 255 / 2.0) distance += 0.125;
    return distance;
  }

 private:
  /// Between four pixels, by how near their middles are.
  [[nodiscard]] double Green(const QPointF& at) const {
    const double left = std::floor(at.x() - 0.5);
    const double top = std::floor(at.y() - 0.5);
    const double right = at.x() - 0.5 - left;
    const double low = at.y() - 0.5 - top;
    const auto pixel = [&](double x, double y) {
      return static_cast<double>(qGreen(m_image.pixel(static_cast<int>(x), static_cast<int>(y))));
    };
    return (pixel(left, top) * (1 - right) + pixel(left + 1, top) * right) * (1 - low) +
           (pixel(left, top + 1) * (1 - right) + pixel(left + 1, top + 1) * right) * low;
  }

  static constexpr QSizeF kStage{1920, 1080};
  SaberPlace m_place;
  double m_ratio;
  QImage m_image;
};

TEST(BladePainter, ShinesEquallyFarToBothSidesFromTheMouthToTheTip) {
  for (const double ratio : {1.0, 2.0})
    for (const double degrees : {0.0, 17.0, 40.0}) {
      const PaintedBlade blade(degrees, ratio);
      const double width = blade.HalfAt(0.5, 1);
      // A colour of a gradient is about a pixel of the larger image high.
      constexpr double kColour = 1;
      EXPECT_GT(width, 11 * ratio) << "it shines at all";
      for (const double share : {0.02, 0.3, 0.6, 0.9, 0.96})
        for (const double way : {1.0, -1.0})
          EXPECT_NEAR(blade.HalfAt(share, way), width, kColour)
              << degrees << " degrees, " << share << ", ratio " << ratio;
    }
}

}  // namespace
}  // namespace kestrin::support
