// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

namespace kestrin::ui::led {

/// A text box for a number, which the arrow keys move in steps. What it says is put right when the person leaves it.
class ValueBox : public QLineEdit {
  Q_OBJECT

 public:
  explicit ValueBox(QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 signals:
  /// The box has lost the focus, or Enter was pressed in it.
  void left();
  /// Up or down was pressed: so many steps, 10 for a page.
  void stepped(int steps);

 protected:
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace kestrin::ui::led
