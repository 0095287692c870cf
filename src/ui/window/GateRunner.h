// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <utility>

#include "ui/kit/CommandGate.h"

namespace kestrin::ui::window {

/// What runs an action as soon as nothing else talks to the board, and keeps others away until it is done. The gate
/// must outlive it.
[[nodiscard]] inline std::function<void(std::function<void()>)> GateRunner(kit::CommandGate& gate) {
  return [&gate](std::function<void()> action) {
    gate.WhenFree([&gate, action = std::move(action)] {
      const kit::CommandGate::Passage passage(gate);
      action();
    });
  };
}

}  // namespace kestrin::ui::window
