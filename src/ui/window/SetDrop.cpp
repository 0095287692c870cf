// SPDX-License-Identifier: MIT
#include "ui/window/SetDrop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>
#include <utility>

#include "ui/kit/PathText.h"

namespace kestrin::ui::window {

SetDrop::SetDrop(QWidget& window, std::function<bool()> isWelcome)
    : QObject(&window), m_isWelcome(std::move(isWelcome)) {
  window.setAcceptDrops(true);
  window.installEventFilter(this);
}

bool SetDrop::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop) return QObject::eventFilter(watched, event);
  auto* const drop = static_cast<QDropEvent*>(event);
  const std::filesystem::path path = SetIn(*drop->mimeData());
  if (path.empty() || !m_isWelcome()) {
    drop->ignore();
    return true;
  }
  drop->acceptProposedAction();
  if (event->type() == QEvent::Drop)
    QMetaObject::invokeMethod(
        this, [this, path] { emit dropped(path); }, Qt::QueuedConnection);
  return true;
}

/// The one set among what is dragged; empty when there is anything else.
std::filesystem::path SetDrop::SetIn(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  if (urls.size() != 1) return {};
  std::filesystem::path path = kit::PathOf(urls.constFirst());
  return kit::TextOf(path).endsWith(".lscfg", Qt::CaseInsensitive) ? path : std::filesystem::path();
}

}  // namespace kestrin::ui::window
