// SPDX-License-Identifier: MIT
#include "core/update/UpdateAnswer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace kestrin::core::update {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(UpdateAnswerTest, ThePayloadBeginsBehindStatusAndVerdict) {
  EXPECT_THAT(UpdateAnswer::Payload(UpdateAnswer::Lines{}), IsEmpty());
  EXPECT_THAT(UpdateAnswer::Payload(UpdateAnswer::Lines{"a"}), IsEmpty());
  EXPECT_THAT(UpdateAnswer::Payload(UpdateAnswer::Lines{"a", "b"}), IsEmpty());
  const UpdateAnswer::Lines three{"a", "b", "c"};
  EXPECT_THAT(UpdateAnswer::Payload(three), ElementsAre("c"));
  EXPECT_THAT(UpdateAnswer::Items(three), IsEmpty()) << "a single one counts as none";
  const UpdateAnswer::Lines four{"a", "b", "c", ""};
  EXPECT_THAT(UpdateAnswer::Items(four), ElementsAre("c", ""));
}

TEST(UpdateAnswerTest, TakesTenThousandLines) {
  std::string text = "x";
  for (int line = 1; line < 10000; ++line) text += "\r\n";
  const std::optional<UpdateAnswer::Lines> lines = UpdateAnswer::Read(text);
  ASSERT_TRUE(lines);
  EXPECT_EQ(lines->size(), 10000U);
  EXPECT_FALSE(UpdateAnswer::Read(text + "\r\n"));
  EXPECT_TRUE(UpdateAnswer::Read(text + "\n\r")) << "that ends no line";
  EXPECT_THAT(*UpdateAnswer::Read(""), IsEmpty());
}

}  // namespace
}  // namespace kestrin::core::update
