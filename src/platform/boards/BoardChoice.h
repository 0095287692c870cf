// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "core/base/Result.h"
#include "simulator/BoardOptions.h"

namespace kestrin::platform::boards {

/// Which board a program talks to, as its option `--board` names it.
struct BoardChoice {
  enum class Kind { Auto, Path, Simulated };

  /// "auto", "hid:PATH", "sim" or "sim:KEY=VALUE,...". A failure says what is wrong and what is allowed.
  static core::base::Result<BoardChoice> Parse(std::string_view argument);

  Kind kind = Kind::Auto;
  /// The device path; "" for any.
  std::string path;
  /// The simulated board.
  simulator::BoardOptions simulated;
};

}  // namespace kestrin::platform::boards
