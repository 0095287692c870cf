#pragma once

#include <memory>
#include <string>

#include "core/base/Clock.h"
#include "core/base/Disk.h"
#include "core/base/EventPump.h"
#include "core/device/THIDagent.h"
#include "platform/boards/BoardChoice.h"

namespace kestrin::platform::boards {

/// An agent, or a text that says why there is none.
struct BoardAgent {
  std::unique_ptr<core::device::THIDagent> agent;
  std::string problem;
};

/// The agent that sees the chosen board. `clock` and `disk` must outlive it. Fails when a simulated board's state
/// cannot be had, but not when another program has the board just now: see THIDagent::AccessProblem().
[[nodiscard]] BoardAgent MakeBoardAgent(const BoardChoice& choice, core::base::Clock& clock,
                                        const core::base::EventPump& pump, core::base::Disk& disk);

}  // namespace kestrin::platform::boards
