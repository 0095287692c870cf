// SPDX-License-Identifier: MIT
#include "sound/board/BoardComparison.h"

#include <algorithm>
#include <set>

namespace kestrin::core::sound {

namespace {

/// Samples in a stream of so many bytes; an odd one was filled up.
std::int32_t SamplesIn(std::int32_t bytes) { return static_cast<std::int32_t>(std::int64_t{bytes} * 2 / 3); }

bool IsLike(const SetSound& sound, const FlashSound& onBoard) {
  return sound.length == onBoard.length && sound.checksum == onBoard.checksum;
}

/// Whether the file is still there and what the set has of it. A set that a board has got may name files that have
/// changed or gone since.
bool IsStill(const SetSound& sound, KnownSounds& known, const base::EventPump& pump) {
  const std::optional<StreamSums> sums = known.SumsOf(sound.path, sound.volume, pump);
  return sums && sums->length == sound.length && sums->Whole() == sound.checksum;
}

/// What is looked through for one sound of a board.
class Search {
 public:
  Search(const FlashSound& onBoard, KnownSounds& known, const base::EventPump& pump)
      : m_onBoard(onBoard), m_known(known), m_pump(pump) {}

  /// The file at every volume.
  void Try(const std::filesystem::path& path) {
    if (!m_tried.insert(path).second || m_known.LengthOf(path, m_pump) != m_onBoard.length) return;
    for (std::int16_t volume = 1; volume <= StreamSums::kLoudest; ++volume)
      if (const auto sums = m_known.SumsOf(path, volume, m_pump); sums && sums->Whole() == m_onBoard.checksum)
        guesses.push_back({path, volume, sums});
  }

  std::vector<SoundGuess> guesses;

 private:
  const FlashSound& m_onBoard;
  KnownSounds& m_known;
  const base::EventPump& m_pump;
  std::set<std::filesystem::path> m_tried;
};

ComparedSound Compared(const LSU_Configuration& set, const SoundPlace& place) {
  const LSU_SoundFile& file = set.FileAt(place.kind, place.position);
  return {file.FileNameAndPath(), file.Volume(), file.NrOfSamples()};
}

}  // namespace

std::vector<std::vector<SoundGuess>> BoardComparison::Guess(const KnownSet& here, const std::vector<KnownSet>& sets,
                                                            const std::vector<FlashSound>& board, KnownSounds& known,
                                                            const base::EventPump& pump) {
  std::vector<const KnownSet*> all = {&here};
  for (const KnownSet& set : sets) all.push_back(&set);
  std::vector<std::vector<SoundGuess>> guesses;
  for (const FlashSound& onBoard : board) {
    const SetSound* const same = here.At(onBoard.place);
    if (same != nullptr && IsLike(*same, onBoard)) {
      guesses.push_back({{same->path, same->volume, {}}});
      continue;
    }
    Search search(onBoard, known, pump);
    if (same != nullptr) search.Try(same->path);
    const SetSound* elsewhere = nullptr;
    for (const KnownSet* const set : all)
      for (const SetSound& sound : set->sounds)
        if (elsewhere == nullptr && IsLike(sound, onBoard) && IsStill(sound, known, pump)) elsewhere = &sound;
    if (elsewhere != nullptr) {
      search.guesses.push_back({elsewhere->path, elsewhere->volume, {}});
    } else {
      for (const KnownSet* const set : all)
        for (const SetSound& sound : set->sounds)
          if (sound.length == onBoard.length) search.Try(sound.path);
    }
    guesses.push_back(std::move(search.guesses));
  }
  return guesses;
}

ComparedPlaces BoardComparison::WithBoard(const KnownSet& here, const std::vector<FlashSound>& board,
                                          const std::vector<std::optional<SoundGuess>>& found) {
  ComparedPlaces places;
  for (const Slot& slot : kSlots) {
    for (int position = 1; position <= (slot.isList ? kListCapacity : 1); ++position) {
      ComparedPlace place{{slot.kind, position}, {}, {}, {}};
      const SetSound* const mine = here.At(place.place);
      const auto onBoard = std::ranges::find(board, place.place, &FlashSound::place);
      if (mine != nullptr) place.here = {mine->path, mine->volume, SamplesIn(mine->length)};
      if (onBoard != board.end()) {
        const auto& guess = found.at(static_cast<std::size_t>(onBoard - board.begin()));
        place.there = {guess ? guess->path : std::filesystem::path(), {}, SamplesIn(onBoard->length)};
        if (guess) place.there->volume = guess->volume;
      }
      if (!place.here && !place.there) continue;
      if (!place.here || !place.there)
        place.differs = place.here ? Differs::OnlyInFirst : Differs::OnlyInSecond;
      else if (!IsLike(*mine, *onBoard))
        place.differs = place.there->path == place.here->path ? Differs::Volume : Differs::Sound;
      places.push_back(std::move(place));
    }
  }
  return places;
}

ComparedPlaces BoardComparison::WithSet(const LSU_Configuration& here, const LSU_Configuration& there,
                                        const base::EventPump& pump) {
  const std::vector<SetDifference> differences = SetComparison::Of(here, there, pump);
  ComparedPlaces places;
  for (const Slot& slot : kSlots) {
    for (int position = 1; position <= std::max(here.Count(slot.kind), there.Count(slot.kind)); ++position) {
      ComparedPlace place{{slot.kind, position}, {}, {}, {}};
      if (position <= here.Count(slot.kind)) place.here = Compared(here, place.place);
      if (position <= there.Count(slot.kind)) place.there = Compared(there, place.place);
      const auto difference = std::ranges::find(differences, place.place, &SetDifference::place);
      if (difference != differences.end()) place.differs = difference->kind;
      places.push_back(std::move(place));
    }
  }
  return places;
}

std::vector<SetDifference> BoardComparison::DifferencesIn(const ComparedPlaces& places) {
  std::vector<SetDifference> differences;
  for (const ComparedPlace& place : places)
    if (place.differs) differences.push_back({place.place, *place.differs});
  return differences;
}

}  // namespace kestrin::core::sound
