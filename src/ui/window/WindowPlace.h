// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

class QSettings;
class QWidget;

namespace kestrin::ui::window {

/// Where the window stands and how large it is: remembered from run to run, and never more than the screen leaves.
class WindowPlace {
 public:
  static constexpr QSize kFirstSize{1180, 760};

  /// The window must outlive it; `settings` keeps its place.
  WindowPlace(QWidget& window, QSettings& settings);

  /// Where it was when it was kept last, or the first size; as much of it as fits the screen that it is on.
  void Restore() const;
  void Keep() const;

  /// `wanted` without what does not fit into `room`: as large as possible, then as near as possible.
  [[nodiscard]] static QRect Within(const QRect& wanted, const QRect& room);

 private:
  QWidget& m_window;
  QSettings& m_settings;
};

}  // namespace kestrin::ui::window
