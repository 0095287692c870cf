#pragma once

#include <QString>
#include <cstddef>
#include <string>

namespace kestrin::ui::window {

/// Why buttons of the tool row cannot be used, in words for their tool tips; "" where they can.
struct WhyNot {
  /// Something goes on that needs set and board as they are.
  bool isRunning = false;
  /// The page of the sounds is seen, or is as soon as a set is opened.
  bool isSetSeen = true;
  bool setFits = true;
  /// A sound board that can be used is online.
  bool hasSoundBoard = false;
  std::size_t boards = 0;
  bool isLedDriver = false;
  /// The board is still at work on what an earlier run began.
  bool isFinishing = false;
  /// Why a board that is there cannot be opened.
  std::string accessProblem;

  /// What opens and saves the set.
  [[nodiscard]] QString Set() const;
  /// What needs a sound board.
  [[nodiscard]] QString Board() const;
  /// The download, which needs both.
  [[nodiscard]] QString Send() const;
};

}  // namespace kestrin::ui::window
