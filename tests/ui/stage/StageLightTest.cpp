// SPDX-License-Identifier: MIT
#include "ui/stage/StageLight.h"

#include <gtest/gtest.h>

namespace kestrin::ui::stage {
namespace {

/// One of the catalogue's kind with three channels, all as bright: red, green, blue.
LedLook Look() {
  LedLook look;
  const auto read = look.driver.Init(
      "Tri@7#3#1000+Col=redML1000MDC50VL3.0Coef0_0_1_0;0_0_0.05_0;+Col=greenML1000MDC50VL3.2Coef0_0_1_0;0_0_0.05_0;"
      "+Col=blueML1000MDC50VL3.2Coef0_0_1_0;0_0_0.05_0;");
  EXPECT_TRUE(read) << read.Text();
  return look;
}

TEST(StageLight, HasAColourOfItsOwnWithoutLedSettings) {
  StageLight light;
  EXPECT_EQ(light.At(0, 1).hue, QColor(StageLight::kOwnHue));
  EXPECT_EQ(light.At(0, 1).brightness, 1);
  EXPECT_EQ(light.At(0, 0.25).extent, 0.25);
  StageLight unset;
  unset.SetLed(Look());
  EXPECT_EQ(unset.At(0, 1).hue, QColor(StageLight::kOwnHue)) << "no level is set yet";
}

TEST(StageLight, PulsesInTheColourOfTheLedSettings) {
  LedLook look = Look();
  auto& idle = look.pulses[core::led::kIdlePulse];
  idle.high = {255, 0, 0, 0};
  idle.low = {0, 0, 255, 0};
  idle.Ton = 1000;
  idle.Toff = 1000;
  StageLight light;
  light.SetLed(look);
  EXPECT_EQ(light.At(500, 1).hue.rgb(), qRgb(255, 0, 0));
  EXPECT_EQ(light.At(1500, 1).hue.rgb(), qRgb(0, 0, 255));
  EXPECT_EQ(light.At(2500, 1).hue.rgb(), qRgb(255, 0, 0));
}

TEST(StageLight, ShinesEvenlyInsteadOfQuickPulsesWhenThereAreToBeFewerFlashes) {
  LedLook look = Look();
  auto& idle = look.pulses[core::led::kIdlePulse];
  idle.high = {0, 255, 0, 0};
  idle.Ton = 100;
  idle.Toff = 100;
  StageLight light;
  light.SetLed(look);
  EXPECT_EQ(light.At(50, 1).brightness, 1);
  EXPECT_EQ(light.At(150, 1).brightness, 1);
  light.SetFewer(false);
  EXPECT_EQ(light.At(250, 1).brightness, 1);
  EXPECT_EQ(light.At(350, 1).brightness, 0);
}

TEST(StageLight, FlashesInTheColourOfTheLedSettings) {
  StageLight light;
  light.SetFewer(false);
  light.Flash().Hit(100);
  EXPECT_EQ(light.At(100, 1).flash, 1);
  EXPECT_EQ(light.At(100, 1).flashHue, QColor(Qt::white));
  LedLook look = Look();
  look.pulses[core::led::kIdlePulse].high = {255, 0, 0, 0};
  look.pulses[core::led::kFocPulse].high = {0, 255, 0, 0};
  light.SetLed(look);
  EXPECT_EQ(light.At(101, 1).flashHue.rgb(), qRgb(0, 255, 0));
  light.SetLed({});
  EXPECT_EQ(light.At(102, 1).hue, QColor(StageLight::kOwnHue));
}

TEST(StageLight, ShimmersALittle) {
  StageLight light;
  double least = 2;
  double most = 0;
  for (double now = 0; now < 4000; now += 10) {
    least = std::min(least, light.At(now, 1).shimmer);
    most = std::max(most, light.At(now, 1).shimmer);
  }
  EXPECT_GT(most - least, 0.02);
  EXPECT_LT(most - least, 0.1) << "no flicker";
}

}  // namespace
}  // namespace kestrin::ui::stage
