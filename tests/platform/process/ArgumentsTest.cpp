// SPDX-License-Identifier: MIT
#include "platform/process/Arguments.h"

#include <gtest/gtest.h>

#include <string_view>

#if defined(_WIN32)
#include <windows.h>

#include <cstdio>
#include <string>

#include "platform/process/WideText.h"
#endif

namespace kestrin::platform::process {
namespace {

#if defined(_WIN32)

/// What this program becomes when it starts itself: it writes its last argument. Runs before the tests do.
const bool s_echoes = [] {
  if (GetEnvironmentVariableW(L"KESTRIN_TEST_ECHO", nullptr, 0) == 0) return false;
  const Arguments arguments(0, nullptr);
  std::fputs(arguments.Values()[arguments.Count() - 1], stdout);
  std::fflush(stdout);
  ExitProcess(0);
}();

/// What the program writes that is started with this argument.
std::string EchoOf(const std::wstring& argument) {
  std::wstring self(32768, L'\0');
  self.resize(GetModuleFileNameW(nullptr, self.data(), static_cast<DWORD>(self.size())));
  std::wstring line = L"\"" + self + L"\" \"" + argument + L"\"";
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  HANDLE read = nullptr;
  HANDLE write = nullptr;
  if (CreatePipe(&read, &write, &inherited, 0) == 0) return "no pipe";
  SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
  STARTUPINFOW start{};
  start.cb = sizeof(start);
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = write;
  PROCESS_INFORMATION process{};
  SetEnvironmentVariableW(L"KESTRIN_TEST_ECHO", L"1");
  const BOOL started =
      CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process);
  SetEnvironmentVariableW(L"KESTRIN_TEST_ECHO", nullptr);
  CloseHandle(write);
  std::string text;
  char buffer[256];
  DWORD length = 0;
  while (ReadFile(read, buffer, sizeof(buffer), &length, nullptr) != 0 && length > 0) text.append(buffer, length);
  CloseHandle(read);
  if (started == 0) return "not started";
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return text;
}

TEST(Arguments, ComeAsUtf8WhateverTheCodePage) {
  ASSERT_FALSE(s_echoes);
  // Latin, Cyrillic and Chinese letters stand in no one code page.
  EXPECT_EQ(EchoOf(L"\u00E5 \u041E\u0440\u0442 \u5263.lscfg"), "\u00E5 \u041E\u0440\u0442 \u5263.lscfg");
}

#else

TEST(Arguments, AreWhatMainGets) {
  const char* const given[] = {"kestrinctl", "--board", "", nullptr};
  const Arguments arguments(3, given);
  ASSERT_EQ(arguments.Count(), 3);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(std::string_view(arguments.Values()[i]), given[i]);
  EXPECT_EQ(arguments.Values()[3], nullptr);
}

#endif

}  // namespace
}  // namespace kestrin::platform::process
