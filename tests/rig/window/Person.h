// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "rig/window/AccessibilityBus.h"

struct _XDisplay;

namespace kestrin::rig {

/// Somebody in front of a screen, with mouse and keyboard. What they do arrives at the programs as from real devices.
class Person {
 public:
  /// Sits down at the screen of that name; throws when there is none.
  explicit Person(const std::string& display);

  /// The title of the window that is in front at that place; "" for none.
  [[nodiscard]] std::string WindowAt(Spot spot) const;

  void Click(Spot spot, int times = 1) const;
  /// Presses keys by their names ("Control_L", "s", "Return"), one after the other without letting go of them before.
  void Press(const std::vector<std::string>& keys) const;
  void Type(const std::string& text) const;
  /// Asks the window at that place to close, as its title bar's button does.
  void CloseWindowAt(Spot spot) const;

 private:
  struct Closer {
    void operator()(_XDisplay* display) const;
  };

  [[nodiscard]] unsigned long TopWindowAt(Spot spot) const;
  /// Gives the keyboard to the window in front, as the manager of a desktop's windows does.
  void FocusFrontWindow() const;

  std::unique_ptr<_XDisplay, Closer> m_display;
};

}  // namespace kestrin::rig
