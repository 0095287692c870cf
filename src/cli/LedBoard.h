// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

#include "cli/ConsoleLedSetupView.h"
#include "cli/OnlineBoard.h"
#include "cli/Report.h"
#include "core/ledsetup/LedSetup.h"

namespace kestrin::cli {

/// The chosen LED driver with its setup.
class LedBoard {
 public:
  /// Throws CommandFailure when there is no board or it is a sound board.
  explicit LedBoard(Context& context);

  [[nodiscard]] core::ledsetup::LedSetup& Setup() { return m_setup; }

  /// Reads the catalogue and what the board is set to. Throws CommandFailure when that fails.
  void Read();
  /// Throws CommandFailure when the board has failed a command; `what` is what it did not confirm.
  void RequireConfirmed(const std::string& what) const;
  /// What the board holds, as `led status` prints it. Read() first.
  [[nodiscard]] Report Status() const;

 private:
  OnlineBoard m_online;
  ConsoleLedSetupView m_view;
  core::ledsetup::LedSetup m_setup;
};

}  // namespace kestrin::cli
