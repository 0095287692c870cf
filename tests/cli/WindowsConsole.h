// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

namespace kestrin::support {

/// A console of the test's own, whose keyboard and screen are the test's: programs that it starts find themselves at it
/// as at a person's.
class WindowsConsole {
 public:
  WindowsConsole() {
    FreeConsole();
    if (AllocConsole() == 0) throw std::runtime_error("there is no console to be had");
    m_keyboard = Open(L"CONIN$");
    m_screen = Open(L"CONOUT$");
    SetStdHandle(STD_INPUT_HANDLE, m_keyboard);
  }
  ~WindowsConsole() { Close(); }
  WindowsConsole(const WindowsConsole&) = delete;
  WindowsConsole& operator=(const WindowsConsole&) = delete;

  /// How the keyboard's letters are given on.
  [[nodiscard]] DWORD Mode() const {
    DWORD mode = 0;
    if (GetConsoleMode(m_keyboard, &mode) == 0) throw std::runtime_error("the console has no mode");
    return mode;
  }
  void SetMode(DWORD mode) const { SetConsoleMode(m_keyboard, mode); }

  /// Presses a key and lets it go.
  void Press(WORD code) const {
    std::array<INPUT_RECORD, 2> records{};
    for (INPUT_RECORD& record : records) {
      record.EventType = KEY_EVENT;
      record.Event.KeyEvent.wRepeatCount = 1;
      record.Event.KeyEvent.wVirtualKeyCode = code;
      record.Event.KeyEvent.uChar.UnicodeChar = static_cast<WCHAR>(MapVirtualKeyW(code, MAPVK_VK_TO_CHAR));
    }
    records.front().Event.KeyEvent.bKeyDown = TRUE;
    Tell(records.data(), static_cast<DWORD>(records.size()));
  }
  /// Something else happens to it.
  void Tell(const INPUT_RECORD* records, DWORD count) const {
    DWORD written = 0;
    if (WriteConsoleInputW(m_keyboard, records, count, &written) == 0 || written != count)
      throw std::runtime_error("the console takes no input");
  }
  /// Whether nobody has to read anything any more.
  [[nodiscard]] bool HasNoMore() const {
    DWORD count = 0;
    return GetNumberOfConsoleInputEvents(m_keyboard, &count) != 0 && count == 0;
  }

  /// Takes it away.
  void Close() {
    // Closed are the handles that are standard then, whosever they are.
    for (const DWORD which : kStandard) SetStdHandle(which, nullptr);
    FreeConsole();
    for (std::size_t i = 0; i < kStandard.size(); ++i) SetStdHandle(kStandard[i], m_before[i]);
    for (HANDLE* const handle : {&m_keyboard, &m_screen})
      if (*handle != nullptr) CloseHandle(std::exchange(*handle, nullptr));
  }

  /// What stands on the line that was written on last.
  [[nodiscard]] std::string Line() const {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    GetConsoleScreenBufferInfo(m_screen, &info);
    std::wstring line(static_cast<std::size_t>(info.dwSize.X), L' ');
    DWORD read = 0;
    ReadConsoleOutputCharacterW(m_screen, line.data(), static_cast<DWORD>(line.size()), {0, info.dwCursorPosition.Y},
                                &read);
    // What is written there is ASCII.
    std::string text;
    for (const wchar_t letter : line) text += static_cast<char>(letter);
    return text.substr(0, text.find_last_not_of(' ') + 1);
  }

 private:
  static constexpr std::array<DWORD, 3> kStandard{STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};

  static HANDLE Open(const wchar_t* name) {
    return CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                       0, nullptr);
  }

  std::array<HANDLE, 3> m_before{GetStdHandle(kStandard[0]), GetStdHandle(kStandard[1]), GetStdHandle(kStandard[2])};
  HANDLE m_keyboard = nullptr;
  HANDLE m_screen = nullptr;
};

}  // namespace kestrin::support
