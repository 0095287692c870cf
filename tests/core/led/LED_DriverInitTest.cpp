// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "LedRecords.h"
#include "core/led/LED_Driver.h"
#include "support/DecimalComma.h"

namespace kestrin::core::led {
namespace {

using testing::AllOf;
using testing::HasSubstr;

bool Accepts(const std::string& line) {
  LED_Driver driver;
  const base::Result<> valid = driver.Init(line);
  // A record is either valid or something is said about it.
  EXPECT_EQ(static_cast<bool>(valid), valid.Text().empty()) << line << "\n" << valid.Text();
  return static_cast<bool>(valid);
}

TEST(LED_DriverInit, ReadsEveryFieldOfTheExampleRecord) {
  LED_Driver driver;
  ASSERT_EQ(driver.Init(kExampleRecord).Text(), "");
  EXPECT_EQ(driver.LEDName, "Example RGB 3W");
  EXPECT_EQ(driver.LedCode, 12);
  EXPECT_EQ(driver.NrOfChannels, 3);
  EXPECT_EQ(driver.Period, 1000);
  EXPECT_EQ(driver.Voltage, 0);
  EXPECT_EQ(driver.OverDrive, 100);
  struct Row {
    Color color;
    int maxLum;
    int maxDC;
    double voltage;
  };
  int channel = 0;
  for (const Row& row : {Row{0x0000FF, 900, 80, 3.3}, Row{0x00C000, 1500, 90, 3.6}, Row{0xFF8080, 600, 85, 3.6}}) {
    ++channel;
    EXPECT_EQ(driver.GetChannelColor(channel), row.color) << channel;
    EXPECT_EQ(driver.GetMaxLum(channel), row.maxLum) << channel;
    EXPECT_EQ(driver.GetMaxDC(channel), row.maxDC) << channel;
    EXPECT_EQ(driver.GetChannelVoltage(channel), row.voltage) << channel;
  }
}

TEST(LED_DriverInit, AcceptsOneToFourChannels) {
  const std::vector<std::string> colors{"white", "red", "green", "amber"};
  for (std::size_t count = 1; count <= 4; ++count) {
    const LED_Driver driver =
        DriverOf(RecordOfColors({colors.begin(), colors.begin() + static_cast<std::ptrdiff_t>(count)}));
    EXPECT_EQ(driver.NrOfChannels, static_cast<int>(count));
  }
}

TEST(LED_DriverInit, ChecksEveryNumberAtBothBounds) {
  // Whole numbers are rounded first, ties to the even one; numbers with decimals are compared as they are.
  struct Row {
    const char* field;
    std::function<std::string&(RecordText&)> text;
    std::vector<std::string> accepted;
    std::vector<std::string> refused;
  };
  const Row rows[] = {
      {"code",
       [](RecordText& r) -> std::string& { return r.code; },
       {"-32768", "-1", "0", "32767", "32767.4", "-32768.5", "", "no number"},
       {"-32769", "32768", "32767.5", "70000", "-70000", "1e999", "-1e999"}},
      {"period",
       [](RecordText& r) -> std::string& { return r.period; },
       {"10", "9.51", "9.5", "10000", "10000.5"},
       {"9", "9.49", "10001", "10000.51", "0", "-10", "", "x10", "2147483648", "-2147483649", "99999999999", "1e999"}},
      {"ML",
       [](RecordText& r) -> std::string& { return r.channels[0].maxLum; },
       {"101", "100.51", "50000", "50000.5"},
       {"100", "100.5", "50001", "50000.51", "0", "-101", "", "x900", "2147483648", "-2147483649", "1e999"}},
      {"MDC",
       [](RecordText& r) -> std::string& { return r.channels[0].maxDC; },
       {"2", "1.5", "100", "100.5"},
       {"1", "1.49", "101", "100.51", "0", "-2", "", "x80", "2147483648", "-2147483649", "1e999"}},
      {"VL",
       [](RecordText& r) -> std::string& { return r.channels[0].voltage; },
       {"3", "3.0", "9", "9.0", "9.00", "3.0001"},
       {"2.9", "2.9999999", "9.1", "9.0000001", "0", "-3", "", "x3.3", "1e999"}},
  };
  for (const Row& row : rows) {
    for (const std::string& text : row.accepted) {
      RecordText record;
      row.text(record) = text;
      EXPECT_TRUE(Accepts(record.Text())) << row.field << " = " << text;
    }
    for (const std::string& text : row.refused) {
      RecordText record;
      row.text(record) = text;
      LED_Driver driver;
      EXPECT_THAT(driver.Init(record.Text()).Text(), HasSubstr(std::string(row.field) + " is ")) << text;
    }
  }
}

TEST(LED_DriverInit, ChecksTheChannelCountAtBothBounds) {
  for (const char* count : {"0", "0.5", "4.6", "5", "-1", "", "three", "32767", "32768", "-32769", "1e999"}) {
    // As many channels as the largest count would need, so that only the count can be wrong.
    RecordText record = RecordOfColors({"red", "green", "blue", "white", "amber"});
    record.channelCount = count;
    LED_Driver driver;
    EXPECT_THAT(driver.Init(record.Text()).Text(), AllOf(HasSubstr("record: channels is "), HasSubstr("1 to 4")))
        << count;
  }
  RecordText record = RecordOfColors({"red", "green", "blue", "white"});
  record.channelCount = "4.5";  // the tie goes to 4
  EXPECT_TRUE(Accepts(record.Text()));
}

TEST(LED_DriverInit, RoundsWholeNumbersWithTiesToTheEven) {
  RecordText record;
  record.code = "2.5";
  record.period = "1001.5";
  record.channels[0].maxLum = "900.5";
  record.channels[0].maxDC = "79.5";
  const LED_Driver driver = DriverOf(record);
  EXPECT_EQ(driver.LedCode, 2);
  EXPECT_EQ(driver.Period, 1002);
  EXPECT_EQ(driver.GetMaxLum(1), 900);
  EXPECT_EQ(driver.GetMaxDC(1), 80);
}

TEST(LED_DriverInit, TheStrongestChannelLimitsTheOverdrive) {
  RecordText record;
  record.channelCount = "2";
  record.channels.resize(2);
  record.channels[0].maxDC = "40";
  record.channels[1].maxDC = "64";
  const std::int32_t most = DriverOf(record).MostOverdrive();
  // 64 % times 156 % are 99.8 %, the nearest to 100 that a whole number of percent gives.
  EXPECT_EQ(most, 156);
}

TEST(LED_DriverInit, ReadsANumberUpToWhatCannotContinueIt) {
  RecordText record;
  record.code = " 1 2 volt";
  record.period = "1000 counts, or so";
  record.channels[0].maxLum = "9 00lm";
  record.channels[0].voltage = " 3.5V ";
  const LED_Driver driver = DriverOf(record);
  EXPECT_EQ(driver.LedCode, 12);
  EXPECT_EQ(driver.Period, 1000);
  EXPECT_EQ(driver.GetMaxLum(1), 900);
  EXPECT_EQ(driver.GetChannelVoltage(1), 3.5);
}

TEST(LED_DriverInit, ADecimalCommaEndsTheNumber) {
  RecordText record;
  record.channels[0].voltage = "3,9";
  EXPECT_EQ(DriverOf(record).GetChannelVoltage(1), 3);
  record.channels[0].voltage = "2,9";
  EXPECT_FALSE(Accepts(record.Text()));
}

TEST(LED_DriverInit, ThePointIsTheDecimalPointUnderALocaleWithAComma) {
  const support::DecimalComma locale;
  LED_Driver driver;
  ASSERT_TRUE(driver.Init(kExampleRecord));
  EXPECT_EQ(driver.GetChannelVoltage(2), 3.6);
  RecordText record;
  record.channels[0].voltage = "2.9";
  EXPECT_THAT(driver.Init(record.Text()).Text(), HasSubstr("VL is 2.9, allowed is 3 to 9"));
}

TEST(LED_DriverInit, KeepsTheNameAsItStands) {
  for (const char* name : {"", " Blade  ", "M\xC3\xBCller + S\xC3\xB6hne; ML MDC VL Coef _", "+Col"}) {
    RecordText record;
    record.name = name;
    EXPECT_EQ(DriverOf(record).LEDName, name);
  }
}

TEST(LED_DriverInit, RefusesLinesOfAnotherShape) {
  const std::string channel = ChannelText{}.Text();
  struct Row {
    const char* why;
    std::string line;
  };
  const Row rows[] = {
      {"nothing", ""},
      {"header line", "KestrinLEDConfigurator#2"},
      {"one # only", "Blade@12#1" + channel},
      {"three #", "Blade@12#1#1000#" + channel},
      {"# in a channel", "Blade@12#1#1000" + channel + "#"},
      {"no @", "Blade12#1#1000" + channel},
      {"two @", "Blade12#1#1000" + channel},
      {"two @ around the code", "Blade@12@#1#1000" + channel},
      {"no + after the period", "Blade@12#1#1000"},
      {"a + but no channel", "Blade@12#1#1000+"},
      {"+Col without =", "Blade@12#1#1000+ColredML900MDC80VL3.3Coef0_0_0_0;0_0_0_0;"},
      {"+col in small letters", "Blade@12#1#1000+col=redML900MDC80VL3.3Coef0_0_0_0;0_0_0_0;"},
      {"+Col= in the name", "+Col=@12#1#1000" + channel},
  };
  for (const Row& row : rows) EXPECT_FALSE(Accepts(row.line)) << row.why;
}

TEST(LED_DriverInit, AnAtSignAfterTheFirstHashIsOnlyText) {
  EXPECT_TRUE(Accepts("Blade@12#1@#1000@" + ChannelText{}.Text() + "@"));
}

TEST(LED_DriverInit, TakesThePeriodFromBeforeTheFirstPlus) {
  LED_Driver driver;
  ASSERT_TRUE(driver.Init("Blade@12#1#500+700" + ChannelText{}.Text()));
  EXPECT_EQ(driver.Period, 500);
}

TEST(LED_DriverInit, NeedsAsManyChannelsAsItCounts) {
  for (int counted = 1; counted <= 4; ++counted)
    for (std::size_t described = 0; described <= 5; ++described) {
      RecordText record;
      record.channelCount = std::to_string(counted);
      record.channels.assign(described, ChannelText{});
      EXPECT_EQ(Accepts(record.Text()), described == static_cast<std::size_t>(counted))
          << counted << " counted, " << described << " described";
    }
}

TEST(LED_DriverInit, ColourWordsAreExact) {
  for (const char* word : {"Red", "RED", "red ", " red", "", "yellow", "reds", "re", "White", "Amber", "0x0000FF"}) {
    RecordText record;
    record.channels[0].color = word;
    LED_Driver driver;
    EXPECT_THAT(driver.Init(record.Text()).Text(), HasSubstr("white, red, green, blue, amber")) << word;
  }
}

TEST(LED_DriverInit, EachKeyOfAChannelStandsExactlyOnce) {
  const std::string head = "Blade@12#1#1000+Col=";
  const std::vector<std::string> wrong = {
      "redMDC80VL3.3Coef0_0_0_0;0_0_0_0;",            // no ML
      "redML900VL3.3Coef0_0_0_0;0_0_0_0;",            // no MDC
      "redML900MDC80Coef0_0_0_0;0_0_0_0;",            // no VL
      "redML900MDC80VL3.30_0_0_0;0_0_0_0;",           // no Coef
      "redML900ML900MDC80VL3.3Coef0_0_0_0;0_0_0_0;",  // ML twice
      "redML900MDC80MDC80VL3.3Coef0_0_0_0;0_0_0_0;",  // MDC twice
      "redML900MDC80VL3.3VL3.3Coef0_0_0_0;0_0_0_0;",  // VL twice
      "redML900MDC80VL3.3CoefCoef0_0_0_0;0_0_0_0;",   // Coef twice
      "redML900MDC80VL3.3Coef0_0_0_0;0_0_0_0;ML",     // ML again at the end
      "redML900MDC80VL3.3Coef0_0_0_0;0_0_0_0;MDC",    // MDC again at the end
      "redML900MDC80VL3.3Coef0_0_0_0;0_0_0_0;VL",     // VL again at the end
      "redML900MDC80VL3.3Coef0_0_0_0;0_0_0_0;Coef",   // Coef again at the end
      "redMDC80ML900VL3.3Coef0_0_0_0;0_0_0_0;",       // MDC before ML
      "redml900mdc80vl3.3coef0_0_0_0;0_0_0_0;",       // small letters
      "redML900MDC80VL3.3Coef0_0_0_0;0_0_0_0",        // one ;
      "redML900MDC80VL3.3Coef0_0_0_0",                // no ;
      "redML900MDC80VL3.3Coef0_0_0_0;0_0_0_0;;",      // three ;
  };
  ASSERT_TRUE(Accepts(head + "redML900MDC80VL3.3Coef0_0_0_0;0_0_0_0;"));
  for (const std::string& channel : wrong) EXPECT_FALSE(Accepts(head + channel)) << channel;
}

TEST(LED_DriverInit, AnythingElseMayFollowTheSecondSemicolon) {
  EXPECT_TRUE(Accepts(RecordText{}.Text() + " a remark_with_underscores, 3.0 + 4"));
  EXPECT_TRUE(Accepts(RecordText{}.Text() + "\r"));
  RecordText two = RecordOfColors({"red", "green"});
  const std::string first = two.channels[0].Text();
  EXPECT_TRUE(Accepts("Blade@12#2#1000" + first + " first one " + two.channels[1].Text() + " second one"));
}

TEST(LED_DriverInit, EachCoefficientGroupHasExactlyFourNumbers) {
  for (const char* group : {"", "1", "0_0", "0_0_0", "0_0_0_0_0", "0_0_0_0_"}) {
    RecordText record;
    record.channels[0].lumCoef = group;
    EXPECT_FALSE(Accepts(record.Text())) << "first group " << group;
    record = RecordText{};
    record.channels[0].dutyCoef = group;
    EXPECT_FALSE(Accepts(record.Text())) << "second group " << group;
  }
}

TEST(LED_DriverInit, CoefficientsHaveNoRangeButMustBeNumbersThatCanBeHeld) {
  for (const char* group : {"___", "-1_-2_-3_-4", "1e300_1e-300_0.5_.5", "a_b_c_d", "1e+5_0_0_0"}) {
    RecordText record;
    record.channels[0].lumCoef = group;
    record.channels[0].dutyCoef = group;
    EXPECT_TRUE(Accepts(record.Text())) << group;
  }
  for (const char* group : {"1e999_0_0_0", "0_0_0_-1e999"}) {
    RecordText record;
    record.channels[0].dutyCoef = group;
    EXPECT_FALSE(Accepts(record.Text())) << group;
    record = RecordText{};
    record.channels[0].lumCoef = group;
    EXPECT_FALSE(Accepts(record.Text())) << group;
  }
}

TEST(LED_DriverInit, TheDutyCycleCubicIsTheSecondGroupWithTheHighestPowerFirst) {
  // At luminance 2 the four powers are 8, 4, 2 and 1; with a period of 10000, t = 100 * d + 1.
  struct Row {
    const char* group;
    int toff;
  };
  for (const Row& row :
       {Row{"1_0_0_0", 801}, Row{"0_1_0_0", 401}, Row{"0_0_1_0", 201}, Row{"0_0_0_1", 101}, Row{"1_2_3_4", 2601}}) {
    RecordText record;
    record.period = "10000";
    record.channels[0].lumCoef = "9_9_9_9";
    record.channels[0].dutyCoef = row.group;
    LED_Driver driver = DriverOf(record);
    driver.OverDrive = 100;
    EXPECT_EQ(driver.GetToff(SetType::Luminance, 1, 2), row.toff) << row.group;
  }
}

TEST(LED_DriverInit, SetsOverdriveOnlyForMoreThanOneChannel) {
  LED_Driver driver;
  driver.OverDrive = 73;
  driver.Voltage = 7.4;
  ASSERT_TRUE(driver.Init(RecordText{}.Text()));
  EXPECT_EQ(driver.OverDrive, 73);
  ASSERT_TRUE(driver.Init(RecordOfColors({"red", "green"}).Text()));
  EXPECT_EQ(driver.OverDrive, 100);
  EXPECT_EQ(driver.Voltage, 7.4);
}

TEST(LED_DriverInit, OverwritesWhatTheObjectHeldBefore) {
  LED_Driver driver;
  ASSERT_TRUE(driver.Init(kExampleRecord));
  RecordText record = RecordOfColors({"amber"});
  record.name = "Other";
  record.code = "-5";
  record.period = "250";
  record.channels[0].maxLum = "333";
  ASSERT_TRUE(driver.Init(record.Text()));
  EXPECT_EQ(driver.LEDName, "Other");
  EXPECT_EQ(driver.LedCode, -5);
  EXPECT_EQ(driver.Period, 250);
  EXPECT_EQ(driver.NrOfChannels, 1);
  EXPECT_EQ(driver.GetMaxLum(1), 333);
  EXPECT_EQ(driver.GetMaxLum(3), 333);
  for (int channel = 2; channel <= 4; ++channel) EXPECT_EQ(driver.GetChannelColor(channel), 0) << channel;
  EXPECT_EQ(driver.FindColor(0x00C000), 0);
}

TEST(LED_DriverInit, ARefusedRecordKeepsWhatWasReadBeforeTheFailure) {
  LED_Driver driver;
  RecordText good;
  good.channels[0].maxLum = "444";
  ASSERT_TRUE(driver.Init(good.Text()));
  driver.OverDrive = 60;
  RecordText bad = RecordOfColors({"blue", "green"});
  bad.name = "Bad";
  bad.code = "77";
  bad.period = "2000";
  bad.channels[0].maxLum = "555";
  bad.channels[1].maxDC = "101";
  EXPECT_FALSE(driver.Init(bad.Text()));
  EXPECT_EQ(driver.LEDName, "Bad");
  EXPECT_EQ(driver.LedCode, 77);
  EXPECT_EQ(driver.NrOfChannels, 2);
  EXPECT_EQ(driver.Period, 2000);
  EXPECT_EQ(driver.GetChannelColor(1), kBlue);
  EXPECT_EQ(driver.GetMaxLum(1), 555);
  EXPECT_EQ(driver.GetMaxDC(2), 101);
  EXPECT_EQ(driver.OverDrive, 60);
  // The name alone is in front of the first number.
  EXPECT_FALSE(driver.Init("Worse@99999#1#1000" + ChannelText{}.Text()));
  EXPECT_EQ(driver.LEDName, "Worse");
  EXPECT_EQ(driver.LedCode, 77);
}

TEST(LED_DriverInit, EveryOperationIsSafeAfterARefusedRecord) {
  const std::string wildPeriods[] = {"2147483647", "-2147483648", "99999"};
  const std::string wildCounts[] = {"32767", "-32768", "5", "0"};
  std::vector<std::string> lines;
  for (const std::string& count : wildCounts) lines.push_back("Wild@1#" + count + "#1000" + ChannelText{}.Text());
  for (const std::string& period : wildPeriods) lines.push_back("Wild@1#1#" + period + ChannelText{}.Text());
  lines.emplace_back("Wild@1#1#1000+Col=redML-2147483648MDC80VL3.3Coef0_0_0_0;0_0_0_0;");
  lines.emplace_back("Wild@1#1#1000+Col=redML0MDC80VL3.3Coef0_0_0_0;0_0_0_0;");
  for (const std::string& line : lines) {
    LED_Driver driver;
    driver.OverDrive = 100;
    ASSERT_FALSE(driver.Init(line)) << line;
    for (int channel = -1; channel <= 6; ++channel) {
      (void)driver.GetMaxDC(channel);
      (void)driver.GetMaxLum(channel);
      for (const SetType type : {SetType::DutyCycle, SetType::Luminance, SetType::PercentOfMaxDC}) {
        (void)driver.GetTon(type, channel, 50);
        try {
          (void)driver.GetToff(type, channel, 50);
        } catch (const std::overflow_error&) {
        }
      }
    }
    try {
      (void)driver.ConvertRGBtoLuminance(kRed, 255, false, false, false);
      (void)driver.ConvertLuminanceToRGB(kRed, 100);
    } catch (const std::overflow_error&) {
    }
  }
}

TEST(LED_DriverInit, SaysForPeopleWhatIsWrongAndWhatIsAllowed) {
  struct Row {
    std::string line;
    std::string problem;
  };
  const auto withSecondChannel = [](const std::function<void(ChannelText&)>& change) {
    RecordText record = RecordOfColors({"red", "green"});
    change(record.channels[1]);
    return record.Text();
  };
  const Row rows[] = {
      {"Blade@12", "record: expected 2 of \"#\", found 0"},
      {"Blade#1#1000" + ChannelText{}.Text(), "record: expected 1 of \"@\", found 0"},
      {"Blade@40000#1#1000" + ChannelText{}.Text(), "record: code is 40000, allowed is -32768 to 32767"},
      {"Blade@12#5#1000" + ChannelText{}.Text(), "record: channels is 5, allowed is 1 to 4"},
      {"Blade@12#1#9" + ChannelText{}.Text(), "record: period is 9, allowed is 10 to 10000"},
      {"Blade@12#1#1000", "record: expected a \"+\" after the period"},
      {"Blade@12#2#1000" + ChannelText{}.Text(), "record: expected 2 of \"+Col=\", found 1"},
      {withSecondChannel([](ChannelText& c) { c.color = "pink"; }),
       "channel 2: the colour word is unknown, allowed are white, red, green, blue, amber"},
      {withSecondChannel([](ChannelText& c) { c.maxLum = "50001"; }),
       "channel 2: ML is 50001, allowed is 101 to 50000"},
      {withSecondChannel([](ChannelText& c) { c.maxDC = "1"; }), "channel 2: MDC is 1, allowed is 2 to 100"},
      {withSecondChannel([](ChannelText& c) { c.voltage = "9.1"; }), "channel 2: VL is 9.1, allowed is 3 to 9"},
      {withSecondChannel([](ChannelText& c) { c.dutyCoef = "0_0_0"; }),
       "channel 2, second Coef group: expected 3 of \"_\", found 2"},
      {withSecondChannel([](ChannelText& c) { c.lumCoef = "0_0_0_0_0"; }),
       "channel 2, first Coef group: expected 3 of \"_\", found 4"},
      {withSecondChannel([](ChannelText& c) { c.lumCoef = "0_0_1e999_0"; }),
       "channel 2, first Coef group: a coefficient is too large a number"},
      {withSecondChannel([](ChannelText& c) { c.dutyCoef = "-1e999_0_0_0"; }),
       "channel 2, second Coef group: a coefficient is too large a number"},
      {"Blade@12#1#100000" + ChannelText{}.Text(), "record: period is 100000, allowed is 10 to 10000"},
      {"Blade@12#1#1e300" + ChannelText{}.Text(), "record: period is too large a number, allowed is 10 to 10000"},
      {"Blade@12#1#1e999" + ChannelText{}.Text(), "record: period is too large a number, allowed is 10 to 10000"},
      {withSecondChannel([](ChannelText& c) { c.dutyCoef += ";"; }), "channel 2: expected 2 of \";\", found 3"},
  };
  for (const Row& row : rows) {
    LED_Driver driver;
    EXPECT_EQ(driver.Init(row.line).Text(), row.problem);
  }
}

TEST(LED_DriverInit, ARecordThatIsRefusedIsNotValidAndTheNextOneIsReadAllTheSame) {
  LED_Driver driver;
  const base::Result<> refused = driver.Init("nonsense");
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.Why().kind, base::FailureKind::NotValid);
  EXPECT_TRUE(driver.Init(kExampleRecord));
}

}  // namespace
}  // namespace kestrin::core::led
