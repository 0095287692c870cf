#pragma once

#include <QHash>
#include <QLabel>
#include <QPointF>
#include <QTimer>

namespace kestrin::ui::window {

/// The help line `HelpLabel`: says what the control under the pointer, or with the focus, is for, and tells short news
/// that need no message box.
class HelpLine : public QLabel {
  Q_OBJECT

 public:
  static constexpr const char* kPressF1 = "Press F1 for help";
  /// News stay for so long, unless the person points at another control, or at the window's ground, before.
  static constexpr int kNewsMilliseconds = 10000;

  explicit HelpLine(QWidget* parent = nullptr);

  /// The controls in `root`, and `root` itself, that have a text of their own say it from now on.
  void Explain(QWidget& root);
  /// The control is nothing but ground: what the window says, it says too.
  void ExplainAsGround(QWidget& control) { Watch(control, kPressF1); }
  /// What the pointer is on says this; "" for nothing in particular.
  void ShowHint(const QString& hint);
  void ShowNews(const QString& news);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Watch(QWidget& control, const QString& text);
  [[nodiscard]] bool IsOnGround(QObject* watched, const QPoint& place) const;
  void Show();

  /// Where on the screen the pointer was seen last.
  QPointF m_pointer;
  QString m_hint;
  /// The last one that said something.
  QString m_lastHint;
  QString m_news;
  QTimer m_newsTimer;
  QHash<const QObject*, QString> m_texts;
};

}  // namespace kestrin::ui::window
