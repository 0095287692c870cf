#include "platform/boards/BoardChoice.h"

#include <utility>

namespace kestrin::platform::boards {

namespace {

BoardChoice::Parsed ParseSimulated(std::string_view text) {
  simulator::BoardOptions::Parsed parsed = simulator::BoardOptions::Parse(text);
  if (!parsed.problem.empty()) return {{}, "--board: " + parsed.problem};
  return {{BoardChoice::Kind::Simulated, "", std::move(parsed.options)}, ""};
}

}  // namespace

BoardChoice::Parsed BoardChoice::Parse(std::string_view argument) {
  constexpr std::string_view kHid = "hid:";
  constexpr std::string_view kSimulated = "sim:";
  if (argument == "auto") return {};
  if (argument == "sim") return ParseSimulated("");
  if (argument.starts_with(kSimulated)) return ParseSimulated(argument.substr(kSimulated.size()));
  if (argument.starts_with(kHid) && argument.size() > kHid.size())
    return {{Kind::Path, std::string(argument.substr(kHid.size())), {}}, ""};
  return {{},
          "--board: \"" + std::string(argument) +
              "\" names no board. Give auto, hid:PATH (see \"kestrinctl devices\"), sim or sim:KEY=VALUE,..."};
}

}  // namespace kestrin::platform::boards
