// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "rig/window/AccessibilityBus.h"

namespace kestrin::rig {

/// Something that is to be so of what a window shows.
struct Condition {
  /// "shown": there is something of that role whose name holds the text. "gone": there is not. "usable", "unusable":
  /// and it can be used, or not. "told": there is something whose description holds the text; "untold": there is not.
  std::string kind;
  /// As a screen reader has it, or "*" for any.
  std::string role;
  /// Ends of lines are blanks.
  std::string text;

  /// Throws std::invalid_argument for a kind that there is not.
  [[nodiscard]] bool IsMetBy(const std::vector<Control>& shown) const;
};

}  // namespace kestrin::rig
