// SPDX-License-Identifier: MIT
#include "core/sound/PathEnd.h"

#include <gtest/gtest.h>

#include <string>

#include "core/base/PathText.h"

namespace kestrin::core::sound {
namespace {

TEST(PathEndTest, TheNameStandsBehindTheLastSeparatorOfEitherKind) {
  EXPECT_EQ(PathEnd("/home/anna/hum.lsu").Name(), "hum.lsu");
  EXPECT_EQ(PathEnd("C:\\Sounds\\hum.lsu").Name(), "hum.lsu");
  EXPECT_EQ(PathEnd("hum.lsu").Name(), "hum.lsu");
  EXPECT_EQ(PathEnd("").Name(), "");
  EXPECT_EQ(PathEnd("C:").Name(), "");
}

struct Shared {
  const char* a;
  const char* b;
  std::size_t pieces;
};

TEST(PathEndTest, SharedPiecesAreCountedFromTheNameBackwards) {
  constexpr Shared kCases[] = {
      {"/a/b/c.lsu", "/x/b/c.lsu", 2},      {"/a/b/c.lsu", "/a/b/d.lsu", 0}, {"C:\\Saber\\C.LSU", "/saber/c.lsu", 2},
      {"/a/c.lsu", "/a/c.lsu", 2},          {"c.lsu", "/a/b/c.lsu", 1},      {"/a/../b/c.lsu", "/a/b/c.lsu", 2},
      {"/a/./b//c.lsu", "/z/a/b/c.lsu", 3}, {"", "/a/b/c.lsu", 0},
  };
  for (const Shared& each : kCases) {
    EXPECT_EQ(PathEnd(each.a).SharedWith(PathEnd(each.b)), each.pieces) << each.a << " and " << each.b;
    EXPECT_EQ(PathEnd(each.b).SharedWith(PathEnd(each.a)), each.pieces) << each.b << " and " << each.a;
  }
}

/// The places as text, one a line.
std::string Places(const std::string& path, const std::filesystem::path& folder) {
  std::string text;
  for (const auto& place : PathEnd(path).PlacesAround(folder)) text += place.generic_string() + "\n";
  return text;
}

TEST(PathEndTest, TheLongestEndIsTheLikeliestAndABareNameOnlyBesideTheSet) {
  EXPECT_EQ(Places("D:\\fonts\\sounds\\hum.lsu", "/new/fonts/sets"),
            "/new/fonts/sets/fonts/sounds/hum.lsu\n"
            "/new/fonts/fonts/sounds/hum.lsu\n"
            "/new/fonts/sounds/hum.lsu\n"
            "/new/fonts/sets/sounds/hum.lsu\n"
            "/new/fonts/sounds/hum.lsu\n"
            "/new/sounds/hum.lsu\n"
            "/new/fonts/sets/hum.lsu\n");
}

TEST(PathEndTest, NothingLiesAboveTheRoot) {
  EXPECT_EQ(Places("b/hum.lsu", "/a"), "/a/b/hum.lsu\n/b/hum.lsu\n/a/hum.lsu\n");
  EXPECT_EQ(Places("b/hum.lsu", "/"), "/b/hum.lsu\n/hum.lsu\n");
  EXPECT_EQ(Places("", "/a"), "");
}

TEST(PathEndTest, OfAVeryDeepPathOnlyTheEndCounts) {
  std::string path;
  for (int folder = 0; folder < 1000; ++folder) path += "d/";
  path += "hum.lsu";
  const PathEnd end(path);
  EXPECT_EQ(end.Name(), "hum.lsu");
  EXPECT_EQ(end.SharedWith(end), 32U);
  // The bare name in one folder, every longer end in three.
  EXPECT_EQ(end.PlacesAround("/a/b/c").size(), 31U * 3 + 1);
}

}  // namespace
}  // namespace kestrin::core::sound
