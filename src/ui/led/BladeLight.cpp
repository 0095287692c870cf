// SPDX-License-Identifier: MIT
#include "ui/led/BladeLight.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>

#include "core/led/ColorLevels.h"

namespace kestrin::ui::led {

namespace {

/// Screens show the n-th power of a colour's component; levels are linear.
constexpr double kGamma = 2.2;

using Light = std::array<double, 3>;

struct ChannelLight {
  core::led::Color color;
  const char* name;
  /// What the die shines with, which is not what its label is painted with.
  Light light;
};

constexpr std::array<ChannelLight, 5> kLights{{
    {core::led::kWhite, QT_TRANSLATE_NOOP("BladeLight", "white"), {1, 1, 1}},
    {core::led::kRed, QT_TRANSLATE_NOOP("BladeLight", "red"), {1, 0, 0}},
    {core::led::kGreen, QT_TRANSLATE_NOOP("BladeLight", "green"), {0, 1, 0}},
    {core::led::kBlue, QT_TRANSLATE_NOOP("BladeLight", "blue"), {0, 0, 1}},
    {core::led::kAmber, QT_TRANSLATE_NOOP("BladeLight", "amber"), {1, 0.25, 0}},
}};

const ChannelLight* LightOf(core::led::Color color) {
  const auto* const found =
      std::find_if(kLights.begin(), kLights.end(), [color](const ChannelLight& row) { return row.color == color; });
  return found == kLights.end() ? nullptr : found;
}

float Encoded(double component) { return static_cast<float>(std::pow(component, 1 / kGamma)); }

}  // namespace

QColor BladeLight::OnBlack() const {
  const auto share = static_cast<float>(std::clamp(brightness, 0.0, 1.0));
  return QColor::fromRgbF(hue.redF() * share, hue.greenF() * share, hue.blueF() * share);
}

BladeLight Mix(const core::led::LED_Driver& driver, const Levels& levels) {
  Light sum{};
  double highest = 0;
  for (int channel = 1; channel <= std::min<int>(driver.NrOfChannels, core::led::LED_Driver::kChannels); ++channel) {
    const ChannelLight* const light = LightOf(driver.GetChannelColor(channel));
    if (light == nullptr) continue;
    const double share = std::clamp(levels.at(static_cast<std::size_t>(channel - 1)) / core::led::kFullLevel, 0.0, 1.0);
    highest = std::max(highest, share);
    for (std::size_t i = 0; i < sum.size(); ++i) sum[i] += light->light[i] * share * driver.GetMaxLum(channel);
  }
  const double strongest = *std::max_element(sum.begin(), sum.end());
  if (!(strongest > 0)) return {};
  return {QColor::fromRgbF(Encoded(sum[0] / strongest), Encoded(sum[1] / strongest), Encoded(sum[2] / strongest)),
          std::pow(highest, 1 / kGamma)};
}

QColor ToQColor(core::led::Color color) {
  const core::led::Components parts = core::led::SysToRGB(color, {});
  return {parts.Red, parts.Green, parts.Blue};
}

QString NameOf(core::led::Color color) {
  const ChannelLight* const light = LightOf(color);
  constexpr const char* kNotUsed = QT_TRANSLATE_NOOP("BladeLight", "not used");
  return QCoreApplication::translate("BladeLight", light == nullptr ? kNotUsed : light->name);
}

}  // namespace kestrin::ui::led
