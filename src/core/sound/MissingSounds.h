// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "sound/SoundPlace.h"

namespace kestrin::core::sound {

/// A sound that a set names although its file could not be found or is not valid.
struct MissingSound {
  /// The row that stays for it.
  SoundPlace place;
  /// As the set's file has it.
  std::filesystem::path path;
  std::int16_t volume = 100;

  friend bool operator==(const MissingSound&, const MissingSound&) = default;
};

/// The missing sounds of a set. A configuration knows nothing of them: this keeps their rows among those of its sounds.
class MissingSounds {
 public:
  [[nodiscard]] const std::vector<MissingSound>& All() const { return m_sounds; }
  [[nodiscard]] bool IsEmpty() const { return m_sounds.empty(); }
  [[nodiscard]] int Count(SlotKind kind) const;
  /// The missing sound in that row; nullptr when none is.
  [[nodiscard]] const MissingSound* At(const SoundPlace& place) const;
  /// How many of them stand in the rows above.
  [[nodiscard]] int Above(const SoundPlace& place) const;

  /// The row in which this one's sound is missing from now on; there must be none yet.
  void Put(MissingSound sound);
  /// The row, should a sound be missing there, holds one from now on.
  void Take(const SoundPlace& place);
  /// A row comes in between: the ones from there on move down.
  void OpenRow(const SoundPlace& place);
  /// The row goes, with what is missing there: the ones below move up.
  void CloseRow(const SoundPlace& place);
  /// A row moves to another place of its list; those in between close up.
  void MoveRow(SlotKind kind, int from, int to);
  /// The slot has no missing sounds any more.
  void Forget(SlotKind kind);

  friend bool operator==(const MissingSounds&, const MissingSounds&) = default;

 private:
  /// By slot and row, so that two that hold the same are equal.
  std::vector<MissingSound> m_sounds;
};

}  // namespace kestrin::core::sound
