// SPDX-License-Identifier: MIT
#include "platform/process/StopSignals.h"

#if defined(_WIN32)
#include <windows.h>

#include <atomic>
#else
#include <csignal>
#endif

namespace kestrin::platform::process {

namespace {

#if defined(_WIN32)

/// The system calls back without saying for whom.
std::atomic<void (*)(int)> s_handler = nullptr;

BOOL WINAPI OnConsoleEvent(DWORD event) {
  const auto handler = s_handler.load();
  if (handler == nullptr) return FALSE;
  switch (event) {
    case CTRL_C_EVENT:
      handler(kInterrupt);
      return TRUE;
    case CTRL_BREAK_EVENT:
      handler(kTerminate);
      return TRUE;
    default:
      // Closed, logged off or shut down: the system ends the program as soon as this returns. So it does not, and the
      // program has the seconds that the system grants it to end by itself.
      handler(event == CTRL_CLOSE_EVENT ? kHangUp : kTerminate);
      Sleep(INFINITE);
      return TRUE;
  }
}

#else

static_assert(kHangUp == SIGHUP && kInterrupt == SIGINT && kTerminate == SIGTERM);

/// Whether the signal is ignored, as whoever started the program may have wanted it.
bool IsIgnored(int number) {
  struct sigaction action {};
  return sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void SetAction(int number, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  // Without SA_RESTART: who waits for a pipe that nobody opens, or for a terminal that takes nothing, stops waiting.
  sigemptyset(&action.sa_mask);
  sigaction(number, &action, nullptr);
}

/// Ctrl-C and the request to stop are taken even where a shell has them ignored, as some do with what they start in the
/// background: scripts stop such a program by sending them.
void SetActions(void (*handler)(int)) {
  SetAction(kInterrupt, handler);
  SetAction(kTerminate, handler);
  if (!IsIgnored(kHangUp)) SetAction(kHangUp, handler);
}

#endif

}  // namespace

void CatchStopSignals(void (*handler)(int signal)) {
#if defined(_WIN32)
  s_handler = handler;
  SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
#else
  SetActions(handler);
#endif
}

void ReleaseStopSignals() {
#if defined(_WIN32)
  SetConsoleCtrlHandler(OnConsoleEvent, FALSE);
  s_handler = nullptr;
#else
  SetActions(SIG_DFL);
#endif
}

}  // namespace kestrin::platform::process
