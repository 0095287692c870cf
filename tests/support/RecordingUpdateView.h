// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/update/UpdateView.h"

namespace kestrin::support {

/// Writes down what an update shows, in order. The dialog closes by itself when the update has ended.
class RecordingUpdateView final : public core::update::UpdateView {
 public:
  std::vector<std::string> log;
  std::string step;
  std::string element;
  std::int32_t overall = -1;
  std::int32_t current = -1;
  std::string warning;
  std::string message;
  /// The dialog is closed before it ever became active.
  bool neverActive = false;

  void resetForm() override {
    overall = current = 0;
    log.emplace_back("reset");
  }
  void showStep(const std::string& text) override { log.push_back("step:" + (step = text)); }
  void showElement(const std::string& text) override { log.push_back("element:" + (element = text)); }
  void progressA(std::int32_t percentage) override { log.push_back("A:" + std::to_string(overall = percentage)); }
  void progressB(std::int32_t percentage) override { log.push_back("B:" + std::to_string(current = percentage)); }
  void showWarning(const std::string& text) override { log.push_back("warning:" + (warning = text)); }
  void showMessage(const std::string& text) override { log.push_back("message:" + (message = text)); }
  void showModal(const std::function<void()>& activated) override {
    log.emplace_back("shown");
    if (!neverActive) activated();
    log.emplace_back("closed");
  }
};

}  // namespace kestrin::support
