// SPDX-License-Identifier: MIT
#include "ui/led/ValueBox.h"

#include <QFocusEvent>
#include <QKeyEvent>

namespace kestrin::ui::led {

ValueBox::ValueBox(QWidget* parent) : QLineEdit(parent) {
  setAlignment(Qt::AlignRight);
  connect(this, &QLineEdit::returnPressed, this, &ValueBox::left);
}

QSize ValueBox::sizeHint() const {
  const QSize usual = QLineEdit::minimumSizeHint();
  return {fontMetrics().horizontalAdvance(QStringLiteral("9999.98")) + 24, usual.height()};
}

void ValueBox::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  // The box's own menu takes the focus for a moment only.
  if (event->reason() != Qt::PopupFocusReason) emit left();
}

void ValueBox::keyPressEvent(QKeyEvent* event) {
  constexpr int kPage = 10;
  switch (event->key()) {
    case Qt::Key_Up:
      emit stepped(1);
      return;
    case Qt::Key_Down:
      emit stepped(-1);
      return;
    case Qt::Key_PageUp:
      emit stepped(kPage);
      return;
    case Qt::Key_PageDown:
      emit stepped(-kPage);
      return;
    default:
      QLineEdit::keyPressEvent(event);
  }
}

}  // namespace kestrin::ui::led
