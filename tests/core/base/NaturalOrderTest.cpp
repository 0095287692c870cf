// SPDX-License-Identifier: MIT
#include "core/base/NaturalOrder.h"

#include <gtest/gtest.h>

#include <array>

namespace kestrin::core::base {
namespace {

TEST(NaturalOrderTest, NamesComeAsPeopleCount) {
  constexpr std::array kNames{"",   "1",   "2",    "10",        "a",      "A1",       "a01",
                              "a2", "a10", "a10b", "SWING (3)", "swing2", "swing020", "\xC3\xA4"};
  for (std::size_t a = 0; a < kNames.size(); ++a)
    for (std::size_t b = 0; b < kNames.size(); ++b)
      EXPECT_EQ(NaturallyBefore(kNames[a], kNames[b]), a < b) << kNames[a] << " and " << kNames[b];
}

}  // namespace
}  // namespace kestrin::core::base
