// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "core/doctor/LinkFacts.h"
#include "platform/boards/BoardChoice.h"

namespace kestrin::programs {

/// Makes of what was seen of this computer what concerns the board that was chosen when the program was started.
/// `accessProblem` is what the agent says: why a board that is there cannot be opened, "" otherwise.
void NarrowToChoice(core::doctor::LinkFacts& facts, const platform::boards::BoardChoice& choice,
                    const std::string& accessProblem);

}  // namespace kestrin::programs
