// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "core/base/Clock.h"
#include "core/base/Disk.h"
#include "core/base/EventPump.h"
#include "core/base/Result.h"
#include "core/device/THIDagent.h"
#include "platform/boards/BoardChoice.h"

namespace kestrin::platform::boards {

/// The agent that sees the chosen board. `clock` and `disk` must outlive it. Fails when a simulated board's state
/// cannot be had, but not when another program has the board just now: see THIDagent::AccessProblem().
core::base::Result<std::unique_ptr<core::device::THIDagent>> MakeBoardAgent(const BoardChoice& choice,
                                                                            core::base::Clock& clock,
                                                                            const core::base::EventPump& pump,
                                                                            core::base::Disk& disk);

}  // namespace kestrin::platform::boards
