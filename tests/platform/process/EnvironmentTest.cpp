// SPDX-License-Identifier: MIT
#include "platform/process/Environment.h"

#include <gtest/gtest.h>

#if defined(_WIN32)
#include <windows.h>
#else
#include <stdlib.h>
#endif

namespace kestrin::platform::process {
namespace {

constexpr const char* kName = "KESTRIN_TEST_ENVIRONMENT";

#if defined(_WIN32)
void Set(const wchar_t* value) { SetEnvironmentVariableW(L"KESTRIN_TEST_ENVIRONMENT", value); }
void Unset() { Set(nullptr); }
#define KESTRIN_TEXT(text) L##text
#else
void Set(const char* value) { setenv(kName, value, 1); }
void Unset() { unsetenv(kName); }
#define KESTRIN_TEXT(text) text
#endif

TEST(EnvironmentText, IsNothingWhenTheVariableIsNotSet) {
  Unset();
  EXPECT_EQ(EnvironmentText(kName), std::nullopt);
}

TEST(EnvironmentText, MayBeEmpty) {
  Set(KESTRIN_TEXT(""));
  EXPECT_EQ(EnvironmentText(kName), "");
  Unset();
}

TEST(EnvironmentText, IsUtf8WhateverTheCodePage) {
  Set(KESTRIN_TEXT("\u00C5sa \u041E\u0440\u0442 \u5263"));
  EXPECT_EQ(EnvironmentText(kName), "\u00C5sa \u041E\u0440\u0442 \u5263");
  Unset();
}

}  // namespace
}  // namespace kestrin::platform::process
