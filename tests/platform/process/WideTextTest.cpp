// SPDX-License-Identifier: MIT
#include "platform/process/WideText.h"

#include <gtest/gtest.h>

namespace kestrin::platform::process {
namespace {

TEST(WideText, GoesBothWays) {
  EXPECT_EQ(Utf8Of(L""), "");
  EXPECT_EQ(WideOf(""), L"");
  EXPECT_EQ(Utf8Of(L"\u00E5 \u5263 \U0001F5E1"), "\u00E5 \u5263 \U0001F5E1");
  EXPECT_EQ(WideOf("\u00E5 \u5263 \U0001F5E1"), L"\u00E5 \u5263 \U0001F5E1");
}

TEST(WideText, WhatIsNoCharacterIsReplaced) {
  EXPECT_EQ(Utf8Of(std::wstring(1, wchar_t{0xD83D})), "\uFFFD");
  EXPECT_EQ(WideOf("\xFF"), L"\uFFFD");
}

}  // namespace
}  // namespace kestrin::platform::process
