// SPDX-License-Identifier: MIT
#include "cli/LedReports.h"

#include <cmath>

#include "cli/CommandFailure.h"
#include "cli/TextTable.h"
#include "core/base/PlainNumber.h"
#include "core/led/LevelCounts.h"

namespace kestrin::cli {

using core::led::LED_Pulse;

namespace {

constexpr TextTable::Align kRight = TextTable::Align::Right;

/// Whole numbers without a decimal point, as far as they are exact.
Document NumberDocument(double number) {
  constexpr double kLargestExact = 9007199254740992;
  if (std::floor(number) == number && std::abs(number) <= kLargestExact) return static_cast<std::int64_t>(number);
  return number;
}

template <typename Get>
Document FourOf(const Get& get) {
  Document numbers = Document::array();
  for (int channel = 1; channel <= LED_Pulse::kChannels; ++channel) numbers.push_back(get(channel));
  return numbers;
}

template <typename Get>
std::string TextOfFour(const Get& get) {
  std::string text;
  for (int channel = 1; channel <= LED_Pulse::kChannels; ++channel)
    text += (text.empty() ? "" : " ") + std::to_string(get(channel));
  return text;
}

}  // namespace

Document DocumentOf(const LED_Pulse& pulse) {
  return {{"low", FourOf([&](int channel) { return pulse.GetLow(channel); })},
          {"high", FourOf([&](int channel) { return pulse.GetHigh(channel); })},
          {"Ton", NumberDocument(pulse.Ton)},
          {"Toff", NumberDocument(pulse.Toff)},
          {"Trise", NumberDocument(pulse.Trise)},
          {"Tfall", NumberDocument(pulse.Tfall)},
          {"NRep", pulse.NRep}};
}

std::string TextOfPulses(const LED_Pulse& idle, const LED_Pulse& foc) {
  TextTable table({{"pulse"},
                   {"low"},
                   {"high"},
                   {"Ton [ms]", kRight},
                   {"Toff [ms]", kRight},
                   {"Trise [ms]", kRight},
                   {"Tfall [ms]", kRight},
                   {"NRep", kRight}});
  const auto add = [&](const std::string& name, const LED_Pulse& pulse) {
    table.Add({name, TextOfFour([&](int channel) { return pulse.GetLow(channel); }),
               TextOfFour([&](int channel) { return pulse.GetHigh(channel); }), core::base::PlainNumber(pulse.Ton),
               core::base::PlainNumber(pulse.Toff), core::base::PlainNumber(pulse.Trise),
               core::base::PlainNumber(pulse.Tfall), std::to_string(pulse.NRep)});
  };
  add("idle", idle);
  add("foc", foc);
  return table.Text();
}

Report ReportOfSentPulse(const std::string& name, const LED_Pulse& pulse) {
  Report report;
  report.document = DocumentOf(pulse);
  Document counts = Document::array();
  TextTable table({{"channel"},
                   {"low", kRight},
                   {"on", kRight},
                   {"off", kRight},
                   {"high", kRight},
                   {"on", kRight},
                   {"off", kRight}});
  for (int channel = 1; channel <= LED_Pulse::kChannels; ++channel) {
    counts.push_back(Document::array({pulse.GetTon_Low(channel), pulse.GetToff_Low(channel), pulse.GetTon_High(channel),
                                      pulse.GetToff_High(channel)}));
    table.Add({std::to_string(channel), std::to_string(pulse.GetLow(channel)),
               std::to_string(pulse.GetTon_Low(channel)), std::to_string(pulse.GetToff_Low(channel)),
               std::to_string(pulse.GetHigh(channel)), std::to_string(pulse.GetTon_High(channel)),
               std::to_string(pulse.GetToff_High(channel))});
  }
  report.document["counts"] = counts;
  report.text = "The " + name + " pulse is on the board and plays.\n\n" + table.Text();
  return report;
}

Report ReportOfCounts(const core::led::LED_Driver& driver, const std::vector<std::int32_t>& levels) {
  if (levels.size() > static_cast<std::size_t>(driver.NrOfChannels))
    throw CommandFailure(ExitCode::WrongUsage, "\"" + driver.LEDName + "\" has " + std::to_string(driver.NrOfChannels) +
                                                   (driver.NrOfChannels == 1 ? " channel" : " channels") + ", but " +
                                                   std::to_string(levels.size()) + " levels are given.");
  Report report;
  Document channels = Document::array();
  TextTable table({{"channel"}, {"level", kRight}, {"luminance", kRight}, {"on", kRight}, {"off", kRight}});
  for (std::size_t i = 0; i < levels.size(); ++i) {
    const int channel = static_cast<int>(i) + 1;
    const core::led::LevelCounts counts = core::led::CountsOf(driver, channel, levels[i]);
    channels.push_back({{"level", levels[i]}, {"luminance", counts.luminance}, {"on", counts.on}, {"off", counts.off}});
    table.Add({std::to_string(channel), std::to_string(levels[i]), std::to_string(counts.luminance),
               std::to_string(counts.on), std::to_string(counts.off)});
  }
  report.document = {{"period", driver.Period}, {"channels", channels}};
  report.text = table.Text() + "\nOne period has " + std::to_string(driver.Period) + " counts.\n";
  return report;
}

}  // namespace kestrin::cli
