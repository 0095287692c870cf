// SPDX-License-Identifier: MIT
#include "simulator/MotionScript.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
#include <optional>
#include <utility>

#include "core/base/Numbers.h"
#include "core/base/Text.h"

namespace kestrin::simulator {

namespace {

constexpr std::int32_t kMostTilt = 255;
constexpr std::int32_t kLongestRest = 3600;
constexpr std::size_t kMostSteps = std::size_t{24} * 3600 * 1000 / MotionScript::kStepMilliseconds;
/// Each half of a swing: a third of a second, with one step at its very height.
constexpr int kSwingSteps = 9;
/// How much weaker a swing is stopped than it is begun.
constexpr double kStopping = -0.6;
/// What is left of a tap from step to step.
constexpr std::array kShaking{1.0, -0.5, 0.25, -0.125};

std::vector<std::string_view> Words(std::string_view line) {
  line = line.substr(0, line.find('#'));
  std::vector<std::string_view> words;
  while (true) {
    const std::size_t begin = line.find_first_not_of(" \t");
    if (begin == line.npos) return words;
    line.remove_prefix(begin);
    words.push_back(line.substr(0, line.find_first_of(" \t")));
    line.remove_prefix(words.back().size());
  }
}

std::optional<std::int32_t> WholeFrom(std::string_view word, std::int32_t least, std::int32_t most) {
  std::int32_t number = 0;
  const char* const end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, number);
  if (error != std::errc() || stop != end || number < least || number > most) return std::nullopt;
  return number;
}

/// The force of "swing FORCE" or "tap FORCE".
std::optional<std::int32_t> ForceOf(const std::vector<std::string_view>& words) {
  return words.size() == 2 ? WholeFrom(words[1], 1, kStrongest) : std::nullopt;
}

std::string NeedsForce(std::string_view movement) {
  return "\"" + std::string(movement) + "\" needs one whole number from 1 to 31: its force.";
}

}  // namespace

core::base::Result<MotionScript> MotionScript::Read(const std::filesystem::path& file) {
  core::base::TextLines lines;
  if (const core::base::Result<> read = lines.Read(file); !read) return read.Why();
  return Parse(lines);
}

core::base::Result<MotionScript> MotionScript::Parse(std::string_view text, std::string name) {
  core::base::TextLines lines;
  if (const core::base::Result<> taken = lines.Take(text, std::move(name)); !taken) return taken.Why();
  return Parse(lines);
}

core::base::Result<MotionScript> MotionScript::Parse(const core::base::TextLines& lines) {
  MotionScript script;
  for (std::size_t number = 1; number <= lines.Count(); ++number) {
    const std::vector<std::string_view> words = Words(lines.Line(number));
    if (words.empty()) continue;
    std::string problem = script.Take(words);
    if (problem.empty() && script.m_values.size() > kMostSteps)
      problem = "all until here is longer than a day. Write less, with \"repeat\" at the end.";
    if (!problem.empty())
      return core::base::Failure{core::base::FailureKind::NotValid, lines.Place(number) + ": " + problem};
  }
  return script;
}

std::string MotionScript::Take(const std::vector<std::string_view>& words) {
  struct Line {
    std::string_view name;
    std::string (MotionScript::*take)(const std::vector<std::string_view>&);
  };
  constexpr Line kLines[] = {{"at", &MotionScript::Hold},
                             {"rest", &MotionScript::Rest},
                             {"swing", &MotionScript::Swing},
                             {"tap", &MotionScript::Tap},
                             {"repeat", &MotionScript::Repeat}};
  if (m_repeats) return "nothing follows \"repeat\".";
  for (const Line& line : kLines)
    if (line.name == words[0]) return (this->*line.take)(words);
  return core::base::Quoted(words[0]) + " is no movement. Allowed are at, rest, swing, tap and repeat.";
}

std::string MotionScript::Hold(const std::vector<std::string_view>& words) {
  constexpr const char* kProblem =
      "\"at\" needs three whole numbers from -31 to 31, for x, y and z, and may have a fourth from 0 to 255, the tilt.";
  if (words.size() < 4 || words.size() > 5) return kProblem;
  const auto x = WholeFrom(words[1], -kStrongest, kStrongest);
  const auto y = WholeFrom(words[2], -kStrongest, kStrongest);
  const auto z = WholeFrom(words[3], -kStrongest, kStrongest);
  const auto tilt = words.size() == 5 ? WholeFrom(words[4], 0, kMostTilt) : m_held.tilt;
  if (!x || !y || !z || !tilt) return kProblem;
  m_held = {*x, *y, *z, *tilt};
  return "";
}

std::string MotionScript::Rest(const std::vector<std::string_view>& words) {
  constexpr const char* kProblem = "\"rest\" needs seconds from 0 to 3600, as in 2 or 0.5.";
  const auto isPlain = [](char c) { return (c >= '0' && c <= '9') || c == '.'; };
  if (words.size() != 2 || !std::ranges::all_of(words[1], isPlain) || std::ranges::count(words[1], '.') > 1 ||
      !std::ranges::any_of(words[1], [](char c) { return c != '.'; }))
    return kProblem;
  const double seconds = core::base::LeadingNumber(words[1]);
  if (seconds > kLongestRest) return kProblem;
  const auto steps = core::base::RoundTo<std::int32_t>(seconds * 1000 / kStepMilliseconds);
  for (std::int32_t step = 0; step < steps; ++step) Feel(0, 0, 0);
  return "";
}

std::string MotionScript::Swing(const std::vector<std::string_view>& words) {
  const auto force = ForceOf(words);
  if (!force) return NeedsForce(words[0]);
  for (const double strength : {1.0, kStopping})
    for (int step = 1; step <= kSwingSteps; ++step) {
      const double felt = *force * strength * std::sin(std::numbers::pi * step / (kSwingSteps + 1));
      Feel(felt, -0.5 * felt, -0.3 * felt);
    }
  return "";
}

std::string MotionScript::Tap(const std::vector<std::string_view>& words) {
  const auto force = ForceOf(words);
  if (!force) return NeedsForce(words[0]);
  for (const double left : kShaking) Feel(0.3 * left * *force, left * *force, -0.6 * left * *force);
  return "";
}

std::string MotionScript::Repeat(const std::vector<std::string_view>& words) {
  if (words.size() > 1) return "\"repeat\" stands alone.";
  if (m_values.empty()) return "there is nothing to repeat before this line.";
  m_repeats = true;
  return "";
}

void MotionScript::Feel(double x, double y, double z) {
  const auto felt = [](std::int32_t held, double force) {
    return std::clamp(held + core::base::RoundTo<std::int32_t>(force), -kStrongest, kStrongest);
  };
  m_values.push_back({felt(m_held.x, x), felt(m_held.y, y), felt(m_held.z, z), m_held.tilt});
}

SensorValues MotionScript::Next() {
  if (m_next == m_values.size()) {
    if (!m_repeats) return m_held;
    m_next = 0;
  }
  return m_values[m_next++];
}

}  // namespace kestrin::simulator
