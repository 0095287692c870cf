#pragma once

#include <memory>
#include <string>

#include "base/Clock.h"
#include "base/EventPump.h"
#include "device/THIDagent.h"
#include "platform/boards/BoardChoice.h"

namespace kestrin::boards {

/// An agent, or a text that says why there is none.
struct BoardAgent {
  std::unique_ptr<device::THIDagent> agent;
  std::string problem;
};

/// The agent that sees the chosen board. `clock` must outlive it. Fails when a simulated board's state cannot be had.
[[nodiscard]] BoardAgent MakeBoardAgent(const BoardChoice& choice, base::Clock& clock, const base::EventPump& pump);

}  // namespace kestrin::boards
