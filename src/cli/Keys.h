// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace kestrin::cli {

/// A key that a command knows.
enum class Key {
  Space,
  Enter,
  /// Any of the four.
  Arrow,
  L,
  Q,
  Escape,
  Other,
  /// No key: the terminal has hung up, and none will come any more.
  Gone,
};

/// Takes the first key off the bytes that a terminal sends. Nothing when there is none, or when more may belong to it;
/// with `isAll`, nothing more comes: an escape character is the key, not the beginning of another one.
[[nodiscard]] std::optional<Key> TakeKey(std::string& bytes, bool isAll);

/// For as long as it lives, the person's keys come one by one, without Enter, and are not shown. However the program
/// ends, as far as it is asked, and while it is stopped (Ctrl-Z), the terminal is as it was before. One at a time.
class Keys {
 public:
  /// Null when standard input is no terminal: nobody is there to press keys.
  [[nodiscard]] static std::unique_ptr<Keys> Take();
  ~Keys();
  Keys(const Keys&) = delete;
  Keys& operator=(const Keys&) = delete;

  /// The next key; nothing when none came for so long, or when a signal came.
  [[nodiscard]] std::optional<Key> Next(std::chrono::milliseconds longest);

 private:
  struct Console;

  explicit Keys(std::unique_ptr<Console> console);

  std::unique_ptr<Console> m_console;
};

}  // namespace kestrin::cli
