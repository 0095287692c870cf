#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/CommandFailure.h"
#include "core/led/LED_Driver.h"
#include "core/ledsetup/LedSetupView.h"

namespace kestrin::cli {

/// The LED setup panel of the command line: its controls hold what a command sets and what the setup shows; a message
/// ends the command.
class ConsoleLedSetupView final : public core::ledsetup::LedSetupView {
 public:
  /// Whether the board failed a command.
  [[nodiscard]] bool WentOffline() const { return m_offline; }

  void ClearTypes() override {}
  void AppendType(const std::string&) override {}
  void SelectType(std::size_t) override {}
  void SetChannelLabelColor(int, core::led::Color) override {}
  void SetOverdriveMaximum(std::int32_t) override {}
  void SetOverdrive(std::int32_t percent) override { m_overdrive = percent; }
  [[nodiscard]] std::int32_t Overdrive() const override { return m_overdrive; }
  void SetOverdriveLabel(const std::string& text) override { m_overdriveLabel = text; }
  [[nodiscard]] std::string OverdriveLabel() const override { return m_overdriveLabel; }

  void SetTimeText(core::led::TimeBox box, const std::string& text) override {
    m_times[static_cast<std::size_t>(box)] = text;
  }
  [[nodiscard]] std::string TimeText(core::led::TimeBox box) const override {
    return m_times[static_cast<std::size_t>(box)];
  }
  void SetRepeatText(const std::string& text) override { m_repetitions = text; }
  [[nodiscard]] std::string RepeatText() const override { return m_repetitions; }
  void ShowPulses() override {}

  void ShowPicker(bool) override {}
  [[nodiscard]] bool IsPickerShown() const override { return false; }
  void ShowLevelRow(int, bool) override {}
  void SetLevelLabelColor(int, core::led::Color) override {}
  void SetLevel(int channel, std::int16_t level) override {
    m_levels.at(static_cast<std::size_t>(channel) - 1) = level;
  }
  [[nodiscard]] std::int16_t Level(int channel) const override {
    return m_levels.at(static_cast<std::size_t>(channel) - 1);
  }
  void EnablePickColor(bool) override {}
  [[nodiscard]] bool ColorFidelity() const override { return false; }
  [[nodiscard]] std::optional<core::led::Color> AskColor(core::led::Color) override { return std::nullopt; }
  [[nodiscard]] core::led::Color GetSysColor(std::int32_t) const override { return 0; }

  /// Commands ask before they start.
  [[nodiscard]] bool Confirm(const std::string&, const std::string&) override { return true; }
  void ShowCritical(const std::string& text, const std::string& detail) override {
    throw CommandFailure(ExitCode::Failed, text, detail);
  }
  void ShowInformation(const std::string& text, const std::string& detail) override {
    throw CommandFailure(ExitCode::Failed, text, detail);
  }
  void GoOffline() override { m_offline = true; }

 private:
  std::int32_t m_overdrive = 0;
  std::string m_overdriveLabel;
  std::array<std::string, core::led::kTimeBoxes.size()> m_times;
  std::string m_repetitions;
  std::array<std::int16_t, core::led::LED_Driver::kChannels> m_levels{};
  bool m_offline = false;
};

}  // namespace kestrin::cli
