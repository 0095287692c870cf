// SPDX-License-Identifier: MIT
#include "led/LedSettingsFile.h"

#include <cmath>
#include <initializer_list>
#include <limits>

#include "base/Numbers.h"
#include "base/PlainNumber.h"
#include "base/Text.h"
#include "base/WholeFile.h"

namespace kestrin::core::led {

namespace {

// The misspelt word has been in every file ever written.
constexpr std::string_view kMagic = "KestdrinLEDSettings#1";
constexpr std::string_view kLowKey = "PULSE+Low=";
constexpr std::string_view kHighKey = "+High=";
constexpr std::string_view kFlashKey = "FOC=";
constexpr std::string_view kTimesKey = "+Times=";
constexpr std::string_view kSeparator = "_";

std::string Joined(const std::vector<double>& numbers) {
  std::string text;
  for (const double number : numbers) text.append(text.empty() ? "" : kSeparator).append(base::PlainNumber(number));
  return text;
}

std::string LevelsText(const LED_Pulse& pulse, std::int16_t (LED_Pulse::*get)(int) const) {
  std::vector<double> levels;
  for (int channel = 1; channel <= LED_Pulse::kChannels; ++channel) levels.push_back((pulse.*get)(channel));
  return Joined(levels);
}

}  // namespace

base::Result<> LedSettingsFile::Open(const std::filesystem::path& file) {
  base::Result<> read = m_lines.Read(file);
  if (!read) return read;
  std::string_view text;
  return Checked(StartLine(1, text) && (text == kMagic || Refuse("\"" + std::string(kMagic) + "\" is expected")));
}

base::Result<> LedSettingsFile::ReadIdle(LED_Pulse& pulse) { return Checked(ParseIdle(pulse)); }

base::Result<> LedSettingsFile::ReadFoc(LED_Pulse& pulse) { return Checked(ParseFoc(pulse)); }

base::Result<> LedSettingsFile::Checked(bool valid) const {
  if (valid) return {};
  return base::Failure{base::FailureKind::NotValid, m_problem};
}

bool LedSettingsFile::ParseIdle(LED_Pulse& pulse) {
  std::string_view text;
  std::string_view before;
  std::string_view levels;
  std::vector<double> times;
  if (!StartLine(2, text) || !Cut(text, kLowKey, before, text)) return false;
  if (!Cut(text, kHighKey, levels, text) || !ReadLevels(levels, pulse, &LED_Pulse::SetLow)) return false;
  if (!Cut(text, kTimesKey, levels, text) || !ReadLevels(levels, pulse, &LED_Pulse::SetHigh)) return false;
  if (!Fields(text, 4, times)) return false;
  pulse.Ton = times[0];
  pulse.Toff = times[1];
  pulse.Trise = times[2];
  pulse.Tfall = times[3];
  return true;
}

bool LedSettingsFile::ParseFoc(LED_Pulse& pulse) {
  std::string_view text;
  std::string_view before;
  std::string_view levels;
  std::vector<double> times;
  if (!StartLine(3, text) || !Cut(text, kFlashKey, before, text)) return false;
  if (!Cut(text, kTimesKey, levels, text) || !ReadLevels(levels, pulse, &LED_Pulse::SetHigh)) return false;
  if (!Fields(text, 3, times)) return false;
  pulse.Ton = times[0];
  pulse.Toff = times[1];
  return ReadWhole(times[2], pulse.NRep);
}

base::Result<> LedSettingsFile::Save(const std::filesystem::path& file, const LED_Pulse& idle, const LED_Pulse& foc,
                                     base::Disk& disk) {
  std::string content;
  const auto add = [&](std::initializer_list<std::string_view> pieces) {
    for (const std::string_view piece : pieces) content += piece;
    content += base::kLineEnd;
  };
  add({kMagic});
  add({kLowKey, LevelsText(idle, &LED_Pulse::GetLow), kHighKey, LevelsText(idle, &LED_Pulse::GetHigh), kTimesKey,
       Joined({idle.Ton, idle.Toff, idle.Trise, idle.Tfall})});
  add({kFlashKey, LevelsText(foc, &LED_Pulse::GetHigh), kTimesKey,
       Joined({foc.Ton, foc.Toff, static_cast<double>(foc.NRep)})});
  return base::WriteWholeFile(file, content, disk);
}

bool LedSettingsFile::StartLine(std::size_t number, std::string_view& text) {
  m_number = number;
  if (m_lines.Count() < number) return Refuse("the file ends before it");
  text = m_lines.Line(number);
  return true;
}

bool LedSettingsFile::Cut(std::string_view text, std::string_view key, std::string_view& piece,
                          std::string_view& rest) {
  const auto pieces = base::Split(text, key);
  if (pieces.size() != 2)
    return Refuse("one \"" + std::string(key) + "\" is expected, there are " + std::to_string(pieces.size() - 1));
  piece = pieces[0];
  rest = pieces[1];
  return true;
}

bool LedSettingsFile::ReadLevels(std::string_view text, LED_Pulse& pulse, SetLevel set) {
  std::vector<double> levels;
  if (!Fields(text, LED_Pulse::kChannels, levels)) return false;
  for (int channel = 1; channel <= LED_Pulse::kChannels; ++channel) {
    std::int16_t level = 0;
    if (!ReadWhole(levels[static_cast<std::size_t>(channel) - 1], level)) return false;
    (pulse.*set)(channel, level);
  }
  return true;
}

bool LedSettingsFile::ReadWhole(double number, std::int16_t& field) {
  const double rounded = base::RoundHalfEven(number);
  using Limits = std::numeric_limits<std::int16_t>;
  if (!(rounded >= Limits::min() && rounded <= Limits::max()))
    return Refuse(base::PlainNumber(number) + " is too large a number here");
  field = static_cast<std::int16_t>(rounded);
  return true;
}

bool LedSettingsFile::Fields(std::string_view text, std::size_t count, std::vector<double>& numbers) {
  const auto fields = base::Split(text, kSeparator);
  if (fields.size() != count)
    return Refuse(std::to_string(count) + " numbers with \"_\" between them are expected, there are " +
                  std::to_string(fields.size()) + " in \"" + std::string(text) + "\"");
  for (const std::string_view field : fields) {
    numbers.push_back(base::LeadingNumber(field));
    if (!std::isfinite(numbers.back())) return Refuse("\"" + std::string(field) + "\" is too large a number");
  }
  return true;
}

bool LedSettingsFile::Refuse(const std::string& reason) {
  m_problem = m_lines.Place(m_number) + ": " + reason;
  return false;
}

}  // namespace kestrin::core::led
