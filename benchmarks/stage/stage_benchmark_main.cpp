// SPDX-License-Identifier: MIT
// What a picture of the stage costs, without a display: microseconds a picture, as a multiple of what it takes to fill
// as many pixels with one colour, and as a share of one core at 60 pictures a second. Times are the processor's.

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

#include "ui/kit/Theme.h"
#include "ui/stage/StageView.h"

namespace {

using kestrin::ui::stage::StagePicture;
using kestrin::ui::stage::StageView;

constexpr int kPictures = 120;
constexpr int kRuns = 7;

/// The least of several runs: what disturbs a run only makes it longer.
template <class Paint>
double Microseconds(const Paint& paint) {
  std::vector<double> runs;
  for (int run = 0; run < kRuns; ++run) {
    const std::clock_t begin = std::clock();
    for (int picture = 0; picture < kPictures; ++picture) paint(picture);
    runs.push_back(static_cast<double>(std::clock() - begin) * 1e6 / CLOCKS_PER_SEC / kPictures);
  }
  return *std::min_element(runs.begin(), runs.end());
}

void Measure(const char* name, const QSize& size, double ratio, bool swings) {
  StageView view;
  view.resize(size);
  QImage target((QSizeF(size) * ratio).toSize(), QImage::Format_RGB32);
  target.setDevicePixelRatio(ratio);
  StagePicture picture;
  picture.shine.extent = 1;
  picture.shine.hue = QColor(0xff2fe6d0);
  picture.name = QStringLiteral("Ember knight");
  picture.line = QStringLiteral("Blade on for 8 s");
  picture.hint = QStringLiteral("Drag across the stage to swing. A quick stop is a hit.");
  picture.chips = {{kestrin::core::sound::SlotKind::Idle, QStringLiteral("idle.lsu")},
                   {kestrin::core::sound::SlotKind::Motion, QStringLiteral("swing3.lsu")}};
  const double painted = Microseconds([&](int number) {
    picture.degrees = swings ? 4 + number % 40 : 16;
    picture.trail = swings ? picture.degrees - 14 : 16;
    picture.shine.shimmer = 1 + 0.02 * (number % 3);
    view.Show(picture);
    view.render(&target, QPoint(), QRegion(), QWidget::RenderFlags());
  });
  const double filled = Microseconds([&](int number) {
    QPainter painter(&target);
    painter.fillRect(QRect(QPoint(), size), QColor(number % 256, 0, 0));
  });
  std::printf("%-28s %5d x %4d  %8.0f us a picture  %6.1f times a fill  %5.1f %% of a core at 60 a second\n", name,
              target.width(), target.height(), painted, painted / filled, painted * 60 / 1e4);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  kestrin::ui::kit::Theme::Apply(application, kestrin::ui::kit::ColorScheme::Dark);
  Measure("window of 960 x 640, at rest", {656, 280}, 1, false);
  Measure("window of 960 x 640, swings", {656, 280}, 1, true);
  Measure("window of 1280 x 800, at rest", {930, 410}, 1, false);
  Measure("window of 1280 x 800, swings", {930, 410}, 1, true);
  Measure("1920 x 1080 twice as fine", {1520, 640}, 2, true);
  return 0;
}
