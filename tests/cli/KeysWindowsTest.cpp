// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <thread>
#include <utility>

#include "cli/Keys.h"
#include "cli/WindowsConsole.h"

namespace kestrin::cli {
namespace {

class KeysWindowsTest : public ::testing::Test {
 protected:
  /// The next key, past whatever else happens to a console; nothing when there is none.
  [[nodiscard]] std::optional<Key> NextOf(Keys& keys) const {
    while (!m_console.HasNoMore())
      if (const std::optional<Key> key = keys.Next(std::chrono::milliseconds(0))) return key;
    return std::nullopt;
  }

  support::WindowsConsole m_console;
};

TEST_F(KeysWindowsTest, KnowsTheKeysAndEachOfThemOnce) {
  const std::unique_ptr<Keys> keys = Keys::Take();
  ASSERT_NE(keys, nullptr);
  const std::vector<std::pair<WORD, Key>> all{
      {VK_SPACE, Key::Space},   {VK_RETURN, Key::Enter}, {VK_LEFT, Key::Arrow}, {VK_RIGHT, Key::Arrow},
      {VK_UP, Key::Arrow},      {VK_DOWN, Key::Arrow},   {'L', Key::L},         {'Q', Key::Q},
      {VK_ESCAPE, Key::Escape}, {'X', Key::Other},       {VK_F1, Key::Other},
  };
  for (const auto& [code, key] : all) m_console.Press(code);
  for (const auto& [code, key] : all) EXPECT_EQ(NextOf(*keys), key) << code;
  EXPECT_EQ(NextOf(*keys), std::nullopt);
}

TEST_F(KeysWindowsTest, WhatIsNoKeyIsPassedOver) {
  const std::unique_ptr<Keys> keys = Keys::Take();
  ASSERT_NE(keys, nullptr);
  INPUT_RECORD record{};
  record.EventType = MOUSE_EVENT;
  // Read as a key this would be Space, pressed.
  record.Event.MouseEvent.dwMousePosition = {1, 0};
  record.Event.MouseEvent.dwButtonState = static_cast<DWORD>(VK_SPACE) << 16;
  m_console.Tell(&record, 1);
  record.EventType = FOCUS_EVENT;
  m_console.Tell(&record, 1);
  EXPECT_EQ(NextOf(*keys), std::nullopt);
  m_console.Press(VK_SPACE);
  EXPECT_EQ(NextOf(*keys), Key::Space);
}

TEST_F(KeysWindowsTest, WaitsForAKey) {
  const std::unique_ptr<Keys> keys = Keys::Take();
  ASSERT_NE(keys, nullptr);
  EXPECT_EQ(NextOf(*keys), std::nullopt);
  std::thread person([this] { m_console.Press(VK_RETURN); });
  std::optional<Key> key;
  while (!key) key = keys->Next(std::chrono::minutes(10));
  person.join();
  EXPECT_EQ(key, Key::Enter);
}

TEST_F(KeysWindowsTest, TheConsoleIsAsBeforeAtTheEnd) {
  // As some shells leave it: arrows would come as bytes that begin with Escape.
  constexpr DWORD kBefore =
      ENABLE_PROCESSED_INPUT | ENABLE_LINE_INPUT | ENABLE_ECHO_INPUT | ENABLE_VIRTUAL_TERMINAL_INPUT;
  m_console.SetMode(kBefore);
  ASSERT_EQ(m_console.Mode(), kBefore);
  {
    const std::unique_ptr<Keys> keys = Keys::Take();
    ASSERT_NE(keys, nullptr);
    // Ctrl-C stays the system's.
    EXPECT_EQ(m_console.Mode(), DWORD{ENABLE_PROCESSED_INPUT});
  }
  EXPECT_EQ(m_console.Mode(), kBefore);
}

TEST_F(KeysWindowsTest, WithoutAConsoleNobodyPressesKeys) {
  const HANDLE nothing = CreateFileW(L"NUL", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  HANDLE reading = nullptr;
  HANDLE writing = nullptr;
  ASSERT_NE(CreatePipe(&reading, &writing, nullptr, 0), 0);
  for (const HANDLE input : {nothing, reading, HANDLE{nullptr}, INVALID_HANDLE_VALUE}) {
    SetStdHandle(STD_INPUT_HANDLE, input);
    EXPECT_EQ(Keys::Take(), nullptr);
  }
  for (const HANDLE handle : {nothing, reading, writing}) CloseHandle(handle);
}

TEST_F(KeysWindowsTest, AConsoleThatIsGoneIsTold) {
  const std::unique_ptr<Keys> keys = Keys::Take();
  ASSERT_NE(keys, nullptr);
  m_console.Close();
  EXPECT_EQ(keys->Next(std::chrono::milliseconds(0)), Key::Gone);
}

}  // namespace
}  // namespace kestrin::cli
