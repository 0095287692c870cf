// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <numeric>
#include <vector>

#include "core/device/TLS.h"
#include "support/ScriptedAgent.h"

namespace kestrin::support {

/// A sound board in its simplest form behind a scripted agent: it answers what a download asks, with the right sums,
/// and keeps every report that came. Tests bend single answers with `bend`.
class AnsweringBoard {
 public:
  using Report = std::vector<std::uint8_t>;

  AnsweringBoard() {
    agent.Open(ScriptedAgent::BoardInterface(1));
    EXPECT_EQ(tls.BindVars(agent), 0);
    agent.onWrite = [this](const Report& report) {
      const std::size_t before = agent.answers.size();
      Answer(report);
      if (bend) bend(report);
      if (silentFor == report[0]) agent.answers.resize(before);
    };
  }

  ScriptedAgent agent;
  core::device::TLS tls;
  core::device::AccParam accelerometer{1, 2, 3, 4, 5, 6};
  /// Polls of the erase that fail before the one that is answered.
  int eraseFailures = 0;
  /// Commands of this code are not answered.
  int silentFor = -1;
  /// Called after the answers of a report were queued.
  std::function<void(const Report&)> bend;

  /// The codes of all reports that arrived, in order.
  [[nodiscard]] std::vector<int> Codes() const {
    std::vector<int> codes;
    for (const Report& report : agent.written) codes.push_back(report[0]);
    return codes;
  }
  [[nodiscard]] std::vector<Report> ReportsOf(std::uint8_t code) const {
    std::vector<Report> found;
    std::copy_if(agent.written.begin(), agent.written.end(), std::back_inserter(found),
                 [&](const Report& report) { return report[0] == code; });
    return found;
  }
  static int Number24(const Report& report, std::size_t at) {
    return report[at] << 16 | report[at + 1] << 8 | report[at + 2];
  }

 private:
  void Answer16(unsigned sum) {
    agent.Answers({{static_cast<std::uint8_t>(sum >> 8 & 0xFF), static_cast<std::uint8_t>(sum & 0xFF)}});
  }
  static unsigned Sum(const Report& report, std::size_t first, std::size_t count) {
    const auto begin = report.begin() + static_cast<std::ptrdiff_t>(first);
    return std::accumulate(begin, begin + static_cast<std::ptrdiff_t>(count), 0u);
  }
  void Answer(const Report& report) {
    const auto byte = [](std::int32_t value) { return static_cast<std::uint8_t>(value); };
    switch (report[0]) {
      case 10:
        accelerometer = {255, 255, 255, 255, 255, 255};
        agent.answers.insert(agent.answers.end(), static_cast<std::size_t>(eraseFailures), std::nullopt);
        agent.Answers({{10, 10}});
        break;
      case 20:
        Answer16(Sum(report, 4, 1024));
        break;
      case 21: {
        const auto count = static_cast<std::size_t>(Number24(report, 4));
        if (Number24(report, 1) == 12) m_table.assign(report.begin() + 7, report.begin() + 7 + Number24(report, 4));
        Answer16(Sum(report, 7, count));
        break;
      }
      case 30:
        Answer16(Sum(m_table, 0, static_cast<std::size_t>(Number24(report, 4))));
        break;
      case 41:
        agent.Answers({{byte(accelerometer.MotionTh), byte(accelerometer.MotionDeb)},
                       {byte(accelerometer.ImpactTh), byte(accelerometer.ImpactDeb)},
                       {byte(accelerometer.ImpactTm), byte(accelerometer.FOCTime)}});
        break;
      case 42:
        accelerometer = {report[1], report[2], report[3], report[4], report[5], report[6]};
        agent.Answers({{10, 10}});
        break;
      default:
        break;
    }
  }

  Report m_table;
};

}  // namespace kestrin::support
