// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "base/EventPump.h"
#include "sound/ConfigurationFile.h"

namespace kestrin::core::sound {

/// For a set that is loaded where nobody watches its slots.
class QuietView final : public ConfigurationView {
 public:
  /// The pump must outlive the view.
  explicit QuietView(const base::EventPump& pump) : m_pump(pump) {}

  void EmptySlot(SlotKind /*kind*/) override {}
  void ShowFile(SlotKind /*kind*/, int /*position*/, const std::string& /*name*/) override {}
  void UpdateMemoryStatus() override {}
  void Pump() override { base::Pump(m_pump); }

 private:
  const base::EventPump& m_pump;
};

}  // namespace kestrin::core::sound
