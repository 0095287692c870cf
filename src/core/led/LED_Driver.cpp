// SPDX-License-Identifier: MIT
#include "led/LED_Driver.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "base/Numbers.h"
#include "base/Text.h"
#include "led/LED_RecordReader.h"
#include "led/Scaling.h"

namespace kestrin::core::led {
namespace {

constexpr FieldRange kLedCode{"code", std::numeric_limits<std::int16_t>::min(),
                              std::numeric_limits<std::int16_t>::max()};
constexpr FieldRange kNrOfChannels{"channels", 1, LED_Driver::kChannels};
constexpr FieldRange kPeriod{"period", 10, 10000};
constexpr FieldRange kMaxLum{"ML", 101, 50000};
constexpr FieldRange kMaxDC{"MDC", 2, 100};
constexpr FieldRange kChannelVoltage{"VL", 3.0, 9.0};

/// Full level of the brightest channel that a record may describe.
constexpr std::int32_t kBrightest = static_cast<std::int32_t>(kMaxLum.maximum);

}  // namespace

base::Result<> LED_Driver::Init(std::string_view stringLine) {
  LED_RecordReader reader;
  if (ReadRecord(stringLine, reader)) return {};
  return base::Failure{base::FailureKind::NotValid, reader.Problem()};
}

bool LED_Driver::ReadRecord(std::string_view line, LED_RecordReader& reader) {
  std::vector<std::string_view> parts;
  std::vector<std::string_view> nameAndCode;
  if (!reader.Cut(line, "#", 3, parts) || !reader.Cut(parts[0], "@", 2, nameAndCode)) return false;
  LEDName = nameAndCode[0];
  if (!reader.Number(nameAndCode[1], kLedCode, LedCode)) return false;
  if (!reader.Number(parts[1], kNrOfChannels, NrOfChannels)) return false;
  const auto channels = static_cast<std::size_t>(NrOfChannels);
  // The object may have held a type with more channels before.
  std::fill(m_channels.begin() + NrOfChannels, m_channels.end(), Channel{});

  const auto periodAndRest = base::Split(parts[2], "+");
  if (periodAndRest.size() < 2) return reader.Refuse("expected a \"+\" after the period");
  if (!reader.Number(periodAndRest[0], kPeriod, Period)) return false;

  std::vector<std::string_view> descriptions;
  if (!reader.Cut(line, "+Col=", channels + 1, descriptions)) return false;
  for (std::size_t i = 0; i < channels; ++i) {
    const std::string place = "channel " + std::to_string(i + 1);
    if (!ReadChannel(descriptions[i + 1], place, reader, m_channels[i])) return false;
  }
  for (std::size_t i = 0; i < channels; ++i) m_channels[i].TonBase = 1;
  if (NrOfChannels > 1) OverDrive = 100;
  return true;
}

bool LED_Driver::ReadChannel(std::string_view text, const std::string& place, LED_RecordReader& reader,
                             Channel& channel) {
  reader.SetPlace(place);
  // Each key splits what the key before it left; the piece in front of a key belongs to the field before.
  std::vector<std::string_view> pieces;
  if (!reader.Cut(text, "ML", 2, pieces)) return false;
  channel.ChannelColor = ColorNameToValue(pieces[0]);
  if (channel.ChannelColor == 0) {
    std::string allowed;
    for (const auto& [word, color] : kColorWords) allowed += (allowed.empty() ? "" : ", ") + std::string(word);
    return reader.Refuse("the colour word is unknown, allowed are " + allowed);
  }
  std::string_view rest = pieces[1];
  if (!reader.Cut(rest, "MDC", 2, pieces) || !reader.Number(pieces[0], kMaxLum, channel.MaxLum)) return false;
  rest = pieces[1];
  if (!reader.Cut(rest, "VL", 2, pieces) || !reader.Number(pieces[0], kMaxDC, channel.MaxDC)) return false;
  rest = pieces[1];
  if (!reader.Cut(rest, "Coef", 2, pieces) || !reader.Number(pieces[0], kChannelVoltage, channel.ChannelVoltage))
    return false;
  rest = pieces[1];
  if (!reader.Cut(rest, ";", 3, pieces)) return false;
  reader.SetPlace(place + ", first Coef group");
  if (!ReadCubic(pieces[0], reader, channel.LumCoef)) return false;
  reader.SetPlace(place + ", second Coef group");
  return ReadCubic(pieces[1], reader, channel.DutyCoef);
}

bool LED_Driver::ReadCubic(std::string_view text, LED_RecordReader& reader, Cubic& cubic) {
  std::vector<std::string_view> numbers;
  if (!reader.Cut(text, "_", cubic.size(), numbers)) return false;
  // Records have the highest power first.
  for (std::size_t power = 0; power < cubic.size(); ++power) {
    cubic[power] = base::LeadingNumber(numbers[cubic.size() - 1 - power]);
    if (!std::isfinite(cubic[power])) return reader.Refuse("a coefficient is too large a number");
  }
  return true;
}

Color LED_Driver::ColorNameToValue(std::string_view word) {
  const auto found =
      std::find_if(kColorWords.begin(), kColorWords.end(), [&](const auto& entry) { return entry.first == word; });
  return found == kColorWords.end() ? 0 : found->second;
}

std::size_t LED_Driver::Index(int channel) const {
  const int last = std::clamp<int>(NrOfChannels, 1, kChannels);
  return static_cast<std::size_t>(std::clamp(channel, 1, last) - 1);
}

std::int32_t LED_Driver::GetTon(SetType setType, int channel, double setValue) const {
  const bool inPercent = setType == SetType::DutyCycle || setType == SetType::PercentOfMaxDC;
  if (setValue == 0 && (inPercent || setType == SetType::Luminance)) return 0;
  if (setValue == 100 && inPercent) return 1;
  return m_channels[Index(channel)].TonBase;
}

Color LED_Driver::GetChannelColor(int channel) const {
  return m_channels.at(static_cast<std::size_t>(channel) - 1).ChannelColor;
}

std::int16_t LED_Driver::FindColor(Color color) const {
  std::int16_t found = 0;
  for (std::int16_t channel = 1; channel <= std::min<int>(NrOfChannels, kChannels); ++channel)
    if (GetChannelColor(channel) == color) found = channel;
  return found;
}

std::int32_t LED_Driver::GetToff(SetType setType, int channel, double setValue) const {
  const Channel& ch = m_channels[Index(channel)];
  const std::int32_t off = 1;
  const auto full = base::RoundTo<std::int32_t>(Period + 1.0);
  // Written so that something that is no number counts as off.
  const double v = setValue > 0 ? setValue : 0;
  if (v == 0) return off;

  double d = 0;
  switch (setType) {
    case SetType::DutyCycle:
      if (v >= 100) return full;
      d = std::min<double>(v, ch.MaxDC);
      break;
    case SetType::Luminance: {
      if (v >= ch.MaxLum) return full;
      const auto& c = ch.DutyCoef;
      d = c[3] * (v * v * v) + c[2] * (v * v) + c[1] * v + c[0];
      break;
    }
    case SetType::PercentOfMaxDC:
      d = ch.MaxDC * std::min(v, 100.0) / 100;
      break;
  }
  d = d * OverDrive / 100;
  // Coefficients of absurd size can make this no number at all; the LED stays off then.
  if (!(d > 0)) return off;
  if (d >= 100) return full;
  const auto t = base::RoundTo<std::int32_t>(Period * d / 100 + ch.TonBase);
  return std::min(std::max(t, ch.TonBase + 1), full);
}

std::int32_t LED_Driver::ConvertRGBtoLuminance(Color /*color*/, std::int16_t colorValue, bool exceptR, bool exceptG,
                                               bool exceptB) const {
  const std::array<std::pair<Color, bool>, 3> searched{{{kRed, exceptR}, {kGreen, exceptG}, {kBlue, exceptB}}};
  std::int32_t weakest = kBrightest;
  for (const auto& [color, except] : searched) {
    const int channel = except ? 0 : FindColor(color);
    if (channel != 0) weakest = std::min(weakest, GetMaxLum(channel));
  }
  return Scale<std::int32_t>(colorValue, weakest, 255);
}

std::int16_t LED_Driver::ConvertLuminanceToRGB(Color color, std::int32_t luminance) const {
  const int channel = FindColor(color);
  return channel == 0 ? std::int16_t{-1} : Scale<std::int16_t>(luminance, 255, GetMaxLum(channel));
}

std::int32_t LED_Driver::MostOverdrive() const {
  std::int32_t strongest = 0;
  for (int channel = 1; channel <= std::min<int>(NrOfChannels, kChannels); ++channel)
    strongest = std::max(strongest, GetMaxDC(channel));
  return base::RoundTo<std::int32_t>(10000.0 / strongest);
}

}  // namespace kestrin::core::led
