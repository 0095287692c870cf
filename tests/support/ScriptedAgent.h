// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/device/THIDagent.h"
#include "support/BoardIds.h"

namespace kestrin::support {

/// A HID stack that follows a script: interfaces that the test opens, answers that it queued, reports captured whole. A
/// read without a queued answer, or with the answer "none", fails as a time-out would.
class ScriptedAgent : public core::device::THIDagent {
 public:
  struct Variable {
    core::device::ReportType type = core::device::ReportType::Input;
    std::int32_t usage = 0;
    std::int32_t usagePage = 0;
    std::int32_t report = 0;
    core::device::VariableAttributes attributes{};
  };
  struct Interface {
    std::int32_t handle = 0;
    std::int32_t vendorId = kVendorId;
    std::int32_t productId = kProductId;
    std::vector<Variable> variables;
  };
  using Answer = std::array<std::uint8_t, 2>;

  /// An interface as a Kestrin board has it: report 0 is the command, report 1 the response.
  static Interface BoardInterface(std::int32_t handle) {
    return {
        handle,
        kVendorId,
        kProductId,
        {{core::device::ReportType::Output, 1, 0xFF00, 0, {}}, {core::device::ReportType::Input, 2, 0xFF00, 1, {}}}};
  }

  // --- The script ---

  /// Opened one after the other by the next search.
  std::vector<Interface> toOpen;
  std::vector<Interface> interfaces;
  /// Answers in the order in which they are read; an empty one is a read that fails.
  std::deque<std::optional<Answer>> answers;
  /// Numbers (from 1) of written reports that fail.
  std::vector<int> failWrites;
  /// Called after each captured report; may queue answers.
  std::function<void(const std::vector<std::uint8_t>&)> onWrite;
  /// Called while a read waits.
  std::function<void()> whileReading;
  bool throwWhileBinding = false;
  bool throwOnAttributes = false;
  std::string accessProblem;

  // --- What was seen ---

  std::vector<std::vector<std::uint8_t>> written;
  /// The handles of the interfaces that they were written to.
  std::vector<std::int32_t> writtenTo;
  /// The handle of the interface that each report was read from.
  std::vector<std::int32_t> readFrom;
  int writesTried = 0;
  int readsTried = 0;
  int searches = 0;
  bool started = false;
  bool stopped = false;
  bool hurried = false;
  int refreshes = 0;
  core::device::HidMatch match;
  std::vector<std::string> variableNames;
  std::vector<std::int32_t> variableOptions;
  core::device::HidAgentEvents* events = nullptr;

  void Answers(std::initializer_list<Answer> list) {
    for (const Answer& answer : list) answers.emplace_back(answer);
  }
  /// Opens an interface behind the back of any search, as an arrival does.
  void Open(const Interface& interface) {
    interfaces.push_back(interface);
    m_interface = static_cast<std::int32_t>(interfaces.size()) - 1;
    if (events != nullptr) events->InterfaceOpened(interface.handle, 2, 1028, "scripted");
  }
  /// Closes the interface with that handle and tells.
  void Close(std::int32_t handle) {
    interfaces.erase(std::remove_if(interfaces.begin(), interfaces.end(),
                                    [&](const Interface& interface) { return interface.handle == handle; }),
                     interfaces.end());
    m_interface = -1;
    if (events != nullptr) events->InterfaceClosed(handle, "scripted");
  }

  // --- The port ---

  void SetEvents(core::device::HidAgentEvents* receiver) override { events = receiver; }
  void Start() override { started = true; }
  void Stop() override { stopped = true; }
  void Hurry() override { hurried = true; }
  void SetMatch(const core::device::HidMatch& wanted) override { match = wanted; }
  bool SearchAndOpen() override {
    ++searches;
    for (const Interface& interface : std::exchange(toOpen, {})) Open(interface);
    return !interfaces.empty();
  }
  void Refresh() override { ++refreshes; }
  [[nodiscard]] std::string AccessProblem() const override { return accessProblem; }
  [[nodiscard]] std::int32_t NumberOfInterfaces() const override {
    return static_cast<std::int32_t>(interfaces.size());
  }
  void SelectInterface(std::int32_t number) override {
    if (number < 0 || number >= NumberOfInterfaces()) throw core::device::AgentError("no such interface");
    m_interface = number;
  }
  [[nodiscard]] std::int32_t VendorId() const override { return Current().vendorId; }
  [[nodiscard]] std::int32_t ProductId() const override { return Current().productId; }
  [[nodiscard]] std::int32_t InterfaceHandle() const override { return Current().handle; }
  [[nodiscard]] std::int32_t FindVariable(core::device::ReportType type, std::int32_t usage,
                                          std::int32_t usagePage) const override {
    if (throwWhileBinding) throw core::device::AgentError("the device does not answer");
    const auto& variables = Current().variables;
    const auto found = std::find_if(variables.begin(), variables.end(), [&](const Variable& variable) {
      return variable.type == type && variable.usage == usage && variable.usagePage == usagePage;
    });
    return found == variables.end() ? -1 : static_cast<std::int32_t>(found - variables.begin());
  }
  void SelectVariable(std::int32_t number) override {
    if (number < 0 || number >= static_cast<std::int32_t>(Current().variables.size()))
      throw core::device::AgentError("no such variable");
    m_variable = number;
  }
  [[nodiscard]] std::int32_t VariableReportNumber() const override { return CurrentVariable().report; }
  [[nodiscard]] core::device::VariableAttributes Attributes() const override {
    if (throwOnAttributes) throw core::device::AgentError("the device does not answer");
    return CurrentVariable().attributes;
  }
  void SetVariableName(const std::string& name) override { variableNames.push_back(name); }
  void SetVariableOption(std::int32_t option) override { variableOptions.push_back(option); }
  [[nodiscard]] std::int32_t ScaledValue() const override { return scaledValue; }
  void SetScaledValue(std::int32_t value) override { scaledValue = value; }
  [[nodiscard]] std::int32_t UnScaledValue() const override { return unScaledValue; }
  void SetUnScaledValue(std::int32_t value) override { unScaledValue = value; }
  std::int32_t scaledValue = 0;
  std::int32_t unScaledValue = 0;

  void SetElements(std::span<const std::uint8_t> values) override {
    EXPECT_EQ(CurrentVariable().type, core::device::ReportType::Output);
    m_output.assign(values.begin(), values.end());
  }
  void GetElements(std::span<std::uint8_t> values) const override {
    EXPECT_EQ(CurrentVariable().type, core::device::ReportType::Input);
    std::copy_n(heldInput.begin(), std::min(values.size(), heldInput.size()), values.begin());
  }
  /// What the control holds of the last input report.
  Answer heldInput{};

  void SetCurrentRptNum(std::int32_t number) override { currentReport = number; }
  std::int32_t currentReport = -1;
  bool WriteReport() override {
    ++writesTried;
    if (std::find(failWrites.begin(), failWrites.end(), writesTried) != failWrites.end()) return false;
    written.push_back(m_output);
    writtenTo.push_back(InterfaceHandle());
    if (onWrite) onWrite(written.back());
    return true;
  }
  bool ReadReport() override {
    ++readsTried;
    readFrom.push_back(InterfaceHandle());
    if (whileReading) whileReading();
    if (answers.empty()) return false;
    const std::optional<Answer> answer = answers.front();
    answers.pop_front();
    if (answer) heldInput = *answer;
    return answer.has_value();
  }

 private:
  [[nodiscard]] const Interface& Current() const {
    if (m_interface < 0 || m_interface >= NumberOfInterfaces()) throw core::device::AgentError("no current interface");
    return interfaces[static_cast<std::size_t>(m_interface)];
  }
  [[nodiscard]] const Variable& CurrentVariable() const {
    const auto& variables = Current().variables;
    if (m_variable < 0 || m_variable >= static_cast<std::int32_t>(variables.size()))
      throw core::device::AgentError("no current variable");
    return variables[static_cast<std::size_t>(m_variable)];
  }

  std::int32_t m_interface = -1;
  std::int32_t m_variable = -1;
  std::vector<std::uint8_t> m_output;
};

}  // namespace kestrin::support
