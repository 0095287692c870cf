// SPDX-License-Identifier: MIT
#include <windows.h>

#include <algorithm>
#include <array>
#include <utility>

#include "cli/Interrupt.h"
#include "cli/Keys.h"

namespace kestrin::cli {

namespace {

/// As the console was. What runs at the end of the program reaches nothing but what lives outside every object.
HANDLE s_console = nullptr;
DWORD s_before = 0;

void Restore() { SetConsoleMode(s_console, s_before); }

constexpr std::array<std::pair<WORD, Key>, 9> kVirtualKeys{{
    {VK_SPACE, Key::Space},
    {VK_RETURN, Key::Enter},
    {VK_LEFT, Key::Arrow},
    {VK_RIGHT, Key::Arrow},
    {VK_UP, Key::Arrow},
    {VK_DOWN, Key::Arrow},
    {'L', Key::L},
    {'Q', Key::Q},
    {VK_ESCAPE, Key::Escape},
}};

}  // namespace

struct Keys::Console {};

std::unique_ptr<Keys> Keys::Take() {
  s_console = GetStdHandle(STD_INPUT_HANDLE);
  if (GetConsoleMode(s_console, &s_before) == 0) return nullptr;
  // Ctrl-C stays the system's. Some programs leave a console that turns arrows into bytes that begin with Escape.
  constexpr DWORD kLines = ENABLE_LINE_INPUT | ENABLE_ECHO_INPUT | ENABLE_VIRTUAL_TERMINAL_INPUT;
  const DWORD changed = (s_before & ~kLines) | ENABLE_PROCESSED_INPUT;
  Interrupt::SetLastAct(Restore);
  if (SetConsoleMode(s_console, changed) == 0) {
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
  const DWORD waited = WaitForSingleObject(s_console, static_cast<DWORD>(longest.count()));
  if (waited == WAIT_TIMEOUT) return std::nullopt;
  INPUT_RECORD record{};
  DWORD count = 0;
  if (waited != WAIT_OBJECT_0 || ReadConsoleInputW(s_console, &record, 1, &count) == 0) return Key::Gone;
  // The mouse, the window's size, and keys that are let go.
  if (count == 0 || record.EventType != KEY_EVENT || record.Event.KeyEvent.bKeyDown == FALSE) return std::nullopt;
  const WORD code = record.Event.KeyEvent.wVirtualKeyCode;
  const auto found = std::ranges::find(kVirtualKeys, code, &std::pair<WORD, Key>::first);
  return found == kVirtualKeys.end() ? Key::Other : found->second;
}

}  // namespace kestrin::cli
