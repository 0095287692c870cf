// SPDX-License-Identifier: MIT
#include "sound/import/SlotGuess.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <string_view>
#include <tuple>

#include "base/NaturalOrder.h"
#include "base/Text.h"
#include "sound/import/SlotWords.h"

namespace kestrin::core::sound {

namespace {

constexpr double kEndless = std::numeric_limits<double>::infinity();

/// How long the sounds of a slot usually play, in seconds. One that is shorter or longer may be meant for something
/// else.
struct UsualLength {
  SlotKind kind;
  double least;
  double most;
};
constexpr std::array kUsualLengths{
    UsualLength{SlotKind::Boot, 0, 20},       UsualLength{SlotKind::PwrOn, 0, 10}, UsualLength{SlotKind::PwrOff, 0, 10},
    UsualLength{SlotKind::Idle, 1, kEndless}, UsualLength{SlotKind::Motion, 0, 6}, UsualLength{SlotKind::Impact, 0, 6},
    UsualLength{SlotKind::Lockup, 0.3, 30},
};

/// What a sound whose name says nothing may be by its length: up to so many seconds.
struct LengthHint {
  double upTo;
  SlotKind kind;
};
constexpr std::array kLengthHints{LengthHint{0.8, SlotKind::Impact}, LengthHint{2.0, SlotKind::Motion}};

bool IsUsual(SlotKind kind, double seconds) {
  if (seconds <= 0) return true;
  const auto usual = std::find_if(kUsualLengths.begin(), kUsualLengths.end(),
                                  [kind](const UsualLength& length) { return length.kind == kind; });
  return seconds >= usual->least && seconds <= usual->most;
}

/// What the name says; where it says nothing the folder that it lies in, and so on outwards.
std::optional<SlotWords::Meaning> MeaningOf(std::string_view name) {
  const std::string last = base::LastPathPiece(name);
  std::string_view folders = name.substr(0, name.size() - last.size());
  // Its ending is no word of it.
  const std::size_t dot = last.rfind('.');
  if (const auto meaning = SlotWords::MeaningOf(std::string_view(last).substr(0, dot == 0 ? last.npos : dot)))
    return meaning;
  while (!folders.empty()) {
    folders.remove_suffix(1);
    const std::size_t end = folders.find_last_of("/\\");
    const std::size_t begin = end == folders.npos ? 0 : end + 1;
    if (const auto meaning = SlotWords::MeaningOf(folders.substr(begin))) return meaning;
    folders = folders.substr(0, begin);
  }
  return std::nullopt;
}

SlotGuess Guess(const NamedSound& sound) {
  if (const auto meaning = MeaningOf(sound.name)) {
    const bool isClear = meaning->weight != SlotWords::Weight::Hint && !meaning->isDoubtful;
    if (!meaning->slot) return {std::nullopt, isClear, false};
    return {meaning->slot, isClear && IsUsual(*meaning->slot, sound.seconds), false};
  }
  if (sound.seconds <= 0) return {};
  const auto hint = std::find_if(kLengthHints.begin(), kLengthHints.end(),
                                 [&sound](const LengthHint& length) { return sound.seconds <= length.upTo; });
  return hint == kLengthHints.end() ? SlotGuess() : SlotGuess{hint->kind, false, false};
}

}  // namespace

std::vector<SlotGuess> SlotGuess::Of(const std::vector<NamedSound>& sounds, const SlotRoom& room) {
  std::vector<SlotGuess> guesses(sounds.size());
  std::transform(sounds.begin(), sounds.end(), guesses.begin(), Guess);
  for (std::size_t place = 0; place < kSlots.size(); ++place) {
    const SlotKind kind = kSlots[place].kind;
    std::vector<std::size_t> meant;
    for (std::size_t i = 0; i < guesses.size(); ++i)
      if (guesses[i].slot == kind) meant.push_back(i);
    std::stable_sort(meant.begin(), meant.end(), [&](std::size_t a, std::size_t b) {
      if (guesses[a].isSure != guesses[b].isSure) return guesses[a].isSure;
      if (kind == SlotKind::Idle && sounds[a].seconds != sounds[b].seconds)
        return sounds[a].seconds > sounds[b].seconds;
      return base::NaturallyBefore(sounds[a].name, sounds[b].name);
    });
    const auto fitting = static_cast<std::size_t>(std::max(room[place], 0));
    for (std::size_t i = fitting; i < meant.size(); ++i) guesses[meant[i]].isLeftOut = true;
  }
  return guesses;
}

std::vector<std::size_t> SlotGuess::Order(const std::vector<NamedSound>& sounds,
                                          const std::vector<SlotGuess>& guesses) {
  // Which part of the list a sound stands in, and which slot's turn it is there.
  const auto placeOf = [&guesses](std::size_t sound) {
    const SlotGuess& guess = guesses[sound];
    if (!guess.slot) return std::tuple(2, std::size_t{0});
    const auto found =
        std::find_if(kSlots.begin(), kSlots.end(), [&guess](const Slot& one) { return one.kind == *guess.slot; });
    return std::tuple(guess.isSure ? 0 : 1, static_cast<std::size_t>(found - kSlots.begin()));
  };
  std::vector<std::size_t> order(sounds.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    if (placeOf(a) != placeOf(b)) return placeOf(a) < placeOf(b);
    return base::NaturallyBefore(sounds[a].name, sounds[b].name);
  });
  return order;
}

}  // namespace kestrin::core::sound
