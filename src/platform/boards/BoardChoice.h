#pragma once

#include <string>
#include <string_view>

#include "simulator/BoardOptions.h"

namespace kestrin::platform::boards {

/// Which board a program talks to, as its option `--board` names it.
struct BoardChoice {
  enum class Kind { Auto, Path, Simulated };

  struct Parsed;
  /// "auto", "hid:PATH", "sim" or "sim:KEY=VALUE,...".
  [[nodiscard]] static Parsed Parse(std::string_view argument);

  Kind kind = Kind::Auto;
  /// The device path; "" for any.
  std::string path;
  /// The simulated board.
  simulator::BoardOptions simulated;
};

/// What became of an argument: the choice, or what is wrong with it and what is allowed.
struct BoardChoice::Parsed {
  BoardChoice choice;
  /// "" when the argument was good.
  std::string problem;
};

}  // namespace kestrin::platform::boards
