// SPDX-License-Identifier: MIT
#pragma once

#include "doctor/LinkFacts.h"

namespace kestrin::core::doctor {

/// The port to what the system knows of the way to a board.
class LinkSurvey {
 public:
  virtual ~LinkSurvey() = default;

  /// Looks. Sends nothing to any board and disturbs no program that uses one; what cannot be seen is left empty. May
  /// take a moment, and may be called from another thread than the one that talks to the board.
  [[nodiscard]] virtual LinkFacts Look() = 0;
};

}  // namespace kestrin::core::doctor
