// SPDX-License-Identifier: MIT
#include "platform/desktop/SystemSleepBlocker.h"

#ifdef _WIN32
#include <windows.h>
#elif defined(KESTRIN_HAVE_DBUS)
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>
#include <QString>
#endif

namespace kestrin::platform::desktop {

#ifdef _WIN32

struct SystemSleepBlocker::Hold {
  explicit Hold(const std::string&) { SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED); }
  ~Hold() { SetThreadExecutionState(ES_CONTINUOUS); }
};

#elif defined(KESTRIN_HAVE_DBUS)

/// The computer stays awake for as long as the descriptor that the login service has sent is open.
struct SystemSleepBlocker::Hold {
  explicit Hold(const std::string& why) {
    QDBusMessage call = QDBusMessage::createMethodCall("org.freedesktop.login1", "/org/freedesktop/login1",
                                                       "org.freedesktop.login1.Manager", "Inhibit");
    call << "sleep:idle"
         << "Kestrin Launcher" << QString::fromStdString(why) << "block";
    // Nobody waits for the answer: the work begins anyway.
    watcher = std::make_unique<QDBusPendingCallWatcher>(QDBusConnection::systemBus().asyncCall(call));
    QObject::connect(watcher.get(), &QDBusPendingCallWatcher::finished, watcher.get(), [this] {
      const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *watcher;
      if (reply.isValid()) descriptor = reply.value();
    });
  }

  std::unique_ptr<QDBusPendingCallWatcher> watcher;
  QDBusUnixFileDescriptor descriptor;
};

#else

struct SystemSleepBlocker::Hold {
  explicit Hold(const std::string&) {}
};

#endif

SystemSleepBlocker::SystemSleepBlocker() = default;
SystemSleepBlocker::~SystemSleepBlocker() = default;

void SystemSleepBlocker::Block(const std::string& why) {
  // The old one's end first: Windows goes by what it is told last.
  m_hold.reset();
  m_hold = std::make_unique<Hold>(why);
}

void SystemSleepBlocker::Unblock() { m_hold.reset(); }

}  // namespace kestrin::platform::desktop
