#pragma once

#include <memory>

#include "base/Clock.h"
#include "base/EventPump.h"
#include "cli/BoardChoice.h"
#include "device/THIDagent.h"

namespace kestrin::cli {

/// The agent that sees the chosen board. `clock` must outlive it. Throws CommandFailure when a simulated board's state
/// cannot be had.
[[nodiscard]] std::unique_ptr<device::THIDagent> MakeAgent(const BoardChoice& choice, base::Clock& clock,
                                                           const base::EventPump& pump);

}  // namespace kestrin::cli
