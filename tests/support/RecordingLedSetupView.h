#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/ledsetup/LedSetupView.h"

namespace kestrin::support {

/// An LED setup panel without a window: holds what its controls show, and writes down in order what they are told.
class RecordingLedSetupView final : public core::ledsetup::LedSetupView {
 public:
  struct LevelRow {
    bool visible = false;
    core::led::Color color = 0;
    std::int16_t level = 0;
  };

  std::vector<std::string> log;

  std::vector<std::string> types;
  std::optional<std::size_t> selectedType;
  /// By channel, from 1.
  std::array<core::led::Color, 5> labelColors{-1, -1, -1, -1, -1};
  std::int32_t overdriveMaximum = -1;
  std::int32_t overdrive = -1;
  std::string overdriveLabel;
  std::map<core::led::TimeBox, std::string> times;
  std::string repetitions;
  int pulsesShown = 0;
  bool picker = false;
  std::array<LevelRow, 5> rows;
  bool pickColorEnabled = false;
  bool fidelity = false;
  /// What the colour dialog answers, and what it was preset to.
  std::optional<core::led::Color> pickedColor;
  std::optional<core::led::Color> preset;
  std::map<std::int32_t, core::led::Color> systemColors;
  bool confirms = false;
  std::string question;
  std::string critical;
  std::string information;
  std::string detail;
  int wentOffline = 0;

  void ClearTypes() override {
    types.clear();
    selectedType.reset();
    log.emplace_back("clear types");
  }
  void AppendType(const std::string& name) override {
    types.push_back(name);
    log.push_back("type " + name);
  }
  void SelectType(std::size_t index) override {
    selectedType = index;
    log.push_back("select " + std::to_string(index));
  }
  void SetChannelLabelColor(int channel, core::led::Color color) override {
    labelColors.at(static_cast<std::size_t>(channel)) = color;
  }
  void SetOverdriveMaximum(std::int32_t percent) override { overdriveMaximum = percent; }
  void SetOverdrive(std::int32_t percent) override { overdrive = percent; }
  [[nodiscard]] std::int32_t Overdrive() const override { return overdrive; }
  void SetOverdriveLabel(const std::string& text) override {
    overdriveLabel = text;
    log.push_back("overdrive " + text);
  }
  [[nodiscard]] std::string OverdriveLabel() const override { return overdriveLabel; }

  void SetTimeText(core::led::TimeBox box, const std::string& text) override {
    times[box] = text;
    log.push_back("time " + text);
  }
  [[nodiscard]] std::string TimeText(core::led::TimeBox box) const override {
    const auto text = times.find(box);
    return text == times.end() ? "" : text->second;
  }
  void SetRepeatText(const std::string& text) override {
    repetitions = text;
    log.push_back("repeat " + text);
  }
  [[nodiscard]] std::string RepeatText() const override { return repetitions; }
  void ShowPulses() override { ++pulsesShown; }

  void ShowPicker(bool visible) override {
    picker = visible;
    log.emplace_back(visible ? "show picker" : "hide picker");
  }
  [[nodiscard]] bool IsPickerShown() const override { return picker; }
  void ShowLevelRow(int channel, bool visible) override { Row(channel).visible = visible; }
  void SetLevelLabelColor(int channel, core::led::Color color) override { Row(channel).color = color; }
  void SetLevel(int channel, std::int16_t level) override { Row(channel).level = level; }
  [[nodiscard]] std::int16_t Level(int channel) const override {
    return rows.at(static_cast<std::size_t>(channel)).level;
  }
  void EnablePickColor(bool enabled) override { pickColorEnabled = enabled; }
  [[nodiscard]] bool ColorFidelity() const override { return fidelity; }
  [[nodiscard]] std::optional<core::led::Color> AskColor(core::led::Color colorBefore) override {
    preset = colorBefore;
    return pickedColor;
  }
  [[nodiscard]] core::led::Color GetSysColor(std::int32_t number) const override { return systemColors.at(number); }

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

  /// The levels of the sliders, hidden ones too.
  [[nodiscard]] std::vector<int> Levels() const { return {rows[1].level, rows[2].level, rows[3].level, rows[4].level}; }
  [[nodiscard]] std::vector<core::led::Color> Labels() const {
    return {labelColors[1], labelColors[2], labelColors[3], labelColors[4]};
  }
  /// The texts of the four idle boxes, then the two of the flash.
  [[nodiscard]] std::vector<std::string> Times() const {
    std::vector<std::string> texts;
    for (const core::led::TimeBox box : core::led::kTimeBoxes) texts.push_back(times.at(box));
    return texts;
  }

 private:
  LevelRow& Row(int channel) { return rows.at(static_cast<std::size_t>(channel)); }
};

}  // namespace kestrin::support
