// SPDX-License-Identifier: MIT
#include "sound/board/HoldingText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>

#include "sound/LSU_SoundFile.h"

namespace kestrin::core::sound {

namespace {

/// "a", "a and b", "a, b and c".
std::string Enumerated(const std::vector<std::string>& words) {
  std::string text;
  for (std::size_t i = 0; i < words.size(); ++i)
    text += (i == 0 ? "" : i + 1 == words.size() ? " and " : ", ") + words[i];
  return text;
}

std::string InLowerCase(std::string_view title) {
  std::string text(title);
  std::ranges::transform(text, text.begin(),
                         [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return text;
}

std::string SecondsText(double seconds) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.1f s", seconds);
  return text.data();
}

}  // namespace

std::string HoldingText::NameOf(const SoundPlace& place) {
  const Slot& slot = SlotOf(place.kind);
  return std::string(slot.title) + (slot.isList ? " " + std::to_string(place.position) : "");
}

std::string HoldingText::Of(const std::string& set, const std::vector<SetDifference>& differences, std::size_t most) {
  if (differences.empty()) return set;
  std::vector<std::string> words;
  for (const SetDifference& difference : differences) {
    if (words.size() == most) break;
    words.push_back(NameOf(difference.place));
  }
  if (differences.size() > words.size()) words.push_back(std::to_string(differences.size() - words.size()) + " more");
  return set + ", but " + Enumerated(words) + (differences.size() == 1 ? " differs" : " differ");
}

std::string HoldingText::Of(const std::vector<FlashSound>& sounds) {
  if (sounds.empty()) return "Nothing yet: its memory is empty";
  std::string text = "A set this computer does not know: ";
  for (const Slot& slot : kSlots) {
    if (!slot.isList) continue;
    const auto count =
        std::ranges::count_if(sounds, [&](const FlashSound& one) { return one.place.kind == slot.kind; });
    text += std::to_string(count) + " " + InLowerCase(slot.title) + (count == 1 ? " sound, " : " sounds, ");
  }
  std::int64_t bytes = 0;
  for (const FlashSound& sound : sounds) bytes += sound.length;
  // Three bytes hold two samples.
  return text + SecondsText(static_cast<double>(bytes) * 2 / 3 / LSU_SoundFile::kSamplesPerSecond) + " in all";
}

}  // namespace kestrin::core::sound
