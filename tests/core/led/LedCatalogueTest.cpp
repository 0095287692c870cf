// SPDX-License-Identifier: MIT
#include "core/led/LedCatalogue.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "LedRecords.h"
#include "support/TestFiles.h"

namespace kestrin::core::led {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class LedCatalogueTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::filesystem::path File() const { return m_folder / "KestrinLEDS.ldcfg"; }
  void Write(const std::string& text) const { support::WriteBytes(File(), text); }
  /// The same, as if it had been written so many hours ago.
  void WriteHoursAgo(int hours, const std::string& text) const {
    Write(text);
    std::filesystem::last_write_time(File(), m_now - std::chrono::hours(hours));
  }
  /// The names of the types; what is wrong instead when something is.
  [[nodiscard]] std::vector<std::string> Names() {
    const base::Result<std::vector<LED_Driver>> types = m_catalogue.Types();
    if (!types) return {types.Text()};
    std::vector<std::string> names;
    for (const LED_Driver& type : *types) names.push_back(type.LEDName);
    return names;
  }

  support::TemporaryFolder m_folder;
  LedCatalogue m_catalogue{m_folder.Path()};
  const std::filesystem::file_time_type m_now = std::filesystem::file_time_type::clock::now();
};

TEST_F(LedCatalogueTest, ReadsAllTypesInTheirOrder) {
  RecordText two = RecordOfColors({"amber", "white"});
  two.name = "Second";
  Write("KestrinLEDConfigurator#2\r\n" + std::string(kExampleRecord) + "\r\n\r\n\n" + two.Text() + "\n");
  EXPECT_THAT(Names(), ElementsAre("Example RGB 3W", "Second"));
  EXPECT_EQ(m_catalogue.Types()->at(1).NrOfChannels, 2);
}

TEST_F(LedCatalogueTest, TheHeaderIsTheWordAndTheNumberTwo) {
  const std::string record = std::string(kExampleRecord) + "\r\n";
  for (const char* header : {"KestrinLEDConfigurator#2", "KestrinLEDConfigurator#2.0", "KestrinLEDConfigurator# 2 ",
                             "KestrinLEDConfigurator#2nd", "\xEF\xBB\xBFKestrinLEDConfigurator#2"}) {
    Write(header + ("\r\n" + record));
    EXPECT_THAT(Names(), ElementsAre("Example RGB 3W")) << header;
  }
  for (const char* header : {"KestrinLEDConfigurator#3", "KestrinLEDConfigurator#1.9", "KestrinLEDConfigurator#2.1",
                             "KestrinLEDConfigurator#-2", "KestrinLEDConfigurator#", "KestrinLEDConfigurator",
                             "KestrinLEDConfigurator#2#", "kestrinledconfigurator#2", "KESTRINLEDConfigurator#2",
                             " KestrinLEDConfigurator#2", "KestrinLEDConfigurator #2", ""}) {
    Write(header + ("\r\n" + record));
    EXPECT_THAT(Names(), ElementsAre(HasSubstr("KestrinLEDS.ldcfg, line 1: \"KestrinLEDConfigurator#2\""))) << header;
  }
}

TEST_F(LedCatalogueTest, AProblemNamesLineChannelAndField) {
  RecordText bad = RecordOfColors({"red", "Red"});
  Write("KestrinLEDConfigurator#2\r\n" + std::string(kExampleRecord) + "\r\n\r\n" + bad.Text() + "\r\n");
  EXPECT_THAT(Names(), ElementsAre(HasSubstr("KestrinLEDS.ldcfg, line 4, channel 2: the colour word is unknown")));
  EXPECT_EQ(m_catalogue.Types().Why().kind, base::FailureKind::NotValid);
  ASSERT_EQ(m_catalogue.Records().size(), 2u);
  EXPECT_TRUE(m_catalogue.Records()[0].type) << "a fault does not reach the lines around it";
  EXPECT_FALSE(m_catalogue.Records()[1].type);
}

TEST_F(LedCatalogueTest, WithoutATypeOrAFileItIsNotValid) {
  EXPECT_THAT(Names(), ElementsAre(HasSubstr("KestrinLEDS.ldcfg: there is no such file")));
  Write("KestrinLEDConfigurator#2\r\n\r\n");
  EXPECT_THAT(Names(), ElementsAre(HasSubstr("line 2: an LED type is expected")));
  Write("\r\nKestrinLEDConfigurator#2\r\n" + std::string(kExampleRecord) + "\r\n");
  EXPECT_THAT(Names(), ElementsAre(HasSubstr("line 1: \"KestrinLEDConfigurator#2\" is expected")));
  std::filesystem::remove(File());
  EXPECT_FALSE(m_catalogue.Read());
  EXPECT_TRUE(m_catalogue.Lines().empty());
  EXPECT_TRUE(m_catalogue.Records().empty());
}

TEST_F(LedCatalogueTest, TheNameStandsBeforeTheFirstAt) {
  Write("KestrinLEDConfigurator#2\r\nA b@c@d\r\n@x\r\nnone\r\n\r\n");
  ASSERT_TRUE(m_catalogue.Read());
  const auto lines = m_catalogue.Lines();
  ASSERT_EQ(lines.size(), 4u) << "empty lines mean nothing";
  EXPECT_FALSE(lines[0].IsOf("KestrinLEDConfigurator#2"));
  EXPECT_TRUE(lines[1].IsOf("A b"));
  EXPECT_FALSE(lines[1].IsOf("A b@c"));
  EXPECT_FALSE(lines[1].IsOf("a b"));
  EXPECT_TRUE(lines[2].IsOf(""));
  EXPECT_FALSE(lines[3].IsOf("none"));
  EXPECT_FALSE(lines[3].IsOf(""));
  EXPECT_EQ(lines[1].text, "A b@c@d");
  EXPECT_EQ(m_catalogue.Records().size(), 3u);
  EXPECT_EQ(m_catalogue.Records()[0].text, "A b@c@d");
}

TEST_F(LedCatalogueTest, IsReadOnceAndThenNotUntilTheFileHasChanged) {
  const auto catalogue = [](const char* name) {
    RecordText record = RecordOfColors({"red"});
    record.name = name;
    return "KestrinLEDConfigurator#2\r\n" + record.Text() + "\r\n";
  };
  WriteHoursAgo(2, catalogue("One"));
  EXPECT_THAT(Names(), ElementsAre("One"));
  // As long and as old: nobody could tell without reading it.
  WriteHoursAgo(2, catalogue("Two"));
  EXPECT_THAT(Names(), ElementsAre("One"));
  WriteHoursAgo(1, catalogue("Two"));
  EXPECT_THAT(Names(), ElementsAre("Two")) << "another time";
  WriteHoursAgo(1, catalogue("Three"));
  EXPECT_THAT(Names(), ElementsAre("Three")) << "another length";
  WriteHoursAgo(1, "no catalogue");
  EXPECT_THAT(Names(), ElementsAre(HasSubstr("line 1")));
  std::filesystem::remove(File());
  EXPECT_THAT(Names(), ElementsAre(HasSubstr("there is no such file")));
  WriteHoursAgo(1, catalogue("Three"));
  EXPECT_THAT(Names(), ElementsAre("Three"));
}

TEST_F(LedCatalogueTest, WhatWasWrittenJustNowMayBeWrittenOnceMoreWithinTheDisksStep) {
  const auto soon = m_now + std::chrono::hours(1);
  for (const char* name : {"One", "Two"}) {
    RecordText record = RecordOfColors({"red"});
    record.name = name;
    Write("KestrinLEDConfigurator#2\r\n" + record.Text() + "\r\n");
    // Whatever the disk's step and however slow this computer is.
    std::filesystem::last_write_time(File(), soon);
    EXPECT_THAT(Names(), ElementsAre(name));
  }
}

TEST_F(LedCatalogueTest, TheStampChangesWithTheFile) {
  const std::string none = m_catalogue.Stamp();
  Write("one");
  const std::string one = m_catalogue.Stamp();
  EXPECT_NE(one, none);
  EXPECT_EQ(m_catalogue.Stamp(), one);
  Write("longer");
  const std::string longer = m_catalogue.Stamp();
  EXPECT_NE(longer, one);
  const auto file = m_folder / "KestrinLEDS.ldcfg";
  std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) + std::chrono::seconds(2));
  EXPECT_NE(m_catalogue.Stamp(), longer);
}

/// The catalogue that people get with the program.
class ShippedCatalogueTest : public ::testing::Test {
 protected:
  void SetUp() override {
    LedCatalogue catalogue(KESTRIN_CATALOGUE_FOLDER);
    base::Result<std::vector<LED_Driver>> types = catalogue.Types();
    ASSERT_TRUE(types) << types.Text();
    m_types = *std::move(types);
  }

  std::vector<LED_Driver> m_types;
};

TEST_F(ShippedCatalogueTest, HasTypesOfOneToFourChannelsEachWithItsOwnNameAndCode) {
  std::set<int> channels;
  std::set<std::string> names;
  std::set<int> codes;
  for (const LED_Driver& type : m_types) {
    channels.insert(type.NrOfChannels);
    names.insert(type.LEDName);
    codes.insert(type.LedCode);
  }
  EXPECT_THAT(channels, ElementsAre(1, 2, 3, 4));
  EXPECT_EQ(names.size(), m_types.size());
  EXPECT_EQ(codes.size(), m_types.size());
  EXPECT_EQ(codes.count(1), 1u) << "boards come from the factory with this code";
  EXPECT_GE(*codes.begin(), 0);
}

TEST_F(ShippedCatalogueTest, DutyGrowsWithLuminanceAndReachesTheChannelsLimit) {
  for (LED_Driver type : m_types) {
    type.OverDrive = 100;
    for (int channel = 1; channel <= type.NrOfChannels; ++channel) {
      SCOPED_TRACE(type.LEDName + ", channel " + std::to_string(channel));
      const int full = type.GetMaxLum(channel);
      const double largest = type.Period * type.GetMaxDC(channel) / 100.0 + 1;
      std::int32_t before = 1;
      for (int luminance = 1; luminance < full; ++luminance) {
        const std::int32_t off = type.GetToff(SetType::Luminance, channel, luminance);
        ASSERT_GE(off, before) << luminance;
        before = off;
      }
      // Just below full level the duty cycle is the channel's limit, to a hundredth of it.
      EXPECT_NEAR(before, largest, largest / 100);
      EXPECT_LE(type.GetToff(SetType::Luminance, channel, full / 2.0), largest / 2 + 1) << "LEDs lose in efficiency";
      EXPECT_GT(type.GetToff(SetType::Luminance, channel, full / 4.0), largest / 8);
    }
  }
}

}  // namespace
}  // namespace kestrin::core::led
