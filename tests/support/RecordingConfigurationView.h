// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "core/sound/ConfigurationFile.h"

namespace kestrin::support {

/// Writes down what loading a configuration shows, one line for each call.
class RecordingConfigurationView : public core::sound::ConfigurationView {
 public:
  void EmptySlot(core::sound::SlotKind kind) override { m_calls.push_back("empty " + Name(kind)); }
  void ShowFile(core::sound::SlotKind kind, int position, const std::string& name) override {
    m_calls.push_back("show " + Name(kind) + " " + std::to_string(position) + " " + name);
  }
  void UpdateMemoryStatus() override { m_calls.push_back("memory"); }

  [[nodiscard]] const std::vector<std::string>& Calls() const { return m_calls; }

 private:
  static std::string Name(core::sound::SlotKind kind) { return std::string(core::sound::SlotOf(kind).name); }

  std::vector<std::string> m_calls;
};

}  // namespace kestrin::support
