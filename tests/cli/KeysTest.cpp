// SPDX-License-Identifier: MIT
#include "cli/Keys.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrin::cli {
namespace {

std::vector<Key> AllKeys(std::string bytes) {
  std::vector<Key> keys;
  while (const std::optional<Key> key = TakeKey(bytes, true)) keys.push_back(*key);
  EXPECT_EQ(bytes, "");
  return keys;
}

TEST(TakeKey, KnowsThePlainOnes) {
  EXPECT_EQ(AllKeys(" \r\nlLqQ"),
            (std::vector<Key>{Key::Space, Key::Enter, Key::Enter, Key::L, Key::L, Key::Q, Key::Q}));
  EXPECT_EQ(AllKeys("x1\t"), (std::vector<Key>{Key::Other, Key::Other, Key::Other}));
  EXPECT_EQ(AllKeys("\x04\x03"), (std::vector<Key>{Key::Q, Key::Q}));
}

// Terminals send either form, and further numbers while Shift or Ctrl is held.
TEST(TakeKey, KnowsTheArrows) {
  for (const char* const direction : {"A", "B", "C", "D"})
    for (const char* const leading : {"\x1B[", "\x1BO", "\x1B[1;2", "\x1B[1;5"})
      EXPECT_EQ(AllKeys(std::string(leading) + direction), std::vector<Key>{Key::Arrow}) << direction;
  EXPECT_EQ(AllKeys("\x1B[A\x1B[B "), (std::vector<Key>{Key::Arrow, Key::Arrow, Key::Space}));
}

TEST(TakeKey, OtherKeysOfSeveralBytesAreOneKey) {
  // Home, Delete, F1, F5, Alt with q.
  for (const char* const bytes : {"\x1B[H", "\x1B[3~", "\x1BOP", "\x1B[15~", "\x1Bq"})
    EXPECT_EQ(AllKeys(bytes), std::vector<Key>{Key::Other}) << bytes + 1;
}

TEST(TakeKey, EscapeIsAKeyWhenNothingFollows) {
  EXPECT_EQ(AllKeys("\x1B"), std::vector<Key>{Key::Escape});
  EXPECT_EQ(AllKeys("\x1B\x1B"), (std::vector<Key>{Key::Escape, Key::Escape}));
  EXPECT_EQ(AllKeys("\x1B\x1B[A"), (std::vector<Key>{Key::Escape, Key::Arrow}));
}

TEST(TakeKey, WaitsForTheRestOfAKey) {
  for (const std::string part : {"", "\x1B", "\x1B[", "\x1BO", "\x1B[1", "\x1B[1;2"}) {
    std::string bytes = part;
    EXPECT_FALSE(TakeKey(bytes, false)) << part;
    EXPECT_EQ(bytes, part);
  }
}

TEST(TakeKey, AKeyThatIsCutOffIsNone) {
  EXPECT_EQ(AllKeys("\x1B["), std::vector<Key>{Key::Other});
  EXPECT_EQ(AllKeys("\x1B[1;2"), std::vector<Key>{Key::Other});
  EXPECT_EQ(AllKeys("\x1BO"), std::vector<Key>{Key::Other});
}

}  // namespace
}  // namespace kestrin::cli
