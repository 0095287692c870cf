// SPDX-License-Identifier: MIT
#include "ui/help/HelpKey.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include "ui/kit/TopicOf.h"

namespace kestrin::ui::help {

HelpKey::HelpKey(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
  const auto* const press = static_cast<QKeyEvent*>(event);
  auto* const widget = qobject_cast<QWidget*>(watched);
  // A key goes to its window first and then to the control with the focus, which is the one that is meant.
  if (widget == nullptr || press->key() != Qt::Key_F1 || press->modifiers() != Qt::NoModifier)
    return QObject::eventFilter(watched, event);
  if (!press->isAutoRepeat()) emit topicRequested(kit::TopicOf(widget));
  return true;
}

}  // namespace kestrin::ui::help
