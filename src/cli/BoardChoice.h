#pragma once

#include <string>
#include <string_view>

#include "simulator/BoardOptions.h"

namespace kestrin::cli {

/// Which board a command talks to, as `--board` names it.
struct BoardChoice {
  enum class Kind { Auto, Path, Simulated };

  Kind kind = Kind::Auto;
  /// The device path; "" for any.
  std::string path;
  /// The simulated board.
  simulator::BoardOptions simulated;

  /// "auto", "hid:PATH", "sim" or "sim:KEY=VALUE,...". Throws CommandFailure for anything else.
  [[nodiscard]] static BoardChoice Parse(std::string_view argument);
};

}  // namespace kestrin::cli
