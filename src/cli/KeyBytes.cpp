// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <utility>

#include "cli/Keys.h"

namespace kestrin::cli {

namespace {

constexpr char kEscape = '\x1B';

constexpr std::array<std::pair<char, Key>, 9> kPlainKeys{{
    {' ', Key::Space},
    {'\r', Key::Enter},
    {'\n', Key::Enter},
    {'l', Key::L},
    {'L', Key::L},
    {'q', Key::Q},
    {'Q', Key::Q},
    // Ctrl-D: no more input.
    {'\x04', Key::Q},
    // Ctrl-C, where it makes no signal.
    {'\x03', Key::Q},
}};

Key PlainKey(char byte) {
  const auto found = std::ranges::find(kPlainKeys, byte, &std::pair<char, Key>::first);
  return found == kPlainKeys.end() ? Key::Other : found->second;
}

/// The length of the sequence at the beginning, which is an escape character and something behind it; 0 when its end
/// is not there yet.
std::size_t SequenceLength(const std::string& bytes) {
  if (bytes[1] != '[') return bytes[1] != 'O' ? 2 : bytes.size() >= 3 ? 3 : 0;
  const auto isLast = [](char byte) { return byte >= '@' && byte <= '~'; };
  const auto last = std::find_if(bytes.begin() + 2, bytes.end(), isLast);
  return last == bytes.end() ? 0 : static_cast<std::size_t>(last - bytes.begin()) + 1;
}

}  // namespace

std::optional<Key> TakeKey(std::string& bytes, bool isAll) {
  if (bytes.empty()) return std::nullopt;
  std::size_t length = 1;
  Key key = PlainKey(bytes[0]);
  if (bytes[0] == kEscape) {
    key = Key::Escape;
    if (bytes.size() == 1 && !isAll) return std::nullopt;
    if (bytes.size() > 1 && bytes[1] != kEscape) {
      length = SequenceLength(bytes);
      if (length == 0 && !isAll) return std::nullopt;
      if (length == 0) length = bytes.size();
      const char last = bytes[length - 1];
      key = length >= 3 && last >= 'A' && last <= 'D' ? Key::Arrow : Key::Other;
    }
  }
  bytes.erase(0, length);
  return key;
}

}  // namespace kestrin::cli
