// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace kestrin::core::base {

/// Gives the person's interface its turn: called between the steps of every long operation and while an adapter waits.
/// In the window it lets pending events run; on the command line it looks for Ctrl-C and the like. May be empty: then
/// nobody waits for a turn.
using EventPump = std::function<void()>;

/// Calls `pump` unless it is empty.
inline void Pump(const EventPump& pump) {
  if (pump) pump();
}

}  // namespace kestrin::core::base
