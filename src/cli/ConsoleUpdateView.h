// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "cli/ProgressLine.h"
#include "core/update/UpdateView.h"

namespace kestrin::cli {

/// An update on the command line: its steps and elements as progress; how it ended stands in the command's report.
class ConsoleUpdateView final : public core::update::UpdateView {
 public:
  /// `progress` must outlive the view.
  explicit ConsoleUpdateView(ProgressLine& progress) : m_progress(progress) {}

  void resetForm() override {}
  void showStep(const std::string& text) override { Show(text); }
  void showElement(const std::string& text) override { Show(text); }
  void progressA(std::int32_t) override {}
  void progressB(std::int32_t percentage) override { m_progress.Percent(percentage); }
  void showWarning(const std::string&) override { m_progress.End(); }
  void showMessage(const std::string&) override { m_progress.End(); }
  void showModal(const std::function<void()>& activated) override { activated(); }

 private:
  void Show(const std::string& text) {
    // "Downloading: " without a name only announces what comes next.
    if (!text.ends_with(": ")) m_progress.Phase(text);
  }

  ProgressLine& m_progress;
};

}  // namespace kestrin::cli
