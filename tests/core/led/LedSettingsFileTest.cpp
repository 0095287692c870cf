// SPDX-License-Identifier: MIT
#include "core/led/LedSettingsFile.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "support/DecimalComma.h"
#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::core::led {
namespace {

using support::ReadBytes;
using support::WriteBytes;
using testing::HasSubstr;

const std::string kMagicLine = "KestdrinLEDSettings#1\r\n";
const std::string kIdleLine = "PULSE+Low=40_0_0_0+High=255_0_0_0+Times=1000_1000_500_500\r\n";
const std::string kFocLine = "FOC=255_255_255_0+Times=40_60_3\r\n";

std::vector<int> Levels(const LED_Pulse& pulse, std::int16_t (LED_Pulse::*get)(int) const) {
  return {(pulse.*get)(1), (pulse.*get)(2), (pulse.*get)(3), (pulse.*get)(4)};
}
std::vector<int> Lows(const LED_Pulse& pulse) { return Levels(pulse, &LED_Pulse::GetLow); }
std::vector<int> Highs(const LED_Pulse& pulse) { return Levels(pulse, &LED_Pulse::GetHigh); }
std::vector<double> Times(const LED_Pulse& pulse) { return {pulse.Ton, pulse.Toff, pulse.Trise, pulse.Tfall}; }

class LedSettingsFileTest : public ::testing::Test {
 protected:
  /// Reads a file of that text as far as it goes.
  bool Load(const std::string& text) {
    m_idle = m_foc = {};
    LedSettingsFile file;
    base::Result<> valid = file.Open(WriteBytes(m_folder / "blade.ldset", text));
    if (valid) valid = file.ReadIdle(m_idle);
    if (valid) valid = file.ReadFoc(m_foc);
    m_problem = valid.Text();
    return static_cast<bool>(valid);
  }

  support::TemporaryFolder m_folder;
  LED_Pulse m_idle;
  LED_Pulse m_foc;
  std::string m_problem;
};

TEST_F(LedSettingsFileTest, ReadsTheDocumentedExample) {
  for (const bool withCr : {true, false}) {
    std::string text = kMagicLine + kIdleLine + kFocLine;
    if (!withCr) text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    ASSERT_TRUE(Load(text)) << m_problem;
    EXPECT_EQ(Lows(m_idle), (std::vector<int>{40, 0, 0, 0}));
    EXPECT_EQ(Highs(m_idle), (std::vector<int>{255, 0, 0, 0}));
    EXPECT_EQ(Times(m_idle), (std::vector<double>{1000, 1000, 500, 500}));
    EXPECT_EQ(m_idle.NRep, 0);
    EXPECT_EQ(Highs(m_foc), (std::vector<int>{255, 255, 255, 0}));
    EXPECT_EQ(Lows(m_foc), (std::vector<int>{0, 0, 0, 0}));
    EXPECT_EQ(Times(m_foc), (std::vector<double>{40, 60, 0, 0}));
    EXPECT_EQ(m_foc.NRep, 3);
  }
}

TEST_F(LedSettingsFileTest, TakesLinesOfTheRightShapeWhateverTheirValues) {
  struct Row {
    std::string text;
    int low2;
    double Tfall;
    int flash1;
    int NRep;
  };
  const Row rows[] = {
      // Text before a key means nothing.
      {kMagicLine + "before PULSE+Low=1_2_3_4+High=5_6_7_8+Times=1_2_3_4\r\nand before FOC=9_9_9_9+Times=1_2_3\r\n", 2,
       4, 9, 3},
      {kMagicLine + "PULSE+Low=1_300_3_4+High=5_6_7_8+Times=1_2_3_-4\r\nFOC=-5_9_9_9+Times=1_2_0\r\n", 300, -4, -5, 0},
      // Ties go to the even number; a field without a number is 0.
      {kMagicLine + "PULSE+Low=1_2.5_3_4+High=5_6_7_8+Times=1_2_3_0.125\r\nFOC=3.5_9_9_9+Times=1_2_x\r\n", 2, 0.125, 4,
       0},
      {kMagicLine + "PULSE+Low=1__3_4+High=5_6_7_8+Times=___\r\nFOC=32767.4_9_9_9+Times=1_2_-32768.5\r\n", 0, 0, 32767,
       -32768},
      // What follows the third line means nothing, nor does the last line need an end.
      {kMagicLine + kIdleLine + kFocLine + "more\r\n", 0, 500, 255, 3},
      {kMagicLine + kIdleLine + "FOC=255_255_255_0+Times=40_60_3", 0, 500, 255, 3},
  };
  for (const Row& row : rows) {
    ASSERT_TRUE(Load(row.text)) << m_problem;
    EXPECT_EQ(m_idle.GetLow(2), row.low2) << row.text;
    EXPECT_EQ(m_idle.Tfall, row.Tfall) << row.text;
    EXPECT_EQ(m_foc.GetHigh(1), row.flash1) << row.text;
    EXPECT_EQ(m_foc.NRep, row.NRep) << row.text;
  }
}

TEST_F(LedSettingsFileTest, RefusesEveryOtherShapeAndSaysWhere) {
  struct Row {
    std::string text;
    const char* problem;
  };
  const Row rows[] = {
      {"", "line 1: the file ends before it"},
      {"KestrinLEDSettings#1\r\n" + kIdleLine + kFocLine, "line 1: \"KestdrinLEDSettings#1\" is expected"},
      {"kestdrinLEDSettings#1\r\n" + kIdleLine + kFocLine, "line 1: "},
      {"KestdrinLEDSettings#2\r\n" + kIdleLine + kFocLine, "line 1: "},
      {"KestdrinLEDSettings#1 \r\n" + kIdleLine + kFocLine, "line 1: "},
      {"\r\n" + kMagicLine + kIdleLine + kFocLine, "line 1: "},
      {kMagicLine, "line 2: the file ends before it"},
      {kMagicLine + "\r\n" + kIdleLine + kFocLine, "line 2: one \"PULSE+Low=\" is expected, there are 0"},
      {kMagicLine + "PULSE+Low=1_2_3_4PULSE+Low=1_2_3_4+High=5_6_7_8+Times=1_2_3_4\r\n" + kFocLine,
       "line 2: one \"PULSE+Low=\" is expected, there are 2"},
      {kMagicLine + "pulse+Low=1_2_3_4+High=5_6_7_8+Times=1_2_3_4\r\n" + kFocLine, "line 2: one \"PULSE+Low=\""},
      {kMagicLine + "PULSE+Low=1_2_3_4+Times=1_2_3_4\r\n" + kFocLine, "line 2: one \"+High=\""},
      {kMagicLine + "PULSE+Low=1_2_3_4+High=5_6_7_8\r\n" + kFocLine, "line 2: one \"+Times=\""},
      {kMagicLine + "PULSE+Low=1_2_3+High=5_6_7_8+Times=1_2_3_4\r\n" + kFocLine,
       "line 2: 4 numbers with \"_\" between them are expected, there are 3 in \"1_2_3\""},
      {kMagicLine + "PULSE+Low=1_2_3_4_5+High=5_6_7_8+Times=1_2_3_4\r\n" + kFocLine, "there are 5"},
      {kMagicLine + "PULSE+Low=1_2_3_4+High=5_6_7+Times=1_2_3_4\r\n" + kFocLine, "there are 3 in \"5_6_7\""},
      {kMagicLine + "PULSE+Low=1_2_3_4+High=5_6_7_8+Times=1_2_3\r\n" + kFocLine, "there are 3 in \"1_2_3\""},
      {kMagicLine + "PULSE+Low=1_2_3_4+High=5_6_7_8+Times=1_2_3_4_5\r\n" + kFocLine, "there are 5 in"},
      {kMagicLine + "PULSE+Low=1_2_3_32767.5+High=5_6_7_8+Times=1_2_3_4\r\n" + kFocLine,
       "line 2: 32767.5 is too large a number here"},
      {kMagicLine + "PULSE+Low=1_2_3_4+High=5_6_7_8+Times=1_2_3_1e999\r\n" + kFocLine,
       "line 2: \"1e999\" is too large a number"},
      {kMagicLine + kIdleLine, "line 3: the file ends before it"},
      {kMagicLine + kIdleLine + "\r\n" + kFocLine, "line 3: one \"FOC=\" is expected, there are 0"},
      {kMagicLine + kIdleLine + "FOC=1_2_3_4FOC=1_2_3_4+Times=1_2_3\r\n",
       "line 3: one \"FOC=\" is expected, there are 2"},
      {kMagicLine + kIdleLine + "FOC=1_2_3_4\r\n", "line 3: one \"+Times=\""},
      {kMagicLine + kIdleLine + "FOC=1_2_3+Times=1_2_3\r\n", "line 3: 4 numbers"},
      {kMagicLine + kIdleLine + "FOC=1_2_3_4+Times=1_2_3_4\r\n", "line 3: 3 numbers"},
      {kMagicLine + kIdleLine + "FOC=1_2_3_4+Times=1_2\r\n", "line 3: 3 numbers"},
      {kMagicLine + kIdleLine + "FOC=1_2_3_-32769+Times=1_2_3\r\n", "line 3: -32769 is too large"},
      {kMagicLine + kIdleLine + "FOC=1_2_3_4+Times=1_2_40000\r\n", "line 3: 40000 is too large"},
      {kMagicLine + kIdleLine + std::string(1, '\0') + kFocLine, "not a text file"},
      {kMagicLine + kIdleLine + kFocLine + std::string(base::TextLines::kLargestFile, '\n'), "too large"},
  };
  for (const Row& row : rows) {
    EXPECT_FALSE(Load(row.text)) << row.problem;
    EXPECT_THAT(m_problem, HasSubstr(row.problem));
    EXPECT_THAT(m_problem, HasSubstr("blade.ldset"));
  }
}

TEST_F(LedSettingsFileTest, WhatWasReadBeforeTheFaultStays) {
  EXPECT_FALSE(Load(kMagicLine + "PULSE+Low=1_2_3_4+High=5_6_7_8+Times=1_2_3\r\n" + kFocLine));
  EXPECT_EQ(Lows(m_idle), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(Highs(m_idle), (std::vector<int>{5, 6, 7, 8}));
  EXPECT_EQ(Times(m_idle), (std::vector<double>{0, 0, 0, 0}));
}

TEST_F(LedSettingsFileTest, FilesThatCannotBeReadSayWhy) {
  LedSettingsFile file;
  EXPECT_THAT(file.Open(m_folder / "none.ldset").Text(), HasSubstr("none.ldset: there is no such file"));
  EXPECT_THAT(file.Open(m_folder.Path()).Text(), HasSubstr("not a file"));
}

LED_Pulse SomePulse() {
  LED_Pulse pulse;
  for (std::int16_t channel = 1; channel <= 4; ++channel) {
    pulse.SetLow(channel, static_cast<std::int16_t>(10 * channel));
    pulse.SetHigh(channel, static_cast<std::int16_t>(63 * channel));
  }
  pulse.Ton = 1500;
  pulse.Toff = 2.5;
  pulse.Trise = 1234567;
  pulse.Tfall = 1e-7;
  pulse.NRep = 7;
  return pulse;
}

TEST_F(LedSettingsFileTest, WritesThreeLinesWithCrLfWhateverTheLocale) {
  const support::DecimalComma locale;
  const auto path = m_folder / "saved.ldset";
  EXPECT_EQ(LedSettingsFile::Save(path, SomePulse(), SomePulse(), support::AnyDisk()).Text(), "");
  EXPECT_EQ(ReadBytes(path),
            "KestdrinLEDSettings#1\r\n"
            "PULSE+Low=10_20_30_40+High=63_126_189_252+Times=1500_2.5_1234567_0.0000001\r\n"
            "FOC=63_126_189_252+Times=1500_2.5_7\r\n");
}

TEST_F(LedSettingsFileTest, WhatItWritesLoadsBackAsTheSame) {
  const support::DecimalComma locale;
  const auto path = m_folder / "saved.ldset";
  ASSERT_EQ(LedSettingsFile::Save(path, SomePulse(), SomePulse(), support::AnyDisk()).Text(), "");
  ASSERT_TRUE(Load(ReadBytes(path))) << m_problem;
  EXPECT_EQ(Lows(m_idle), Lows(SomePulse()));
  EXPECT_EQ(Highs(m_idle), Highs(SomePulse()));
  EXPECT_EQ(Times(m_idle), Times(SomePulse()));
  EXPECT_EQ(Highs(m_foc), Highs(SomePulse()));
  EXPECT_EQ(m_foc.Ton, 1500);
  EXPECT_EQ(m_foc.Toff, 2.5);
  EXPECT_EQ(m_foc.NRep, 7);
}

TEST_F(LedSettingsFileTest, AFileThatCannotBeWrittenIsNamedAndTheOldOneStays) {
  const auto path = m_folder / "missing" / "saved.ldset";
  EXPECT_THAT(LedSettingsFile::Save(path, {}, {}, support::AnyDisk()).Text(), HasSubstr("saved.ldset"));
  // A folder in the way cannot be replaced.
  const auto taken = m_folder / "taken.ldset";
  std::filesystem::create_directory(taken);
  const base::Result<> saved = LedSettingsFile::Save(taken, {}, {}, support::AnyDisk());
  ASSERT_FALSE(saved);
  EXPECT_EQ(saved.Why().kind, base::FailureKind::InTheWay);
  EXPECT_THAT(saved.Why().text, HasSubstr("taken.ldset"));
  EXPECT_TRUE(std::filesystem::is_directory(taken));
}

}  // namespace
}  // namespace kestrin::core::led
