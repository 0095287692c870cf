// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace kestrin::ui::kit {

/// Lays a panel over the whole window and dims what is behind it. It comes and goes with the panel, and keeps pointer
/// and Tab key inside while it is there.
class Overlay : public QWidget {
  Q_OBJECT

 public:
  /// Takes the panel, which is shown and hidden by its own means.
  Overlay(QWidget& panel, QWidget& window);

 signals:
  void shown();
  void hidden();
  /// The person clicked beside the panel.
  void clickedBeside();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  QWidget& m_panel;
};

}  // namespace kestrin::ui::kit
