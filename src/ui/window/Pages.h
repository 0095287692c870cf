// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QScrollArea;
class QStackedWidget;
class QTabBar;

namespace kestrin::ui::window {

/// The pages of the window, of which one is seen: the sounds, the LED driver's, and the one to try the set. While an
/// LED driver is there, tabs above the page lead from the first to the second and back.
class Pages : public QWidget {
  Q_OBJECT

 public:
  /// In the order of the tabs; the last has none.
  enum class Page { Sounds, LedDriver, Try };

  /// Begins with the sounds, which it takes.
  explicit Pages(QWidget& sounds, QWidget* parent = nullptr);

  /// Takes the LED driver's page, which is made later. It may be larger than the window: then it is scrolled.
  void SetLedDriver(QWidget& page);
  /// Takes the page to try the set.
  void SetTry(QWidget& page);
  /// Whether the tabs are there. Without them it depends on Show() alone which page is seen.
  void ShowTabs(bool shown);

  void Show(Page page);
  [[nodiscard]] Page Shown() const;
  /// What a person calls the page.
  [[nodiscard]] static QString NameOf(Page page);

 signals:
  /// Another page is seen.
  void changed();

 private:
  void Turn(Page page);

  QTabBar* m_tabs = nullptr;
  QStackedWidget* m_stack = nullptr;
  QScrollArea* m_led = nullptr;
  Page m_shown = Page::Sounds;
  bool m_hasTabs = false;
};

}  // namespace kestrin::ui::window
