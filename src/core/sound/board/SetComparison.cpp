// SPDX-License-Identifier: MIT
#include "sound/board/SetComparison.h"

#include <algorithm>
#include <optional>
#include <span>
#include <system_error>
#include <utility>

#include "sound/SampleReader.h"

namespace kestrin::core::sound {

namespace {

bool HaveTheSameSamples(const LSU_SoundFile& first, const LSU_SoundFile& second) {
  if (first.NrOfSamples() != second.NrOfSamples()) return false;
  std::error_code error;
  if (std::filesystem::equivalent(first.FileNameAndPath(), second.FileNameAndPath(), error)) return true;
  SampleReader one(first.FileNameAndPath());
  SampleReader other(second.FileNameAndPath());
  for (;;) {
    const std::span<const std::int16_t> samples = one.Next();
    if (!std::ranges::equal(samples, other.Next())) return false;
    if (samples.empty()) return one.GetState() == SampleReader::State::Good && other.GetState() == one.GetState();
  }
}

std::optional<Differs> Compare(const LSU_SoundFile& first, const LSU_SoundFile& second) {
  if (!HaveTheSameSamples(first, second)) return Differs::Sound;
  if (first.Volume() != second.Volume()) return Differs::Volume;
  return std::nullopt;
}

const FlashSound* SoundAt(const std::vector<FlashSound>& sounds, const SoundPlace& place) {
  const auto found = std::ranges::find(sounds, place, &FlashSound::place);
  return found == sounds.end() ? nullptr : &*found;
}

/// Every place that either of two sets uses: `count` gives the sounds of a slot in each.
template <typename Counts>
std::vector<std::pair<SoundPlace, std::pair<bool, bool>>> PlacesOf(const Counts& count) {
  std::vector<std::pair<SoundPlace, std::pair<bool, bool>>> places;
  for (const Slot& slot : kSlots) {
    const auto [first, second] = count(slot.kind);
    for (int position = 1; position <= std::max(first, second); ++position)
      places.push_back({{slot.kind, position}, {position <= first, position <= second}});
  }
  return places;
}

}  // namespace

std::vector<SetDifference> SetComparison::Of(const LSU_Configuration& first, const LSU_Configuration& second,
                                             const base::EventPump& pump) {
  std::vector<SetDifference> differences;
  const auto counts = [&](SlotKind kind) { return std::pair(first.Count(kind), second.Count(kind)); };
  for (const auto& [place, in] : PlacesOf(counts)) {
    std::optional<Differs> kind;
    if (in.first && in.second)
      kind = Compare(first.FileAt(place.kind, place.position), second.FileAt(place.kind, place.position));
    else
      kind = in.first ? Differs::OnlyInFirst : Differs::OnlyInSecond;
    if (kind) differences.push_back({place, *kind});
    base::Pump(pump);
  }
  return differences;
}

base::Result<std::vector<SetDifference>> SetComparison::WithBoard(LSU_Configuration& set,
                                                                  const std::vector<FlashSound>& board,
                                                                  BoardInquiry& inquiry) {
  std::vector<SetDifference> differences;
  const auto counts = [&](SlotKind kind) {
    const auto onBoard = std::ranges::count_if(board, [&](const FlashSound& one) { return one.place.kind == kind; });
    return std::pair(set.Count(kind), static_cast<int>(onBoard));
  };
  for (const auto& [place, in] : PlacesOf(counts)) {
    if (!in.first || !in.second) {
      differences.push_back({place, in.first ? Differs::OnlyInFirst : Differs::OnlyInSecond});
      continue;
    }
    const LSU_SoundFile& file = set.FileAt(place.kind, place.position);
    const FlashSound& sound = *SoundAt(board, place);
    if (file.NrOfBytes() == sound.length && file.GetFileCRC() == sound.checksum) continue;
    const base::Result<std::optional<std::int16_t>> volume = inquiry.VolumeOf(file, sound);
    if (!volume) return volume.Why();
    differences.push_back({place, *volume ? Differs::Volume : Differs::Sound});
  }
  return differences;
}

std::string_view SetComparison::NameOf(Differs kind) {
  switch (kind) {
    case Differs::Volume:
      return "volume";
    case Differs::Sound:
      break;
    case Differs::OnlyInFirst:
      return "only-a";
    case Differs::OnlyInSecond:
      return "only-b";
  }
  return "sound";
}

}  // namespace kestrin::core::sound
