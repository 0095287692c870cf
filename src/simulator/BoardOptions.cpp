// SPDX-License-Identifier: MIT
#include "simulator/BoardOptions.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <set>
#include <string>
#include <utility>

#include "core/base/Numbers.h"
#include "core/base/PathText.h"
#include "core/base/Text.h"

namespace kestrin::simulator {

namespace {

/// A day; longer erases are slips of the pen.
constexpr double kLongestErase = 86400;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// The whole text as a number of that base; empty when it is not one, or too large.
template <typename Number>
std::optional<Number> WholeNumber(std::string_view text, int numberBase) {
  Number value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, numberBase);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

bool SetId(BoardOptions& options, std::string_view value) {
  options.id = WholeNumber<std::uint16_t>(value, 10);
  return options.id.has_value();
}

bool SetSerial(BoardOptions& options, std::string_view value) {
  if (value.size() == 8) options.serial = WholeNumber<std::uint32_t>(value, 16);
  return options.serial.has_value();
}

bool SetDir(BoardOptions& options, std::string_view value) {
  options.dir = core::base::PathOf(value);
  return !value.empty();
}

bool SetErase(BoardOptions& options, std::string_view value) {
  const auto allDigits = [](std::string_view digits) {
    return !digits.empty() && std::all_of(digits.begin(), digits.end(), IsDigit);
  };
  const std::vector<std::string_view> parts = core::base::Split(value, ".");
  if (parts.size() > 2 || !std::all_of(parts.begin(), parts.end(), allDigits)) return false;
  const double seconds = core::base::LeadingNumber(value);
  if (seconds > kLongestErase) return false;
  options.erase = std::chrono::nanoseconds(std::llround(seconds * 1e9));
  return true;
}

bool SetWire(BoardOptions& options, std::string_view value) {
  options.wire = value == "usb" ? BoardOptions::Wire::Usb : BoardOptions::Wire::None;
  return value == "usb" || value == "none";
}

bool SetMotion(BoardOptions& options, std::string_view value) {
  options.motion = core::base::PathOf(value);
  return !value.empty();
}

bool AddFault(BoardOptions& options, std::string_view value) {
  struct Name {
    std::string_view text;
    Fault::Kind kind;
  };
  constexpr Name kNames[] = {{"write", Fault::Kind::WriteFails},
                             {"read", Fault::Kind::ReadFails},
                             {"unplug", Fault::Kind::Unplug},
                             {"flip", Fault::Kind::FlipBit}};
  const std::vector<std::string_view> parts = core::base::Split(value, ":");
  if (parts.size() != 2) return false;
  const auto name =
      std::find_if(std::begin(kNames), std::end(kNames), [&](const Name& known) { return known.text == parts[0]; });
  const auto number = WholeNumber<std::uint64_t>(parts[1], 10);
  if (name == std::end(kNames) || number.value_or(0) == 0) return false;
  options.faults.push_back({name->kind, *number});
  return true;
}

struct Key {
  std::string_view name;
  bool (*set)(BoardOptions& options, std::string_view value);
  std::string_view allowed;
  bool repeats = false;
};

constexpr Key kKeys[] = {
    {"id", SetId, "a decimal number from 0 to 65535"},
    {"serial", SetSerial, "8 hexadecimal digits"},
    {"dir", SetDir, "the path of a folder, without commas"},
    {"erase", SetErase, "seconds from 0 to 86400, as in 2 or 0.5"},
    {"wire", SetWire, "\"none\" or \"usb\""},
    {"fault", AddFault, "write:N, read:N, unplug:N or flip:N with a number N from 1", true},
    {"motion", SetMotion, "the path of a file with movements, without commas"},
};

core::base::Failure NotValid(std::string text) { return {core::base::FailureKind::NotValid, std::move(text)}; }

}  // namespace

core::base::Result<BoardOptions> BoardOptions::Parse(std::string_view text) {
  BoardOptions options;
  if (text.empty()) return options;
  std::set<std::string_view> seen;
  for (const std::string_view item : core::base::Split(text, ",")) {
    const std::size_t equals = std::min(item.find('='), item.size());
    const std::string_view name = item.substr(0, equals);
    const auto key = std::find_if(std::begin(kKeys), std::end(kKeys), [name](const Key& k) { return k.name == name; });
    if (key == std::end(kKeys)) {
      std::string problem = "The simulated board has no key " + core::base::Quoted(name) + ": allowed are";
      for (const Key& known : kKeys) problem += (&known == kKeys ? " " : ", ") + std::string(known.name);
      return NotValid(problem);
    }
    const std::string where = "The simulated board's key " + core::base::Quoted(name);
    if (equals == item.size()) return NotValid(where + " needs a value: " + std::string(key->allowed));
    if (!seen.insert(name).second && !key->repeats) return NotValid(where + " is given twice: it may stand once");
    const std::string_view value = item.substr(equals + 1);
    if (!key->set(options, value))
      return NotValid(core::base::Quoted(value) + " is no value for the simulated board's key " +
                      core::base::Quoted(name) + ": allowed is " + std::string(key->allowed));
  }
  return options;
}

BoardState BoardOptions::Applied(BoardState state) const {
  state.id = id.value_or(state.id);
  state.serial = serial.value_or(state.serial);
  return state;
}

}  // namespace kestrin::simulator
