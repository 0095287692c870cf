// SPDX-License-Identifier: MIT
#include "platform/desktop/EndRequests.h"

#include <QGuiApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <utility>

#include "platform/process/StopSignals.h"

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#endif

namespace kestrin::platform::desktop {

#ifdef _WIN32

/// A program with windows has no terminal here: the end of the session is all that comes.
class EndRequests::Source {
 public:
  explicit Source(EndRequests& owner) {
    QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, &owner, [&owner](QSessionManager& session) {
      owner.Begin();
      // The system shows that the program is still at work, and goes on as soon as it has ended.
      if (owner.m_isOver && !owner.m_isOver()) session.cancel();
    });
  }
};

#else

namespace {

/// Where a handler writes to: it reaches nothing but what lives outside every object.
volatile std::sig_atomic_t s_write = -1;

extern "C" void OnSignal(int number) {
  const int before = errno;
  const auto byte = static_cast<unsigned char>(number);
  // A pipe that is full has signals enough.
  if (::write(s_write, &byte, 1) < 0) errno = before;
}

}  // namespace

/// Carries signals from their handler into the event loop, through a pipe.
class EndRequests::Source {
 public:
  explicit Source(EndRequests& owner) {
    if (::pipe(m_pipe.data()) != 0) throw std::system_error(errno, std::generic_category(), "No pipe can be opened");
    for (const int end : m_pipe) {
      ::fcntl(end, F_SETFD, FD_CLOEXEC);
      ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    s_write = m_pipe[1];
    m_notifier = std::make_unique<QSocketNotifier>(m_pipe[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &owner, [this, &owner] {
      unsigned char number = 0;
      while (::read(m_pipe[0], &number, 1) == 1) owner.Take(number);
    });
    process::CatchStopSignals(OnSignal);
  }
  ~Source() {
    process::ReleaseStopSignals();
    m_notifier.reset();
    s_write = -1;
    for (const int end : m_pipe) ::close(end);
  }
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;

 private:
  std::array<int, 2> m_pipe{};
  std::unique_ptr<QSocketNotifier> m_notifier;
};

#endif

EndRequests::EndRequests() : m_source(std::make_unique<Source>(*this)) {}

EndRequests::~EndRequests() = default;

void EndRequests::Take(int signal) {
  if (!m_signal) m_signal = signal;
  Begin();
}

void EndRequests::Begin() {
  if (std::exchange(m_begun, true)) return;
  emit arrived();
}

}  // namespace kestrin::platform::desktop
