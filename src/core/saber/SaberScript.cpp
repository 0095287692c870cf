// SPDX-License-Identifier: MIT
#include "saber/SaberScript.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include "base/Text.h"
#include "sound/LSU_SoundFile.h"

namespace kestrin::core::saber {

namespace {

/// What a word of a script stands for.
struct Word {
  std::string_view name;
  std::optional<Event> event;
  std::optional<Event> end;
  bool hasSeconds;
};
constexpr std::array<Word, 7> kWords{{
    {"boot", Event::Boot, std::nullopt, false},
    {"on", Event::On, std::nullopt, false},
    {"off", Event::Off, std::nullopt, false},
    {"swing", Event::Swing, std::nullopt, false},
    {"hit", Event::Hit, std::nullopt, false},
    {"lockup", Event::LockupBegin, Event::LockupEnd, true},
    {"wait", std::nullopt, std::nullopt, true},
}};

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Seconds as samples; nothing for what is no number from 0 to kLongest.
std::optional<std::int64_t> SamplesOf(std::string_view text) {
  double seconds = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if (!(seconds >= 0 && seconds <= SaberScript::kLongest)) return std::nullopt;
  return std::llround(seconds * sound::LSU_SoundFile::kSamplesPerSecond);
}

base::Failure NoStep(std::string_view step) {
  return {base::FailureKind::NotValid,
          base::Quoted(step) +
              " is no step. Write boot, on, off, swing, hit, \"lockup SECONDS\" or \"wait SECONDS\" (up to 600), with "
              "\";\" between them."};
}

}  // namespace

base::Result<SaberScript> SaberScript::Read(std::string_view text) {
  SaberScript script;
  while (!text.empty()) {
    const std::size_t length = std::min(text.find(';'), text.size());
    const std::string_view step = Trimmed(text.substr(0, length));
    text.remove_prefix(std::min(length + 1, text.size()));
    if (step.empty()) continue;
    const std::string_view name = step.substr(0, step.find_first_of(kBlanks));
    const std::string_view rest = Trimmed(step.substr(name.size()));
    const auto word = std::ranges::find(kWords, name, &Word::name);
    if (word == kWords.end() || word->hasSeconds == rest.empty()) return NoStep(step);
    Step made{word->event, word->end, std::nullopt};
    if (word->hasSeconds) {
      made.samples = SamplesOf(rest);
      if (!made.samples) return NoStep(step);
    }
    // A wait says how long the step before it lasts, unless that is said already.
    if (!made.event && !script.m_steps.empty() && !script.m_steps.back().samples)
      script.m_steps.back().samples = made.samples;
    else
      script.m_steps.push_back(made);
  }
  return script;
}

std::int64_t SaberScript::LeastSamples() const {
  std::int64_t sum = 0;
  for (const Step& step : m_steps) sum += step.samples.value_or(0);
  return sum;
}

void SaberScript::Perform(Saber& saber, const Take& take) const {
  constexpr std::int64_t kBlock = 4096;
  std::array<std::int16_t, kBlock> block{};
  // As long as `left` says, which is asked anew since one sound can follow from another. False when nobody takes more.
  const auto render = [&](const std::function<std::int64_t()>& left) {
    for (std::int64_t samples = left(); samples > 0; samples = left()) {
      const std::span part = std::span(block).first(static_cast<std::size_t>(std::min(samples, kBlock)));
      saber.Render(part);
      if (!take(part)) return false;
    }
    return true;
  };
  const auto remaining = [&saber] { return saber.Remaining(); };
  for (const Step& step : m_steps) {
    if (step.event) saber.Take(*step.event);
    const std::int64_t end = saber.Now() + step.samples.value_or(0);
    const bool goesOn = step.samples ? render([&saber, end] { return end - saber.Now(); }) : render(remaining);
    if (!goesOn) return;
    if (step.end) saber.Take(*step.end);
  }
  static_cast<void>(render(remaining));
}

}  // namespace kestrin::core::saber
