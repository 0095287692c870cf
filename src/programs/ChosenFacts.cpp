// SPDX-License-Identifier: MIT
#include "programs/ChosenFacts.h"

#include <vector>

#include "core/device/THIDagent.h"

namespace kestrin::programs {

using core::doctor::Access;
using core::doctor::LinkNode;
using platform::boards::BoardChoice;

void NarrowToChoice(core::doctor::LinkFacts& facts, const BoardChoice& choice, const std::string& accessProblem) {
  switch (choice.kind) {
    case BoardChoice::Kind::Auto:
      return;
    case BoardChoice::Kind::Path:
      facts.onlyPath = choice.path;
      if (choice.path.empty()) return;
      std::erase_if(facts.nodes, [&choice](const LinkNode& node) { return node.path != choice.path; });
      // Nobody knows which of the devices on the bus it would be.
      if (facts.nodes.empty()) facts.bus.clear();
      return;
    case BoardChoice::Kind::Simulated: {
      LinkNode node;
      node.path = "sim";
      node.hasVariables = true;
      node.isOurs = accessProblem.empty();
      node.access = accessProblem.empty()                        ? Access::Open
                    : accessProblem == core::device::kBoardInUse ? Access::InUse
                                                                 : Access::Failed;
      node.why = accessProblem;
      facts.isSimulated = true;
      facts.bus.clear();
      facts.nodes = {node};
      return;
    }
  }
}

}  // namespace kestrin::programs
