// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>
#include <QSlider>
#include <array>
#include <string>
#include <vector>

#include "ui/window/MainFixture.h"

namespace kestrin::support {

/// One slider of the panel as it must be.
struct ConfigRow {
  const char* slider;
  const char* label;
  const char* caption;
  const char* group;
  int minimum;
  int maximum;
  int step;
  int factory;
};

inline constexpr ConfigRow kConfigRows[] = {
    {"MotionThresholdSlider", "MotionThresholdLabel", "Threshold", "MOTION DETECTION PARAMETERS", 1, 255, 1, 180},
    {"MotionDebouncingSlider", "MotionDebouncingLabel", "Integration Time", "MOTION DETECTION PARAMETERS", 2, 25, 1, 2},
    {"ImpactThresholdSlider", "ImpactThresholdLabel", "Threshold", "IMPACT DETECTION PARAMETERS", 0, 31, 1, 10},
    {"ImpactDebouncingslider", "ImpactDebouncingLabel", "Debouncing Time", "IMPACT DETECTION PARAMETERS", 1, 255, 1,
     50},
    {"ImpactTimeSlider", "ImpactTimeLabel", "Minimum time between repetitions", "IMPACT DETECTION PARAMETERS", 1, 255,
     1, 125},
    {"FOCTimeSlider", "FOCTimeLabel", "Flash period [ms]", "LOCKUP FLASH TIMING", 20, 1000, 4, 52}};

/// The window with a sound board, whose panel "Acceleration Sensor Configuration" is looked at.
class ConfigFrameFixture : public MainFixture {
 protected:
  using Values = std::vector<int>;

  /// Starts with a board that holds these bytes; `more` is added to its options.
  void StartHolding(int id, const std::array<int, 6>& held, const std::string& more = "") {
    std::filesystem::create_directories(folder / "board");
    std::string numbers;
    for (const int value : held) numbers += (numbers.empty() ? "" : ",") + std::to_string(value);
    support::WriteBytes(folder / "board" / "board.json",
                        "{\"id\":" + std::to_string(id) + ",\"accelerometer\":[" + numbers + "]}");
    Start("dir=" + core::base::TextOf(folder / "board") + more);
  }

  [[nodiscard]] Values Sliders() const {
    Values values;
    for (const ConfigRow& row : kConfigRows) values.push_back(Find<QSlider>(row.slider).value());
    return values;
  }
  void ExpectLabelsLikeSliders() const {
    for (const ConfigRow& row : kConfigRows)
      EXPECT_EQ(LabelText(row.label), QString::number(Find<QSlider>(row.slider).value())) << row.label;
  }
  [[nodiscard]] Values Held() const {
    const auto& held = agent->Board().State().accelerometer;
    return {held.begin(), held.end()};
  }
  void Press(const char* button) { Find<QPushButton>(button).click(); }
  [[nodiscard]] QSlider& Slider(const char* name) const { return Find<QSlider>(name); }
};

}  // namespace kestrin::support
