// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/led/LedRecords.h"
#include "core/ledsetup/LedSetup.h"
#include "simulator/VirtualBoard.h"
#include "support/RecordingLedSetupView.h"
#include "support/ScriptedAgent.h"
#include "support/TestFiles.h"

namespace kestrin::core::ledsetup {

using Lines = std::vector<std::string>;

/// A catalogue file of these lines behind the header.
inline std::string CatalogueOf(const Lines& records, const std::string& header = "KestrinLEDConfigurator#2") {
  std::string text = header + "\r\n";
  for (const std::string& record : records) text += record + "\r\n";
  return text;
}

inline std::string RecordOf(const std::string& name, const std::string& code, const std::vector<std::string>& colors) {
  led::RecordText record = led::RecordOfColors(colors);
  record.name = name;
  record.code = code;
  return record.Text();
}

/// An LED driver board with the setup before it. The board holds the type of the example record, code 12.
class LedSetupFixture : public ::testing::Test {
 protected:
  using Report = std::vector<std::uint8_t>;

  /// Also with values that the program never writes: repetitions of the idle pulse, ramps of the flash.
  static simulator::BoardState StateAtFirst() {
    simulator::BoardState state;
    state.ledConfig = {12, 37, 110};
    state.ledPulses[0] = {{10, 20, 30, 40}, {50, 60, 70, 80}, {}, 500, 1500, 20, 2000, 9};
    state.ledPulses[1] = {{1, 2, 3, 4}, {250, 251, 252, 253}, {}, 7, 40, 8, 60, 3};
    return state;
  }

  LedSetupFixture() {
    m_agent.Open(support::ScriptedAgent::BoardInterface(1));
    EXPECT_EQ(m_tls.BindVars(m_agent), 0);
    m_agent.onWrite = [this](const Report& report) {
      m_view.log.push_back("report " + std::to_string(report[0]));
      m_led.Receive(report, {});
      while (const auto answer = m_led.NextAnswer({}))
        if (!m_ignores || !m_ignores(report)) m_agent.Answers({*answer});
    };
    Catalogue({RecordOf("Lamp", "3", {"white"}), led::kExampleRecord, RecordOf("Duo", "4", {"amber", "blue"}),
               RecordOf("Quartet", "5", {"blue", "white", "red", "green"})});
  }

  void Catalogue(const Lines& records) {
    support::WriteBytes(m_folder / led::LedCatalogue::kFileName, CatalogueOf(records));
  }
  /// The settings of the board are read; what that took is forgotten.
  void Init() {
    const base::Result<> read = m_setup.InitLedDrivers();
    ASSERT_TRUE(read) << read.Text();
    Forget();
  }
  void Forget() {
    m_view.log.clear();
    m_agent.written.clear();
  }
  /// Commands of this code are carried out but not answered.
  void Ignore(std::uint8_t code) {
    m_ignores = [code](const Report& report) { return report[0] == code; };
  }
  /// The first bytes of every report that was written, as many as each `sizes` says.
  [[nodiscard]] std::vector<std::vector<int>> Written(const std::vector<std::size_t>& sizes) const {
    EXPECT_EQ(m_agent.written.size(), sizes.size());
    std::vector<std::vector<int>> heads;
    for (std::size_t i = 0; i < sizes.size() && i < m_agent.written.size(); ++i)
      heads.emplace_back(m_agent.written[i].begin(),
                         m_agent.written[i].begin() + static_cast<std::ptrdiff_t>(sizes[i]));
    return heads;
  }

  support::TemporaryFolder m_folder;
  support::RecordingLedSetupView m_view;
  support::ScriptedAgent m_agent;
  device::TLS m_tls;
  simulator::VirtualBoard m_led{StateAtFirst()};
  std::function<bool(const Report&)> m_ignores;
  bool m_present = true;
  LedSetup m_setup{m_folder.Path(), [this] { return m_present ? &m_tls : nullptr; }, m_view};
};

}  // namespace kestrin::core::ledsetup
