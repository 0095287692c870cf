#pragma once

#include <string>
#include <vector>

#include "sound/ConfigurationFile.h"

namespace kestrin::support {

/// Writes down what loading a configuration shows, one line for each call.
class RecordingConfigurationView : public sound::ConfigurationView {
 public:
  void EmptySlot(sound::SlotKind kind) override { m_calls.push_back("empty " + Name(kind)); }
  void ShowFile(sound::SlotKind kind, int position, const std::string& name) override {
    m_calls.push_back("show " + Name(kind) + " " + std::to_string(position) + " " + name);
  }
  void UpdateMemoryStatus() override { m_calls.push_back("memory"); }

  [[nodiscard]] const std::vector<std::string>& Calls() const { return m_calls; }

 private:
  static std::string Name(sound::SlotKind kind) { return std::string(sound::SlotOf(kind).name); }

  std::vector<std::string> m_calls;
};

}  // namespace kestrin::support
