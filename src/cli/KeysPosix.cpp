// SPDX-License-Identifier: MIT
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <utility>

#include "cli/Interrupt.h"
#include "cli/Keys.h"

namespace kestrin::cli {

namespace {

/// The other bytes of a key come right behind the first, also over a network.
constexpr int kRestOfAKey = 50;

/// As the terminal was, and as it is while keys come one by one. A signal handler reaches nothing but what lives
/// outside every object.
termios s_before;
termios s_changed;

void Restore() { tcsetattr(STDIN_FILENO, TCSANOW, &s_before); }

bool Change() { return tcsetattr(STDIN_FILENO, TCSANOW, &s_changed) == 0; }

void Handle(int number, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  // The stop comes while its handler runs.
  action.sa_flags = SA_RESTART | SA_NODEFER;
  sigemptyset(&action.sa_mask);
  sigaction(number, &action, nullptr);
}

/// The program goes on, be it that nothing was said before it was stopped.
void OnContinue(int /*number*/) {
  const int error = errno;
  Change();
  errno = error;
}

/// Ctrl-Z: meanwhile the terminal is as it was before.
void OnStop(int number) {
  const int error = errno;
  Restore();
  // The system's own stop, since it knows of programs that nobody could wake up again.
  Handle(number, SIG_DFL);
  raise(number);
  Handle(number, OnStop);
  Change();
  errno = error;
}

void SetStopHandlers(void (*onStop)(int), void (*onContinue)(int)) {
  struct sigaction action {};
  // Whoever started the program may want it not to be stopped.
  if (sigaction(SIGTSTP, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) Handle(SIGTSTP, onStop);
  Handle(SIGCONT, onContinue);
}

/// What Read() says of the terminal.
enum class Heard { Something, Nothing, TheEnd };

Heard Read(std::string& bytes, int milliseconds) {
  pollfd waiting{STDIN_FILENO, POLLIN, 0};
  if (poll(&waiting, 1, milliseconds) <= 0) return Heard::Nothing;
  std::array<char, 64> part{};
  const ssize_t count = read(STDIN_FILENO, part.data(), part.size());
  if (count > 0) {
    bytes.append(part.data(), static_cast<std::size_t>(count));
    return Heard::Something;
  }
  return count < 0 && errno == EINTR ? Heard::Nothing : Heard::TheEnd;
}

}  // namespace

struct Keys::Console {
  /// What came and is not a whole key yet.
  std::string bytes;
};

std::unique_ptr<Keys> Keys::Take() {
  if (isatty(STDIN_FILENO) == 0 || tcgetattr(STDIN_FILENO, &s_before) != 0) return nullptr;
  s_changed = s_before;
  // Signals stay; the one that would end the program without a word to it does not.
  s_changed.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
  s_changed.c_iflag &= ~static_cast<tcflag_t>(IXON);
  s_changed.c_cc[VQUIT] = _POSIX_VDISABLE;
  s_changed.c_cc[VMIN] = 1;
  s_changed.c_cc[VTIME] = 0;
  Interrupt::SetLastAct(Restore);
  SetStopHandlers(OnStop, OnContinue);
  if (!Change()) {
    SetStopHandlers(SIG_DFL, SIG_DFL);
    Interrupt::SetLastAct(nullptr);
    return nullptr;
  }
  return std::unique_ptr<Keys>(new Keys(std::make_unique<Console>()));
}

Keys::Keys(std::unique_ptr<Console> console) : m_console(std::move(console)) {}

Keys::~Keys() {
  SetStopHandlers(SIG_DFL, SIG_DFL);
  Restore();
  Interrupt::SetLastAct(nullptr);
}

std::optional<Key> Keys::Next(std::chrono::milliseconds longest) {
  std::string& bytes = m_console->bytes;
  if (bytes.empty()) {
    const Heard heard = Read(bytes, static_cast<int>(longest.count()));
    if (heard == Heard::TheEnd) return Key::Gone;
    if (heard == Heard::Nothing) return std::nullopt;
  }
  for (;;) {
    if (const std::optional<Key> key = TakeKey(bytes, false)) return key;
    if (Read(bytes, kRestOfAKey) != Heard::Something) return TakeKey(bytes, true);
  }
}

}  // namespace kestrin::cli
