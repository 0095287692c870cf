// SPDX-License-Identifier: MIT
#include "rig/kernel/board/BoardPlan.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>

#include "core/base/Text.h"

namespace kestrin::rig {

namespace {

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;

std::optional<std::uint64_t> WholeNumber(std::string_view text, int numberBase = 10) {
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, numberBase);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

bool SetFirmware(BoardPlan& plan, std::string_view value) {
  auto parsed = simulator::BoardOptions::Parse(value);
  if (parsed) plan.firmware = *std::move(parsed);
  return static_cast<bool>(parsed);
}

bool SetKind(BoardPlan& plan, std::string_view value) {
  struct Name {
    std::string_view text;
    BoardPlan::Kind kind;
  };
  constexpr Name kNames[] = {{"plain", BoardPlan::Kind::Plain},
                             {"numbered", BoardPlan::Kind::Numbered},
                             {"mouse", BoardPlan::Kind::Mouse},
                             {"other", BoardPlan::Kind::OtherReports}};
  const auto name = std::find_if(std::begin(kNames), std::end(kNames), [&](const Name& n) { return n.text == value; });
  if (name != std::end(kNames)) plan.kind = name->kind;
  return name != std::end(kNames);
}

template <std::uint16_t BoardPlan::*Field>
bool SetId(BoardPlan& plan, std::string_view value) {
  const auto number = WholeNumber(value, 16);
  plan.*Field = static_cast<std::uint16_t>(number.value_or(0));
  return number.value_or(0x10000) <= 0xFFFF;
}

template <std::string BoardPlan::*Field>
bool SetText(BoardPlan& plan, std::string_view value) {
  plan.*Field = value;
  return !value.empty();
}

template <std::uint64_t BoardPlan::*Field>
bool SetNumber(BoardPlan& plan, std::string_view value) {
  plan.*Field = WholeNumber(value).value_or(0);
  return plan.*Field != 0;
}

template <bool BoardPlan::*Field>
bool SetChoice(BoardPlan& plan, std::string_view value) {
  plan.*Field = value == "1";
  return value == "0" || value == "1";
}

bool SetDelay(BoardPlan& plan, std::string_view value) {
  const auto number = WholeNumber(value);
  plan.delay = std::chrono::milliseconds(number.value_or(0));
  return number.has_value();
}

bool SetMoments(BoardPlan& plan, std::string_view value) {
  for (const std::string_view part : core::base::Split(value, ",")) {
    const auto number = WholeNumber(part);
    if (!number) return false;
    plan.unplugAt.push_back(*number);
  }
  return true;
}

struct Key {
  std::string_view name;
  bool (*set)(BoardPlan& plan, std::string_view value);
};

constexpr Key kKeys[] = {{"board", SetFirmware},
                         {"kind", SetKind},
                         {"vid", SetId<&BoardPlan::vendorId>},
                         {"pid", SetId<&BoardPlan::productId>},
                         {"name", SetText<&BoardPlan::name>},
                         {"serial", SetText<&BoardPlan::serial>},
                         {"unplugat", SetMoments},
                         {"silentat", SetNumber<&BoardPlan::silentAt>},
                         {"holdat", SetNumber<&BoardPlan::holdAt>},
                         {"hangat", SetNumber<&BoardPlan::hangAt>},
                         {"delay", SetDelay},
                         {"flap", SetChoice<&BoardPlan::flaps>},
                         {"out", SetChoice<&BoardPlan::outEndpoint>},
                         {"late", SetChoice<&BoardPlan::late>}};

}  // namespace

Result<BoardPlan> BoardPlan::Parse(std::span<const std::string_view> words) {
  BoardPlan plan;
  for (const std::string_view word : words) {
    const std::size_t equals = std::min(word.find('='), word.size());
    const std::string_view name = word.substr(0, equals);
    const auto key = std::find_if(std::begin(kKeys), std::end(kKeys), [&](const Key& k) { return k.name == name; });
    if (key == std::end(kKeys) || equals == word.size() || !key->set(plan, word.substr(equals + 1)))
      return Failure{FailureKind::NotValid, "the board does not understand \"" + std::string(word) + "\""};
  }
  return plan;
}

}  // namespace kestrin::rig
