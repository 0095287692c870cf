// SPDX-License-Identifier: MIT
#include "sound/import/FitAdvice.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "base/Text.h"
#include "sound/LSU_SoundFile.h"

namespace kestrin::core::sound {

namespace {

constexpr std::int64_t kSecond = LSU_SoundFile::kSamplesPerSecond;
constexpr std::int64_t kTenthOfASecond = kSecond / 10;
/// What a sound is to keep that is to become shorter.
constexpr std::int64_t kShortest = kSecond;

/// What people call the sound of a single slot.
std::string_view NameOf(SlotKind kind) {
  switch (kind) {
    case SlotKind::Boot:
      return "the boot sound";
    case SlotKind::PwrOn:
      return "the power on sound";
    case SlotKind::PwrOff:
      return "the power off sound";
    default:
      return "the idle sound";
  }
}

/// "3.4 s", rounded up: what is told must be enough.
std::string Seconds(std::int64_t samples) {
  const std::int64_t tenths = (samples + kTenthOfASecond - 1) / kTenthOfASecond;
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " s";
}

/// A name that ends with a number, in two.
struct NumberedName {
  std::string beginning;
  std::string digits;

  explicit NumberedName(std::string_view name) {
    const std::size_t digit = name.find_last_not_of("0123456789");
    const std::size_t from = digit == name.npos ? 0 : digit + 1;
    beginning = name.substr(0, from);
    digits = name.substr(from);
  }
  /// Whether `next` is the same with the next number.
  [[nodiscard]] bool IsFollowedBy(const NumberedName& next) const {
    constexpr std::size_t kMostDigits = 9;
    if (digits.empty() || next.digits.empty() || digits.size() > kMostDigits || next.digits.size() > kMostDigits)
      return false;
    return beginning == next.beginning && std::stol(digits) + 1 == std::stol(next.digits);
  }
};

/// "swing7 to 9, clash4 and clash6".
std::string Listed(const std::vector<std::string>& names) {
  std::vector<std::string> parts;
  for (std::size_t first = 0, end = 0; first < names.size(); first = end) {
    for (end = first + 1; end < names.size() && NumberedName(names[end - 1]).IsFollowedBy(NumberedName(names[end]));
         ++end) {
    }
    parts.push_back(base::Shown(names[first]) + (end - first > 1 ? " to " + NumberedName(names[end - 1]).digits : ""));
  }
  std::string text;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) text += i + 1 < parts.size() ? ", " : " and ";
    text += parts[i];
  }
  return text;
}

std::string WithoutEnding(const std::string& name) {
  const std::string last = base::LastPathPiece(name);
  const std::size_t dot = last.rfind('.');
  return dot == 0 ? last : last.substr(0, dot);
}

/// The list whose last sound goes next: of those that have more than one the one that takes most. Nothing when there is
/// none.
std::optional<std::size_t> NextOfLists(const std::vector<ComingSound>& coming, const std::vector<bool>& isOut) {
  std::optional<std::size_t> next;
  std::int64_t most = 0;
  for (const Slot& slot : kSlots) {
    if (!slot.isList) continue;
    std::int64_t samples = 0;
    std::size_t last = 0;
    int count = 0;
    for (std::size_t i = 0; i < coming.size(); ++i) {
      if (coming[i].slot != slot.kind || isOut[i]) continue;
      samples += coming[i].samples;
      last = i;
      ++count;
    }
    if (count < 2 || samples <= most) continue;
    most = samples;
    next = last;
  }
  return next;
}

/// The longest sound that has a slot for itself.
std::optional<std::size_t> LongestSingle(const std::vector<ComingSound>& coming) {
  std::optional<std::size_t> longest;
  for (std::size_t i = 0; i < coming.size(); ++i)
    if (!SlotOf(coming[i].slot).isList && (!longest || coming[i].samples > coming[*longest].samples)) longest = i;
  return longest;
}

}  // namespace

FitAdvice FitAdvice::For(const std::vector<ComingSound>& coming, std::int64_t staying, std::int64_t capacity) {
  FitAdvice advice;
  std::int64_t total = staying;
  for (const ComingSound& sound : coming) total += sound.samples;
  if (total <= capacity) return advice;
  advice.excess = total - capacity;

  std::vector<bool> isOut(coming.size(), false);
  std::int64_t rest = advice.excess;
  while (rest > 0) {
    const std::optional<std::size_t> next = NextOfLists(coming, isOut);
    if (!next) break;
    isOut[*next] = true;
    rest -= coming[*next].samples;
  }
  // The shortest come last in a list as well: some may stay after all.
  for (std::size_t i = 0; i < coming.size(); ++i) {
    if (!isOut[i] || rest + coming[i].samples > 0) continue;
    isOut[i] = false;
    rest += coming[i].samples;
  }

  std::vector<std::string> names;
  for (std::size_t i = 0; i < coming.size(); ++i) {
    if (!isOut[i]) continue;
    advice.leaveOut.push_back(i);
    names.push_back(WithoutEnding(coming[i].name));
  }
  const std::optional<std::size_t> single = LongestSingle(coming);
  const auto shorten = [&](std::int64_t by) -> std::string {
    if (!single || coming[*single].samples - by < kShortest) return "";
    return "shorten " + std::string(NameOf(coming[*single].slot)) + " by " + Seconds(by);
  };
  std::vector<std::string> ways;
  if (rest <= 0) {
    ways.push_back("leave out " + Listed(names));
    if (const std::string shorter = shorten(advice.excess); !shorter.empty()) ways.push_back(shorter);
  } else if (const std::string shorter = shorten(advice.excess); !shorter.empty()) {
    advice.leaveOut.clear();
    ways.push_back(shorter);
  } else if (const std::string also = shorten(rest); !also.empty() && !names.empty()) {
    ways.push_back("leave out " + Listed(names) + " and " + also);
  } else {
    advice.leaveOut.clear();
    ways.emplace_back(staying > 0 ? "leave out more sounds, or take some out of the set" : "choose shorter sounds");
  }
  advice.text = Seconds(advice.excess) + " too much: " + ways.front();
  if (ways.size() > 1) advice.text += ", or " + ways.back();
  advice.text += ".";
  return advice;
}

}  // namespace kestrin::core::sound
