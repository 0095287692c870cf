// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>

#include "base/EventPump.h"
#include "sound/LSU_SoundFile.h"

namespace kestrin::core::sound {

/// A sound that a person wants to hear or to see: as its file holds it, or as a board plays it.
struct HeardSound {
  /// Its file; empty: no sound.
  std::filesystem::path path;
  /// As a board plays it, see BoardSound.
  bool asOnBoard = false;
  /// The sound of a set that the file is, with the peak and the volume of its place; nothing for a file that is in no
  /// slot. Counts only as on the board.
  std::optional<LSU_SoundFile> placed = {};

  /// The sound of the set, or else the file, measured and at 100 %. Nothing when it is no sound. When `pump` throws,
  /// there is no result.
  [[nodiscard]] std::optional<LSU_SoundFile> Measured(const base::EventPump& pump = {}) const;

  /// Whether they sound the same as long as their files stay as they are.
  friend bool operator==(const HeardSound& a, const HeardSound& b);
};

}  // namespace kestrin::core::sound
