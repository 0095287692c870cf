#include "platform/boards/BoardAgent.h"

#include <utility>

#include "platform/hid/HidAgent.h"
#include "simulator/SimulatedAgent.h"

namespace kestrin::platform::boards {

BoardAgent MakeBoardAgent(const BoardChoice& choice, core::base::Clock& clock, const core::base::EventPump& pump,
                          core::base::Disk& disk) {
  if (choice.kind != BoardChoice::Kind::Simulated) return {hid::CreateHidAgent(clock, {pump, choice.path}), ""};
  simulator::SimulatedAgent::Created created = simulator::SimulatedAgent::Create(choice.simulated, clock, pump, &disk);
  return {std::move(created.agent), std::move(created.problem)};
}

}  // namespace kestrin::platform::boards
