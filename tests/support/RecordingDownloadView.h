// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/sound/DownloadView.h"

namespace kestrin::support {

/// Writes down what a download shows, in order. Percentages stand in the log only where they start or empty the label;
/// all of them are in `percents`.
class RecordingDownloadView final : public core::sound::DownloadView {
 public:
  std::vector<std::string> log;
  std::vector<std::optional<int>> percents;
  bool frameVisible = false;
  std::string information;
  std::string button;
  std::string boardHolds;
  std::string message;
  std::string question;
  bool abort = false;
  bool hideTimerStarted = false;
  /// Called whenever the information text changes.
  std::function<void(const std::string&)> onInformation;

  void ShowMessage(const std::string& text) override { log.push_back("message:" + (message = text)); }
  void ShowFrame() override {
    frameVisible = true;
    log.push_back("frame");
  }
  void HideFrame() override {
    frameVisible = false;
    log.push_back("hide");
  }
  void ShowInformation(const std::string& text) override {
    log.push_back("info:" + (information = text));
    if (onInformation) onInformation(text);
  }
  void ShowPercent(std::optional<int> percent) override {
    percents.push_back(percent);
    if (!percent) log.push_back("percent:");
    if (percent == 0) log.push_back("percent:0 %");
  }
  void ShowButton(const std::string& caption) override { log.push_back("button:" + (button = caption)); }
  void ShowBoardHolds(const std::string& text) override { boardHolds = text; }
  bool AskAbort(const std::string& text) override {
    question = text;
    return abort;
  }
  void StartHideFrameTimer() override {
    hideTimerStarted = true;
    log.push_back("hide timer");
  }
};

}  // namespace kestrin::support
