#include "cli/BoardChoice.h"

#include "cli/CommandFailure.h"

namespace kestrin::cli {

namespace {

simulator::BoardOptions ParseSimulated(std::string_view text) {
  simulator::BoardOptions::Parsed parsed = simulator::BoardOptions::Parse(text);
  if (!parsed.problem.empty()) throw CommandFailure(ExitCode::WrongUsage, "--board: " + parsed.problem);
  return parsed.options;
}

}  // namespace

BoardChoice BoardChoice::Parse(std::string_view argument) {
  constexpr std::string_view kHid = "hid:";
  constexpr std::string_view kSimulated = "sim:";
  if (argument == "auto") return {};
  if (argument == "sim") return {Kind::Simulated, "", ParseSimulated("")};
  if (argument.starts_with(kSimulated))
    return {Kind::Simulated, "", ParseSimulated(argument.substr(kSimulated.size()))};
  if (argument.starts_with(kHid) && argument.size() > kHid.size())
    return {Kind::Path, std::string(argument.substr(kHid.size())), {}};
  throw CommandFailure(
      ExitCode::WrongUsage,
      "--board: \"" + std::string(argument) +
          "\" names no board. Give auto, hid:PATH (see \"kestrinctl devices\"), sim or sim:KEY=VALUE,...");
}

}  // namespace kestrin::cli
