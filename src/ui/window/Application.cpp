// SPDX-License-Identifier: MIT
#include "ui/window/Application.h"

#include <QFileOpenEvent>
#include <QScopeGuard>
#include <exception>
#include <utility>

#include "ui/kit/PathText.h"

namespace kestrin::ui::window {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {}

bool Application::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::exception& error) {
    Tell(tr("Something went wrong: %1\nThe board was left as it is. Save your set, then start the program again.")
             .arg(QString::fromLocal8Bit(error.what())));
  }
  return false;
}

bool Application::event(QEvent* event) {
  if (event->type() != QEvent::FileOpen) return QApplication::event(event);
  const std::filesystem::path path = kit::PathOf(static_cast<QFileOpenEvent*>(event)->url());
  if (!path.empty()) emit openRequested(path);
  return true;
}

void Application::Tell(const QString& text) {
  // What goes wrong in an event that comes again and again is told once at a time.
  if (std::exchange(m_telling, true)) return;
  QMetaObject::invokeMethod(
      this,
      [this, text] {
        const auto told = qScopeGuard([this] { m_telling = false; });
        emit mishap(text);
      },
      Qt::QueuedConnection);
}

}  // namespace kestrin::ui::window
