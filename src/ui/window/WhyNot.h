// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>

#include "core/device/SessionState.h"
#include "ui/window/ToolRow.h"

namespace kestrin::ui::window {

/// Why buttons of the tool row cannot be used, in words for their tool tips; "" where they can. The one place that
/// knows which button needs what.
struct WhyNot {
  Q_DECLARE_TR_FUNCTIONS(kestrin::ui::window::WhyNot)

 public:
  core::device::SessionState session;
  /// Something goes on that needs set and board as they are.
  bool isRunning = false;
  /// The page of the sounds is seen, or is as soon as a set is opened.
  bool isSetSeen = true;
  bool setFits = true;
  /// This build fetches sounds from the Internet.
  bool hasUpdate = true;

  [[nodiscard]] QString Of(ToolRow::Tool tool) const;
  /// Of the connection doctor.
  [[nodiscard]] QString Doctor() const;

 private:
  /// What opens and saves the set.
  [[nodiscard]] QString Set() const;
  /// What needs a sound board.
  [[nodiscard]] QString Board() const;
};

}  // namespace kestrin::ui::window
