// SPDX-License-Identifier: MIT
#include "sound/level/LevelPlan.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/Numbers.h"
#include "base/PathText.h"

namespace kestrin::core::sound {

namespace {

constexpr std::int16_t kLowestVolume = 1;
/// Below this volume in percent a board has fewer than a hundred steps left for a sound: noise that can be heard.
constexpr std::int16_t kCoarse = 10;

double LoudnessAt(double percent) { return 20 * std::log10(percent / 100); }

/// "1.5", whatever the locale.
std::string Tenths(double number) {
  const int tenths = base::RoundTo<int>(number * 10);
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

std::string NameOf(const LevelledSound& sound) { return base::Quoted(base::LastPathPiece(base::TextOf(sound.path))); }

/// "Boot", in a list "Motion 2".
std::string TitleOf(const SoundPlace& place) {
  const Slot& slot = SlotOf(place.kind);
  return std::string(slot.title) + (slot.isList ? " " + std::to_string(place.position) : "");
}

std::string About(const LevelledSound& sound) { return NameOf(sound) + " (" + TitleOf(sound.place) + ")"; }

/// What keeps a sound from its share; "" when nothing does.
std::string Hindrance(const LevelledSound& sound) {
  const std::string keeps = "its volume stays " + std::to_string(sound.from) + " %";
  if (!sound.reason.empty()) return About(sound) + ": " + keeps + ". " + sound.reason;
  if (!sound.isMeasured) return About(sound) + " is too quiet to be measured: " + keeps + ". Set it by ear.";
  if (std::abs(sound.excess) <= LevelPlan::kTolerance) return {};
  return About(sound) + " stays " + Tenths(std::abs(sound.excess)) +
         (sound.excess > 0 ? " LU too loud at " : " LU too quiet at ") + std::to_string(sound.to) +
         (sound.to == kLowestVolume ? " %: there is no lower volume." : " %: volumes are whole percents.");
}

}  // namespace

LevelPlan LevelPlan::Of(const std::vector<MeasuredSound>& sounds, const Balance& balance) {
  double common = std::numeric_limits<double>::infinity();
  for (const MeasuredSound& sound : sounds)
    if (sound.lufs) common = std::min(common, *sound.lufs - balance.Of(sound.place.kind));

  LevelPlan plan;
  for (const MeasuredSound& sound : sounds) {
    LevelledSound levelled{sound.place, sound.path, sound.volume, sound.volume, sound.lufs.has_value(), sound.reason};
    if (sound.lufs) {
      const double share = common + balance.Of(sound.place.kind) - *sound.lufs;
      levelled.to = std::max(kLowestVolume, base::RoundTo<std::int16_t>(100 * std::pow(10, share / 20)));
      levelled.excess = LoudnessAt(levelled.to) - share;
    }
    plan.sounds.push_back(std::move(levelled));
  }
  return plan;
}

int LevelPlan::Changes() const {
  return static_cast<int>(
      std::count_if(sounds.begin(), sounds.end(), [](const LevelledSound& sound) { return sound.from != sound.to; }));
}

std::string LevelPlan::Headline() const {
  if (sounds.empty()) return "There are no sounds to level. Add some first.";
  const auto isMeasured = [](const LevelledSound& sound) { return sound.isMeasured; };
  if (std::none_of(sounds.begin(), sounds.end(), isMeasured))
    return "No volume was changed: no sound could be measured.";
  const int changes = Changes();
  if (changes == 0) return "The volumes are level already.";
  return "The volumes are level: " + std::to_string(changes) + " of " + std::to_string(sounds.size()) +
         (changes == 1 ? " has changed." : " have changed.");
}

std::vector<std::string> LevelPlan::OutOfReach() const {
  std::vector<std::string> texts;
  for (const LevelledSound& sound : sounds)
    if (std::string text = Hindrance(sound); !text.empty()) texts.push_back(std::move(text));

  const auto isCoarse = [](const LevelledSound& sound) { return sound.isMeasured && sound.to < kCoarse; };
  const auto isQuietest = [](const LevelledSound& sound) { return sound.isMeasured && sound.to == 100; };
  const auto quietest = std::find_if(sounds.begin(), sounds.end(), isQuietest);
  if (std::any_of(sounds.begin(), sounds.end(), isCoarse) && quietest != sounds.end())
    texts.push_back(About(*quietest) + " is much quieter than the others, which follow it down to below " +
                    std::to_string(kCoarse) +
                    " %, where a board is noisy. Use a denser sound in its place, or give "
                    "its slot a lower balance.");
  return texts;
}

}  // namespace kestrin::core::sound
