// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPalette>
#include <functional>

class QAbstractButton;
class QApplication;

namespace kestrin::ui::kit {

/// How the window is coloured. System takes what the desktop has and follows when the person changes that. Accent and
/// high contrast are the desktop's in every scheme.
enum class ColorScheme { Light, Dark, System };

/// The look of the program: one palette and one style for every window. A Theme belongs to its application.
class Theme : public QObject {
  Q_OBJECT

 public:
  /// Tells the desktop's palette.
  using SystemPalette = std::function<QPalette()>;

  /// Gives the application this look; again at any time to change the scheme. Widgets that exist take the look at once.
  static void Apply(QApplication& application, ColorScheme scheme);

  /// The same with another source of the desktop's palette, which is asked whenever the desktop reports a change.
  static void Apply(QApplication& application, ColorScheme scheme, SystemPalette system);

  /// Changes the scheme alone, as the person chooses another one.
  static void Choose(QApplication& application, ColorScheme scheme);

  /// Makes the button the main one of its window: filled with the accent.
  static void MakePrimary(QAbstractButton& button);
  [[nodiscard]] static bool IsPrimary(const QObject* button);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  explicit Theme(QApplication& application);
  static Theme* Of(const QApplication& application);
  void RefreshSoon();
  void Refresh();

  QApplication& m_application;
  ColorScheme m_scheme = ColorScheme::System;
  SystemPalette m_system;
  bool m_isRefreshDue = false;
};

}  // namespace kestrin::ui::kit
