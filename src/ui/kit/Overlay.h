// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace kestrin::ui::kit {

/// Lays a panel over the window and dims all that is behind it. It comes and goes with the panel, and keeps pointer and
/// Tab key inside while it is there.
class Overlay : public QWidget {
  Q_OBJECT

 public:
  /// Takes the panel, which is shown and hidden by its own means. It stands in the middle of `middle`, a part of the
  /// window; one that needs more reaches upwards, then downwards as well. A panel whose size policy lets it expand
  /// scrolls what it holds, so it needs its least height only. Without `middle` the whole window is meant.
  Overlay(QWidget& panel, QWidget& window, QWidget* middle = nullptr);

 signals:
  void shown();
  void hidden();
  /// The person clicked beside the panel.
  void clickedBeside();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  /// Covers the window, and keeps free of the panel what is not the middle.
  void Place();
  [[nodiscard]] int NeededHeight() const;

  QWidget& m_panel;
  QWidget* m_middle;
};

}  // namespace kestrin::ui::kit
