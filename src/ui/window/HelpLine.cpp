// SPDX-License-Identifier: MIT
#include "ui/window/HelpLine.h"

#include <QAccessible>
#include <QEvent>
#include <QMouseEvent>
#include <utility>

#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"

namespace kestrin::ui::window {

HelpLine::HelpLine(QWidget* parent) : QLabel(kit::PressF1(), parent) {
  setObjectName("HelpLabel");
  setTextFormat(Qt::PlainText);
  // A long text must not widen the window.
  setWordWrap(true);
  kit::SetTextStyle(*this, kit::TextStyle::Soft);
  kit::SetHelpOfGround(*this, kit::HelpContext::HelpLine);
  m_newsTimer.setSingleShot(true);
  m_newsTimer.setInterval(kNewsMilliseconds);
  connect(&m_newsTimer, &QTimer::timeout, this, [this] {
    m_news.clear();
    Show();
  });
}

void HelpLine::Explain(QWidget& root) {
  QList<QWidget*> controls = root.findChildren<QWidget*>();
  controls.append(&root);
  for (QWidget* const control : controls)
    if (!kit::HelpTextOf(*control).isEmpty()) Watch(*control);
}

void HelpLine::Watch(QWidget& control) {
  control.installEventFilter(this);
  // The pointer comes onto the ground out of the controls that stand on it, without entering it.
  if (kit::IsGround(control)) control.setMouseTracking(true);
}

void HelpLine::ShowHint(const QString& hint) {
  m_hint = hint;
  // A control that the pointer or the keyboard comes back to, when the question that it had asked is gone, has nothing
  // new to say: the news are about what it has done.
  if (!hint.isEmpty() && std::exchange(m_lastHint, hint) != hint) m_news.clear();
  Show();
}

void HelpLine::ShowNews(const QString& news) {
  m_news = news;
  m_newsTimer.start();
  Show();
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

bool HelpLine::IsOnGround(const QWidget& control, const QPoint& place) const {
  // What stands on the ground passes on the moves that it has no use for. Whoever points at the news reads them.
  return kit::IsGround(control) && &control != this && control.childAt(place) == nullptr;
}

bool HelpLine::eventFilter(QObject* watched, QEvent* event) {
  const auto* const control = qobject_cast<const QWidget*>(watched);
  if (control == nullptr) return false;
  switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::Enter: {
      // A window that comes up under the pointer is entered too: only who moves has read the news.
      const auto& pointer = *static_cast<QSinglePointEvent*>(event);
      const bool hasMoved = std::exchange(m_pointer, pointer.globalPosition()) != pointer.globalPosition();
      if (event->type() == QEvent::MouseMove && hasMoved && IsOnGround(*control, pointer.position().toPoint()))
        m_news.clear();
      [[fallthrough]];
    }
    case QEvent::FocusIn:
      ShowHint(kit::IsGround(*control) ? QString() : kit::HelpTextOf(*control));
      break;
    case QEvent::Leave:
    case QEvent::FocusOut:
      ShowHint({});
      break;
    default:
      break;
  }
  return QLabel::eventFilter(watched, event);
}

void HelpLine::Show() {
  const QString text = !m_news.isEmpty() ? m_news : m_hint;
  setText(text.isEmpty() ? kit::PressF1() : text);
  setToolTip(text);
}

}  // namespace kestrin::ui::window
