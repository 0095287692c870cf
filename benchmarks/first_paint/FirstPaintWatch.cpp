// SPDX-License-Identifier: MIT
// Preloaded into a Qt program: tells on standard output how many microseconds lie between the moment in the environment
// variable FIRST_PAINT_START (microseconds since 1970) and the first picture of the first window, then ends the
// program.

#include <QCoreApplication>
#include <QEvent>
#include <QMetaObject>
#include <QWidget>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

void Tell() {
  const auto now =
      std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::system_clock::now().time_since_epoch());
  const char* const start = std::getenv("FIRST_PAINT_START");
  std::printf("%lld\n", static_cast<long long>(now.count()) - (start != nullptr ? std::atoll(start) : 0));
  std::fflush(stdout);
  std::_Exit(0);
}

class Watch final : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* const widget = event->type() == QEvent::Paint ? qobject_cast<QWidget*>(watched) : nullptr;
    // Once the event loop goes on, everything is painted and handed to the display.
    if (widget != nullptr && widget->isWindow()) QMetaObject::invokeMethod(this, Tell, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
  }
};

void StartWatching() { QCoreApplication::instance()->installEventFilter(new Watch(QCoreApplication::instance())); }

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(StartWatching)
