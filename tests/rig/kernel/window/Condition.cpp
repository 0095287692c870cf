// SPDX-License-Identifier: MIT
#include "rig/kernel/window/Condition.h"

#include <algorithm>
#include <stdexcept>

namespace kestrin::rig {

namespace {

bool Holds(std::string whole, const std::string& text) {
  std::replace(whole.begin(), whole.end(), '\n', ' ');
  return whole.find(text) != std::string::npos;
}

}  // namespace

bool Condition::IsMetBy(const std::vector<Control>& shown) const {
  const auto any = [&](const auto& wanted) {
    return std::any_of(shown.begin(), shown.end(), [&](const Control& control) {
      return (role == "*" || control.role == role) && wanted(control);
    });
  };
  const auto named = [&](const Control& control) { return Holds(control.name, text); };
  const auto described = [&](const Control& control) { return Holds(control.description, text); };
  const auto usable = [&](const Control& control) { return named(control) && control.Is(Control::State::Enabled); };
  if (kind == "shown") return any(named);
  if (kind == "gone") return !any(named);
  if (kind == "usable") return any(usable);
  if (kind == "unusable") return any(named) && !any(usable);
  if (kind == "told") return any(described);
  if (kind == "untold") return !any(described);
  throw std::invalid_argument("there is no condition \"" + kind + "\"");
}

}  // namespace kestrin::rig
