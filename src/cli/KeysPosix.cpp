// SPDX-License-Identifier: MIT
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>
#include <utility>

#include "cli/Interrupt.h"
#include "cli/Keys.h"

namespace kestrin::cli {

namespace {

/// The other bytes of a key come right behind the first, also over a network.
constexpr int kRestOfAKey = 50;

/// As the terminal was. A signal handler reaches nothing but what lives outside every object.
termios s_before;

void Restore() { tcsetattr(STDIN_FILENO, TCSANOW, &s_before); }

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
  termios changed = s_before;
  // Signals stay; those that would end or stop the program without a word to it do not.
  changed.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
  changed.c_iflag &= ~static_cast<tcflag_t>(IXON);
  changed.c_cc[VSUSP] = _POSIX_VDISABLE;
  changed.c_cc[VQUIT] = _POSIX_VDISABLE;
  changed.c_cc[VMIN] = 1;
  changed.c_cc[VTIME] = 0;
  Interrupt::SetLastAct(Restore);
  if (tcsetattr(STDIN_FILENO, TCSANOW, &changed) != 0) {
    Interrupt::SetLastAct(nullptr);
    return nullptr;
  }
  return std::unique_ptr<Keys>(new Keys(std::make_unique<Console>()));
}

Keys::Keys(std::unique_ptr<Console> console) : m_console(std::move(console)) {}

Keys::~Keys() {
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
