#pragma once

#include <memory>
#include <string>

#include "base/Clock.h"
#include "base/Disk.h"
#include "base/EventPump.h"
#include "device/THIDagent.h"
#include "platform/boards/BoardChoice.h"

namespace kestrin::boards {

/// An agent, or a text that says why there is none.
struct BoardAgent {
  std::unique_ptr<device::THIDagent> agent;
  std::string problem;
};

/// The agent that sees the chosen board. `clock` and `disk` must outlive it. Fails when a simulated board's state
/// cannot be had, but not when another program has the board just now: see THIDagent::AccessProblem().
[[nodiscard]] BoardAgent MakeBoardAgent(const BoardChoice& choice, base::Clock& clock, const base::EventPump& pump,
                                        base::Disk& disk);

}  // namespace kestrin::boards
