// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "cli/ProgressLine.h"
#include "core/sound/DownloadView.h"

namespace kestrin::cli {

/// A download on the command line: its phases as progress; how it ended stands in the command's report.
class ConsoleDownloadView final : public core::sound::DownloadView {
 public:
  /// `progress` must outlive the view.
  explicit ConsoleDownloadView(ProgressLine& progress) : m_progress(progress) {}

  /// What the board holds after the run; "" when nothing was started.
  [[nodiscard]] const std::string& BoardHolds() const { return m_boardHolds; }

  void ShowMessage(const std::string&) override {}
  void ShowFrame() override {}
  void HideFrame() override {}
  void ShowPhase(core::sound::DownloadPhase, const std::string& text) override { m_progress.Phase(text); }
  /// How the run ended stands in the report.
  void ShowInformation(const std::string&) override {}
  void ShowPercent(std::optional<int> percent) override {
    if (percent) m_progress.Percent(*percent);
  }
  void ShowButton(const std::string&) override {}
  void ShowBoardHolds(const std::string& text) override {
    m_progress.End();
    m_boardHolds = text;
  }
  /// Who presses Ctrl-C, or sends a signal, means it.
  [[nodiscard]] bool AskAbort(const std::string&) override { return true; }
  void StartHideFrameTimer() override {}

 private:
  ProgressLine& m_progress;
  std::string m_boardHolds;
};

}  // namespace kestrin::cli
