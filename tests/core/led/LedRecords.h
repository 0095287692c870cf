// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/led/LED_Driver.h"

namespace kestrin::core::led {

/// One channel of a catalogue record as texts, valid unless a test changes a field.
struct ChannelText {
  std::string color = "red";
  std::string maxLum = "900";
  std::string maxDC = "80";
  std::string voltage = "3.3";
  std::string lumCoef = "0_0_0.05_0";
  std::string dutyCoef = "0_0_0.125_0";

  [[nodiscard]] std::string Text() const {
    return "+Col=" + color + "ML" + maxLum + "MDC" + maxDC + "VL" + voltage + "Coef" + lumCoef + ";" + dutyCoef + ";";
  }
};

/// A whole record as texts.
struct RecordText {
  std::string name = "Blade";
  std::string code = "12";
  std::string channelCount = "1";
  std::string period = "1000";
  std::vector<ChannelText> channels = {ChannelText{}};

  [[nodiscard]] std::string Text() const {
    std::string text = name + "@" + code + "#" + channelCount + "#" + period;
    for (const ChannelText& channel : channels) text += channel.Text();
    return text;
  }
};

/// A record with one channel for each colour word.
inline RecordText RecordOfColors(const std::vector<std::string>& colors) {
  RecordText record;
  record.channelCount = std::to_string(colors.size());
  record.channels.clear();
  for (const std::string& color : colors) {
    record.channels.emplace_back();
    record.channels.back().color = color;
  }
  return record;
}

/// The LED type of a record that must be valid.
inline LED_Driver DriverOf(const RecordText& record) {
  LED_Driver driver;
  EXPECT_EQ(driver.Init(record.Text()).Text(), "") << record.Text();
  return driver;
}

/// The record that the catalogue's documentation shows.
inline constexpr const char* kExampleRecord =
    "Example RGB 3W@12#3#1000"
    "+Col=redML900MDC80VL3.3Coef0_0_0.05_0;0_0.00002_0.07_2;"
    "+Col=greenML1500MDC90VL3.6Coef0_0_0.03_0;0_0.00001_0.05_1;"
    "+Col=blueML600MDC85VL3.6Coef0_0_0.1_0;0_0.0001_0.1_1;";

}  // namespace kestrin::core::led
