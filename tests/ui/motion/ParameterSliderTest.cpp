// SPDX-License-Identifier: MIT
// Ticks and marks of the sliders under "Acceleration Sensor Configuration", by their pixels.

#include "ui/motion/ParameterSlider.h"

#include <QImage>
#include <QPixmap>
#include <QStyle>
#include <algorithm>
#include <cstdlib>

#include "ui/motion/ConfigFrameFixture.h"

namespace kestrin::support {
namespace {

class ParameterSlider : public ConfigFrameFixture {
 protected:
  void SetUp() override {
    Start("id=4389");
    Button("ConfigBtn").click();
  }
  [[nodiscard]] ui::motion::ParameterSlider& Of(const ConfigRow& row) const {
    return Find<ui::motion::ParameterSlider>(row.slider);
  }
  /// Where columns begin that are drawn in the line that many pixels below the knob.
  [[nodiscard]] static std::vector<int> Columns(ui::motion::ParameterSlider& slider, int below) {
    const QImage picture = slider.grab().toImage();
    const int y = slider.style()->pixelMetric(QStyle::PM_SliderThickness, nullptr, &slider) + below;
    std::vector<int> columns;
    const QRgb ground = picture.pixel(0, y);
    for (int x = 1; x < picture.width(); ++x)
      if (picture.pixel(x, y) != ground && picture.pixel(x - 1, y) == ground) columns.push_back(x);
    return columns;
  }
  [[nodiscard]] static QImage Picture(ui::motion::ParameterSlider& slider) { return slider.grab().toImage(); }
};

TEST_F(ParameterSlider, HasATickForEveryUnitAllEquallyFarApart) {
  for (const ConfigRow& row : kConfigRows) {
    auto& slider = Of(row);
    slider.SetMark(std::nullopt);
    // The board counts the flash period in units of 4 ms, the others as they are shown: a tick for each value that the
    // slider can take.
    const auto units = static_cast<std::size_t>((row.maximum - row.minimum) / row.step) + 1;
    EXPECT_EQ(slider.tickPosition(), QSlider::TicksBelow) << row.slider;
    const std::vector<int> ticks = Columns(slider, 1);
    ASSERT_EQ(ticks.size(), units) << row.slider;
    const int apart = ticks[1] - ticks[0];
    for (std::size_t i = 1; i < ticks.size(); ++i) {
      const int distance = ticks[i] - ticks[i - 1];
      // Where ticks are close together, a single odd distance would stand out.
      EXPECT_LE(std::abs(distance - apart), units > 100 ? 0 : 1) << row.slider << " " << i;
    }
  }
}

TEST_F(ParameterSlider, HasLongerTicksAtRoundNumbers) {
  for (const ConfigRow& row : kConfigRows) {
    auto& slider = Of(row);
    slider.SetMark(std::nullopt);
    const int round = row.maximum > 255 ? 100 : 10;
    // 10, 20, ... 250; 10 and 20; 0, 10, 20 and 30; 100, 200, ... 1000.
    const int below = row.minimum == 0 ? 0 : (row.minimum + round - 1) / round;
    const auto rounds = static_cast<std::size_t>(row.maximum / round - below) + 1;
    const std::vector<int> longest = Columns(slider, 7);
    EXPECT_EQ(longest.size(), rounds) << row.slider;
    const std::vector<int> all = Columns(slider, 1);
    for (const int column : longest)
      EXPECT_NE(std::find(all.begin(), all.end(), column), all.end()) << row.slider << " " << column;
    const std::vector<int> fifths = Columns(slider, 4);
    EXPECT_GT(fifths.size(), longest.size()) << row.slider;
    EXPECT_LT(fifths.size(), all.size()) << row.slider;
  }
}

TEST_F(ParameterSlider, ItsTicksAndItsMarkStandUnderTheKnob) {
  for (const ConfigRow& row : kConfigRows) {
    auto& slider = Of(row);
    slider.SetMark(std::nullopt);
    const std::vector<int> ticks = Columns(slider, 1);
    for (const int place : {0, 3, static_cast<int>(ticks.size()) - 1}) {
      const int value = row.minimum + place * row.step;
      slider.setValue(row.minimum);
      const QImage before = Picture(slider);
      slider.SetMark(value);
      const QImage after = Picture(slider);
      slider.SetMark(std::nullopt);
      // The part of the picture that the mark changes, below the knob.
      int first = after.width();
      int last = -1;
      for (int y = 22; y < after.height(); ++y)
        for (int x = 0; x < after.width(); ++x)
          if (before.pixel(x, y) != after.pixel(x, y)) {
            first = std::min(first, x);
            last = std::max(last, x);
          }
      ASSERT_GE(last, first) << row.slider << value << ": no mark";
      EXPECT_NEAR((first + last) / 2.0, ticks[static_cast<std::size_t>(place)], 1) << row.slider << value;
    }
  }
}

TEST_F(ParameterSlider, AMarkOutsideTheRangeStandsAtTheNearestEnd) {
  auto& slider = Of(kConfigRows[1]);
  slider.SetMark(255);
  EXPECT_EQ(slider.Mark(), 25);
  slider.SetMark(0);
  EXPECT_EQ(slider.Mark(), 2);
}

TEST_F(ParameterSlider, InANarrowPlaceItLeavesOutTicksForWhichThereIsNoRoom) {
  for (const ConfigRow& row : kConfigRows) {
    auto& slider = Of(row);
    slider.SetMark(std::nullopt);
    const auto all = Columns(slider, 1).size();
    slider.SetNarrow(true);
    slider.resize(160, slider.height());
    EXPECT_LE(slider.sizeHint().width(), 160) << row.slider;
    const std::vector<int> ticks = Columns(slider, 1);
    // Two pixels for each of the 24 and 32 values of the smallest ranges, less than one for 245 and 255.
    if (all < 50)
      EXPECT_EQ(ticks.size(), all) << row.slider;
    else
      EXPECT_LT(ticks.size(), 160U / 2) << row.slider;
    EXPECT_GE(ticks.size(), 9U) << row.slider;
  }
}

TEST_F(ParameterSlider, ASuggestionStandsOverTheKnobsPlace) {
  auto& slider = Of(kConfigRows[2]);
  slider.setValue(0);
  const QImage before = Picture(slider);
  slider.SetSuggestion(20);
  const QImage after = Picture(slider);
  int first = after.width();
  int last = -1;
  for (int x = 0; x < after.width(); ++x)
    if (before.pixel(x, 0) != after.pixel(x, 0)) {
      first = std::min(first, x);
      last = std::max(last, x);
    }
  slider.SetSuggestion(std::nullopt);
  EXPECT_EQ(Picture(slider), before);
  ASSERT_GE(last, first) << "no mark";
  // Of 0 .. 31 the twentieth tick behind the first.
  EXPECT_NEAR((first + last) / 2.0, Columns(slider, 1)[20], 1);
}

}  // namespace
}  // namespace kestrin::support
