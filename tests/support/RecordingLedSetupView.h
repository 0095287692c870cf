// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/base/PlainNumber.h"
#include "core/ledsetup/LedSetupView.h"

namespace kestrin::support {

/// An LED setup panel without a window: holds what each of its parts was told to show last, and writes down in order
/// what it is told and asked.
class RecordingLedSetupView final : public core::ledsetup::LedSetupView {
 public:
  using Part = core::ledsetup::LedSetupPart;
  using State = core::ledsetup::LedSetupState;

  std::vector<std::string> log;

  std::vector<std::string> types;
  std::optional<std::size_t> selectedType;
  /// By output channel, from the first on.
  std::vector<core::led::Color> labels;
  std::int32_t overdriveMaximum = -1;
  std::int32_t overdrive = -1;
  /// What the boxes say, by their number, and the repeat box; "-" for an empty one.
  std::vector<std::string> times = std::vector<std::string>(core::led::kTimeBoxes.size(), "-");
  std::string repetitions = "-";
  int pulsesShown = 0;
  bool picker = false;
  /// The colours of the rows that are there.
  std::vector<core::led::Color> rows;
  bool pickColorEnabled = false;
  /// Of all four channels.
  std::vector<int> levels;

  /// What the colour dialog answers, and what it was preset to.
  std::optional<core::led::Color> pickedColor;
  std::optional<core::led::Color> preset;
  bool confirms = false;
  std::string question;
  std::string critical;
  std::string information;
  std::string detail;
  int wentOffline = 0;

  void Show(Part part, const State& state) override {
    switch (part) {
      case Part::Types:
        types = state.types;
        selectedType = state.type;
        log.push_back(TypesText(state));
        break;
      case Part::Channels:
        labels.assign(state.channelColors.begin(), state.channelColors.end());
        break;
      case Part::Overdrive:
        overdriveMaximum = state.overdriveMaximum;
        overdrive = state.overdrive;
        log.push_back("overdrive " + std::to_string(overdrive) + "%");
        break;
      case Part::IdleTimes:
        ShowTimes(state, core::led::TimeBox::IdleTON, core::led::TimeBox::IdleTFALL);
        break;
      case Part::FocTimes:
        ShowTimes(state, core::led::TimeBox::FocTON, core::led::TimeBox::FocTOFF);
        repetitions = BoxText(state.repetitions);
        log.push_back("repeat " + repetitions);
        break;
      case Part::Pulses:
        ++pulsesShown;
        break;
      case Part::Picker:
        picker = state.picker.isShown;
        log.emplace_back(picker ? "show picker" : "hide picker");
        ShowRows(state);
        ShowLevels(state);
        break;
      case Part::PickerRows:
        ShowRows(state);
        break;
      case Part::Levels:
        ShowLevels(state);
        break;
    }
  }
  [[nodiscard]] std::optional<core::led::Color> AskColor(core::led::Color colorBefore) override {
    preset = colorBefore;
    return pickedColor;
  }
  [[nodiscard]] bool Confirm(const std::string& text, const std::string& what) override {
    question = text;
    detail = what;
    log.emplace_back("ask");
    return confirms;
  }
  void ShowCritical(const std::string& text, const std::string& what) override {
    critical = text;
    detail = what;
    log.emplace_back("critical");
  }
  void ShowInformation(const std::string& text, const std::string& what) override {
    information = text;
    detail = what;
    log.emplace_back("information");
  }
  void GoOffline() override {
    ++wentOffline;
    log.emplace_back("offline");
  }

  [[nodiscard]] const std::string& Time(core::led::TimeBox box) const {
    return times.at(static_cast<std::size_t>(box));
  }

 private:
  [[nodiscard]] static std::string BoxText(std::optional<double> number) {
    return number ? core::base::PlainNumber(*number) : "-";
  }
  /// "types Lamp, Duo*": the chosen one has the star.
  [[nodiscard]] static std::string TypesText(const State& state) {
    std::string text = "types";
    for (std::size_t i = 0; i < state.types.size(); ++i)
      text += (i == 0 ? " " : ", ") + state.types[i] + (state.type == i ? "*" : "");
    return text;
  }
  void ShowTimes(const State& state, core::led::TimeBox first, core::led::TimeBox last) {
    std::string text = "times";
    for (auto i = static_cast<std::size_t>(first); i <= static_cast<std::size_t>(last); ++i) {
      times.at(i) = BoxText(state.times.at(i));
      text += " " + times.at(i);
    }
    log.push_back(text);
  }
  void ShowRows(const State& state) {
    rows.clear();
    for (int channel = 1; channel <= state.Channels(); ++channel)
      rows.push_back(state.CurrentDriver.GetChannelColor(channel));
    pickColorEnabled = state.CanPickColor();
  }
  void ShowLevels(const State& state) { levels.assign(state.picker.levels.begin(), state.picker.levels.end()); }
};

}  // namespace kestrin::support
