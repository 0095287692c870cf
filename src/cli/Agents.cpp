#include "cli/Agents.h"

#include "cli/CommandFailure.h"
#include "platform/hid/HidAgent.h"
#include "simulator/SimulatedAgent.h"

namespace kestrin::cli {

std::unique_ptr<device::THIDagent> MakeAgent(const BoardChoice& choice, base::Clock& clock,
                                             const base::EventPump& pump) {
  if (choice.kind != BoardChoice::Kind::Simulated) return hid::CreateHidAgent(clock, {pump, choice.path});
  simulator::SimulatedAgent::Created created = simulator::SimulatedAgent::Create(choice.simulated, clock, pump);
  if (!created.problem.empty()) throw CommandFailure(ExitCode::Failed, created.problem);
  return std::move(created.agent);
}

}  // namespace kestrin::cli
