// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <optional>

#include "core/sound/SlotKind.h"
#include "core/sound/import/ImportedSound.h"

namespace kestrin::ui::imports {

/// A sound of the import sheet.
struct ImportRow {
  enum class State {
    Waiting,  ///< it is being made ready, or will be
    Ready,
    Failed,
  };

  /// Tells rows apart, wherever they move.
  int id = 0;
  core::sound::ImportSource source;
  /// Its name with the folders that it lies in, as far as the person has named them.
  std::string name;
  State state = State::Waiting;
  /// Of the last time that it was made ready.
  core::sound::ImportedSound result;
  /// What `result` was made with.
  core::sound::ImportOptions madeWith;
  /// Nothing: it goes into the folder only.
  std::optional<core::sound::SlotKind> slot;
  /// Whether the slot was chosen by the person, or is a good guess.
  bool isSure = false;
  bool isTicked = true;
  /// The person has chosen the slot, so it is guessed no more; and the same for the tick.
  bool isSlotChosen = false;
  bool isTickChosen = false;

  /// Whether it is imported as things stand.
  [[nodiscard]] bool IsComing() const { return isTicked && state != State::Failed; }
  /// It is a sound for the board already and is taken where it lies.
  [[nodiscard]] bool IsTakenAsItIs() const { return state == State::Ready && result.path == source.file; }
};

}  // namespace kestrin::ui::imports
