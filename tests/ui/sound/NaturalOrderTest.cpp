// SPDX-License-Identifier: MIT
#include "ui/sound/NaturalOrder.h"

#include <gtest/gtest.h>

#include <QString>
#include <vector>

namespace kestrin::ui::sound {
namespace {

TEST(NaturalOrderTest, NamesComeAsPeopleCount) {
  const std::vector<QString> names{"",
                                   "1",
                                   "2",
                                   "10",
                                   "a",
                                   "A1",
                                   "a01",
                                   "a2",
                                   "a10",
                                   "a10b",
                                   "b",
                                   "swing 2",
                                   "swing 2 x",
                                   "Swing 3",
                                   "swing 20",
                                   "swing 99999999999999999998",
                                   "swing 99999999999999999999",
                                   "\u00e4"};
  for (std::size_t a = 0; a < names.size(); ++a)
    for (std::size_t b = 0; b < names.size(); ++b)
      EXPECT_EQ(NaturallyBefore(names[a], names[b]), a < b)
          << names[a].toStdString() << " and " << names[b].toStdString();
}

}  // namespace
}  // namespace kestrin::ui::sound
