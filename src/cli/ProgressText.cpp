// SPDX-License-Identifier: MIT
#include "cli/ProgressText.h"

#include <algorithm>

#include "core/base/Text.h"
#include "core/base/TimeLeft.h"

namespace kestrin::cli {

namespace {

constexpr std::size_t kWidestBar = 30;
constexpr std::size_t kNarrowestBar = 10;
/// Bars stand under each other as long as the phases' names are no longer than this.
constexpr std::size_t kPhaseWidth = 24;
/// " [" and "] ".
constexpr std::size_t kBarEnds = 4;

std::string Bar(int percent, std::size_t width) {
  const std::size_t full = static_cast<std::size_t>(percent) * width / 100;
  return " [" + std::string(full, '#') + std::string(width - full, '-') + "] ";
}

}  // namespace

std::string ProgressText(const Progress& progress, std::size_t columns) {
  // In the last column many terminals break the line already.
  const std::size_t room = columns - std::min<std::size_t>(columns, 1);
  const std::string& phase = progress.phase;
  if (!progress.percent) return std::string(core::base::FirstCharacters(phase, room));

  const std::string digits = std::to_string(*progress.percent);
  const std::string number = std::string(3 - std::min<std::size_t>(digits.size(), 3), ' ') + digits + " %";
  const std::string time =
      progress.secondsLeft ? "  " + core::base::MinutesAndSeconds(*progress.secondsLeft) + " left" : std::string();
  const std::size_t width = core::base::Width(phase);
  const std::size_t beside = std::max(width, kPhaseWidth) + kBarEnds + number.size() + time.size();
  if (beside + kNarrowestBar <= room) {
    const std::string gap(std::max(width, kPhaseWidth) - width, ' ');
    return phase + gap + Bar(*progress.percent, std::min(room - beside, kWidestBar)) + number + time;
  }
  for (const std::string& rest : {" " + number + time, " " + number})
    if (width + rest.size() <= room) return phase + rest;
  const std::size_t left = room - std::min(room, number.size() + 1);
  return std::string(
      core::base::FirstCharacters(std::string(core::base::FirstCharacters(phase, left)) + " " + number, room));
}

}  // namespace kestrin::cli
