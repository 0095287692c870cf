// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "cli/ExitCode.h"

namespace kestrin::cli {

/// A document whose keys keep the order in which they are written down.
using Document = nlohmann::ordered_json;

/// What a command has to say at its end.
struct Report {
  ExitCode code = ExitCode::Done;
  /// For `--json`; null when the command has none but its message, or, without a message, none at all.
  Document document = nullptr;
  /// For people: aligned text, whole lines.
  std::string text;
  /// What failed or needs attention; "" when nothing does. Goes to standard error.
  std::string message;
};

}  // namespace kestrin::cli
