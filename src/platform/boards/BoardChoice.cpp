// SPDX-License-Identifier: MIT
#include "platform/boards/BoardChoice.h"

#include <utility>

namespace kestrin::platform::boards {

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;

namespace {

Result<BoardChoice> ParseSimulated(std::string_view text) {
  Result<simulator::BoardOptions> options = simulator::BoardOptions::Parse(text);
  if (!options) return Failure{options.Why().kind, "--board: " + options.Text()};
  return BoardChoice{BoardChoice::Kind::Simulated, "", *std::move(options)};
}

}  // namespace

Result<BoardChoice> BoardChoice::Parse(std::string_view argument) {
  constexpr std::string_view kHid = "hid:";
  constexpr std::string_view kSimulated = "sim:";
  if (argument == "auto") return BoardChoice{};
  if (argument == "sim") return ParseSimulated("");
  if (argument.starts_with(kSimulated)) return ParseSimulated(argument.substr(kSimulated.size()));
  if (argument.starts_with(kHid) && argument.size() > kHid.size())
    return BoardChoice{Kind::Path, std::string(argument.substr(kHid.size())), {}};
  return Failure{FailureKind::NotValid,
                 "--board: \"" + std::string(argument) +
                     "\" names no board. Give auto, hid:PATH (see \"kestrinctl devices\"), sim or sim:KEY=VALUE,..."};
}

}  // namespace kestrin::platform::boards
