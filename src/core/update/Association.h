// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kestrin::core::update {

/// A name and its value, as a pair line of the update server has them.
struct Association {
  std::string Name;
  std::string Value;

  friend bool operator==(const Association&, const Association&) = default;
};

}  // namespace kestrin::core::update
