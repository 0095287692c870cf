// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QPointF>
#include <QTimer>

namespace kestrin::ui::window {

/// The help line `HelpLabel`: says what the control under the pointer, or with the focus, is for, and tells short news
/// that need no message box.
class HelpLine : public QLabel {
  Q_OBJECT

 public:
  /// News stay for so long, unless the person points at another control, or at the window's ground, before.
  static constexpr int kNewsMilliseconds = 10000;

  explicit HelpLine(QWidget* parent = nullptr);

  /// The controls in `root`, and `root` itself, that have a help text by now (`kit::SetHelp`) say it from now on.
  void Explain(QWidget& root);
  /// What the pointer is on says this; "" for nothing in particular.
  void ShowHint(const QString& hint);
  void ShowNews(const QString& news);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Watch(QWidget& control);
  [[nodiscard]] bool IsOnGround(const QWidget& control, const QPoint& place) const;
  void Show();

  /// Where on the screen the pointer was seen last.
  QPointF m_pointer;
  QString m_hint;
  /// The last one that said something.
  QString m_lastHint;
  QString m_news;
  QTimer m_newsTimer;
};

}  // namespace kestrin::ui::window
