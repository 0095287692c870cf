// SPDX-License-Identifier: MIT
#include "platform/boards/BoardAgent.h"

#include <utility>

#include "platform/hid/HidAgent.h"
#include "simulator/store/StoredBoard.h"

namespace kestrin::platform::boards {

using Agent = std::unique_ptr<core::device::THIDagent>;

core::base::Result<Agent> MakeBoardAgent(const BoardChoice& choice, core::base::Clock& clock,
                                         const core::base::EventPump& pump, core::base::Disk& disk) {
  if (choice.kind != BoardChoice::Kind::Simulated) return hid::CreateHidAgent(clock, {pump, choice.path});
  auto made = simulator::store::CreateAgent(choice.simulated, clock, pump, &disk);
  if (!made) return made.Why();
  return Agent(*std::move(made));
}

}  // namespace kestrin::platform::boards
