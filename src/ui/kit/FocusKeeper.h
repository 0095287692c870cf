// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

namespace kestrin::ui::kit {

/// Brings the keyboard back to where it was in a window when its controls could not be used for a while: what cannot be
/// used loses the keyboard to whatever comes next in the order of the Tab key.
class FocusKeeper {
 public:
  explicit FocusKeeper(const QWidget& window) : m_window(window) {}

  /// Controls are about to be taken away, for one more reason.
  void Take();
  /// One of the reasons is gone, and its controls can be used again. After the last one the keyboard goes back.
  void GiveBack();

 private:
  const QWidget& m_window;
  QPointer<QWidget> m_before;
  int m_reasons = 0;
};

}  // namespace kestrin::ui::kit
