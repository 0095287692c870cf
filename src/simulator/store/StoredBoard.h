// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "core/base/Clock.h"
#include "core/base/Disk.h"
#include "core/base/EventPump.h"
#include "core/base/Result.h"
#include "simulator/BoardOptions.h"
#include "simulator/SimulatedAgent.h"
#include "simulator/VirtualBoard.h"

namespace kestrin::simulator::store {

/// The board that the options' folder holds, with what the options say of it; in memory when they name no folder. Fails
/// when the folder or the file of movements cannot be used; the kind is InUse while another program has it, which only
/// a disk can tell.
core::base::Result<std::unique_ptr<VirtualBoard>> OpenBoard(const BoardOptions& options,
                                                            core::base::Disk* disk = nullptr);

/// The agent of that board; see SimulatedAgent::Create(). Clock and disk must outlive it.
core::base::Result<std::unique_ptr<SimulatedAgent>> CreateAgent(const BoardOptions& options, core::base::Clock& clock,
                                                                core::base::EventPump pump = {},
                                                                core::base::Disk* disk = nullptr);

}  // namespace kestrin::simulator::store
