// SPDX-License-Identifier: MIT
#include "ui/window/SetDrop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>
#include <utility>

#include "ui/kit/PathText.h"

namespace kestrin::ui::window {

SetDrop::SetDrop(QWidget& window, std::function<bool()> isWelcome, std::function<bool(const Paths&)> takesSounds)
    : QObject(&window), m_isWelcome(std::move(isWelcome)), m_takesSounds(std::move(takesSounds)) {
  window.setAcceptDrops(true);
  window.installEventFilter(this);
}

bool SetDrop::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop) return QObject::eventFilter(watched, event);
  auto* const drop = static_cast<QDropEvent*>(event);
  const Paths paths = PathsIn(*drop->mimeData());
  const std::filesystem::path path = SetIn(paths);
  if (path.empty() ? !m_takesSounds(paths) : !m_isWelcome()) {
    drop->ignore();
    return true;
  }
  drop->acceptProposedAction();
  if (event->type() == QEvent::Drop)
    QMetaObject::invokeMethod(
        this,
        [this, path, paths] {
          if (path.empty())
            emit soundsDropped(paths);
          else
            emit dropped(path);
        },
        Qt::QueuedConnection);
  return true;
}

/// The files and folders that are dragged; none when anything else is among them.
SetDrop::Paths SetDrop::PathsIn(const QMimeData& data) {
  Paths paths;
  for (const QUrl& url : data.urls()) {
    paths.push_back(kit::PathOf(url));
    if (paths.back().empty()) return {};
  }
  return paths;
}

/// The one set among them, packed or not; empty when there is anything else.
std::filesystem::path SetDrop::SetIn(const Paths& paths) {
  if (paths.size() != 1) return {};
  const QString name = kit::TextOf(paths.front());
  const bool isSet = name.endsWith(".lscfg", Qt::CaseInsensitive) || name.endsWith(".zip", Qt::CaseInsensitive);
  return isSet ? paths.front() : std::filesystem::path();
}

}  // namespace kestrin::ui::window
