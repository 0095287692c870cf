#include "ui/window/SetDrop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>
#include <utility>

namespace kestrin::ui::window {

SetDrop::SetDrop(QWidget& window, std::function<bool()> isWelcome)
    : QObject(&window), m_isWelcome(std::move(isWelcome)) {
  window.setAcceptDrops(true);
  window.installEventFilter(this);
}

bool SetDrop::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop) return QObject::eventFilter(watched, event);
  auto* const drop = static_cast<QDropEvent*>(event);
  const QString path = SetIn(*drop->mimeData());
  if (path.isEmpty() || !m_isWelcome()) {
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
QString SetDrop::SetIn(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  if (urls.size() != 1) return {};
  const QString path = urls.constFirst().toLocalFile();
  return path.endsWith(".lscfg", Qt::CaseInsensitive) ? path : QString();
}

}  // namespace kestrin::ui::window
