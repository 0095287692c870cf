// SPDX-License-Identifier: MIT
#include "core/base/WindowsName.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrin::core::base {
namespace {

TEST(WindowsName, DevicesHaveNames) {
  for (const char* const name : {"CON", "con", "Prn", "AUX", "NUL", "nul.lscfg", "NUL.a.b", "CONIN$", "conout$.txt",
                                 "COM1", "com9.lsu", "LPT0", "COM\u00B9", "lpt\u00B3.txt", "NUL .txt"})
    EXPECT_TRUE(IsDeviceName(name)) << name;
  for (const char* const name : {"", "CONSOLE", "COM", "COM10", "COMX", "LPT.lsu", "XNUL", "a.NUL", "C ON", "NULL"})
    EXPECT_FALSE(IsDeviceName(name)) << name;
}

TEST(WindowsName, OrdinaryNamesAreStored) {
  for (const char* const name : {"a", "my set.lscfg", ".kestrin-0123.new", "a..b", " a", "A & B = C + 100% (2).lsu",
                                 "\u00C5sa \u041E\u0440\u0442 \u5263.lscfg", "COM10.lscfg"})
    EXPECT_EQ(WhyNoWindowsName(name), "") << name;
}

TEST(WindowsName, SaysWhyANameIsNotStored) {
  struct Refused {
    std::string name;
    const char* why;
  };
  constexpr const char* kDevice = "Windows keeps this name for a device; choose another one";
  constexpr const char* kLetter = "Windows takes no name with any of < > : \" / \\ | ? *; choose another one";
  constexpr const char* kControl = "Windows takes no name with control characters; choose another one";
  constexpr const char* kEnd = "Windows takes no name that ends with a dot or a blank; choose another one";
  const Refused table[] = {{"CON.lscfg", kDevice}, {"a<b", kLetter},
                           {"a>b", kLetter},       {"a:b", kLetter},
                           {"a\"b", kLetter},      {"a/b", kLetter},
                           {"a\\b", kLetter},      {"a|b", kLetter},
                           {"a?b", kLetter},       {"a*b", kLetter},
                           {"a\nb", kControl},     {std::string("a\0b", 3), kControl},
                           {"a\x1F", kControl},    {"set.", kEnd},
                           {"set ", kEnd},         {".", kEnd},
                           {"..", kEnd},           {"", "it has no name; give it one"}};
  for (const Refused& row : table) EXPECT_EQ(WhyNoWindowsName(row.name), row.why) << row.name;
}

}  // namespace
}  // namespace kestrin::core::base
