// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "cli/CommandFailure.h"
#include "core/ledsetup/LedSetupView.h"

namespace kestrin::cli {

/// The LED setup panel of the command line: reports show what the state holds at a command's end; a message ends the
/// command.
class ConsoleLedSetupView final : public core::ledsetup::LedSetupView {
 public:
  /// Whether the board failed a command.
  [[nodiscard]] bool WentOffline() const { return m_offline; }

  void Show(core::ledsetup::LedSetupPart, const core::ledsetup::LedSetupState&) override {}
  [[nodiscard]] std::optional<core::led::Color> AskColor(core::led::Color) override { return std::nullopt; }
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
  bool m_offline = false;
};

}  // namespace kestrin::cli
