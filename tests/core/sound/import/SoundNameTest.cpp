// SPDX-License-Identifier: MIT
#include "core/sound/import/SoundName.h"

#include <gtest/gtest.h>

#include "core/base/WindowsName.h"
#include "core/sound/import/FreeName.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

TEST(SoundNameTest, NamesThatEverySystemTakesStay) {
  for (const std::string name : {"hum", "swing 01", "Schwung \u00E4 2", "a.b.c", "\u97F3", "console", "com", "x "}) {
    EXPECT_EQ(NameForSound(name).name, name);
    EXPECT_EQ(NameForSound(name).why, "");
  }
}

TEST(SoundNameTest, OthersAreChangedAndToldWhy) {
  const std::string letters = "Windows takes no name with any of < > : \" / \\ | ? *";
  const std::string device = "Windows keeps its name for a device";
  const std::string control = "no file takes a name with control characters";
  const std::string unnamed = "it had no name";
  struct Row {
    std::string wanted;
    std::string name;
    std::string why;
  };
  const Row rows[] = {
      {"", "sound", unnamed},
      {"  ", "sound", unnamed},
      {"a/b\\c", "a_b_c", letters},
      {"what? <this>:|*\"", "what_ _this_____", letters},
      {"../../etc/passwd", "_._.._etc_passwd", "a file whose name begins with a dot is not shown everywhere"},
      {"con", "_con", device},
      {"NUL.old", "_NUL.old", device},
      {"com1", "_com1", device},
      {"line\nbreak", "line_break", control},
      {"esc\x1B[2J", "esc_[2J", control},
      {".hidden", "_hidden", "a file whose name begins with a dot is not shown everywhere"},
      {std::string(300, 'a'), std::string(120, 'a'), "its name is too long"}};
  for (const Row& row : rows) {
    const SoundName made = NameForSound(row.wanted);
    EXPECT_EQ(made.name, row.name);
    EXPECT_EQ(made.why, row.why) << row.wanted;
    EXPECT_EQ(base::WhyNoWindowsName(made.name + ".lsu"), "") << row.wanted;
    EXPECT_EQ(base::WhyNoWindowsName(made.name + " 2.lsu"), "") << row.wanted;
  }
}

TEST(SoundNameTest, NoCharacterIsCutInHalf) {
  std::string wanted = "x";
  while (wanted.size() < 200) wanted += "\u97F3";  // three bytes each
  const std::string name = NameForSound(wanted).name;
  EXPECT_EQ(name.size(), 118U);
  EXPECT_EQ(name, wanted.substr(0, 118));
}

TEST(FreeNameTest, ANumberIsAddedWhereThereIsAFileOfThatName) {
  const support::TemporaryFolder folder;
  FreeName first(folder.Path(), "hum");
  EXPECT_EQ(first.Next(), folder / "hum.lsu");
  EXPECT_FALSE(first.HasNumber());
  // Somebody was quicker.
  EXPECT_EQ(first.Next(), folder / "hum 2.lsu");
  EXPECT_TRUE(first.HasNumber());
  EXPECT_TRUE(first.MayGoOn());

  support::WriteBytes(folder / "HUM.LSU", "");
  support::WriteBytes(folder / "hum 2.lsu", "");
  std::filesystem::create_directory(folder / "hum 4.lsu");
  support::WriteBytes(folder / "hum 30.lsu", "");
  support::WriteBytes(folder / "hum.wav", "");
  FreeName second(folder.Path(), "Hum");
  EXPECT_EQ(second.Next(), folder / "Hum 3.lsu");
  EXPECT_EQ(second.Next(), folder / "Hum 5.lsu");
  EXPECT_EQ(FreeName(folder.Path(), "hu").Next(), folder / "hu.lsu");
}

}  // namespace
}  // namespace kestrin::core::sound
