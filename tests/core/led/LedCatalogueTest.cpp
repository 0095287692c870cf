#include "core/led/LedCatalogue.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "LedRecords.h"
#include "support/TestFiles.h"

namespace kestrin::core::led {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class LedCatalogueTest : public ::testing::Test {
 protected:
  void Write(const std::string& text) { support::WriteBytes(m_folder / "KestrinLEDS.ldcfg", text); }
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const LED_Driver& type : m_types) names.push_back(type.LEDName);
    return names;
  }

  support::TemporaryFolder m_folder;
  LedCatalogue m_catalogue{m_folder.Path()};
  std::vector<LED_Driver> m_types;
};

TEST_F(LedCatalogueTest, ReadsAllTypesInTheirOrder) {
  RecordText two = RecordOfColors({"amber", "white"});
  two.name = "Second";
  Write("KestrinLEDConfigurator#2\r\n" + std::string(kExampleRecord) + "\r\n\r\n\n" + two.Text() + "\n");
  EXPECT_TRUE(m_catalogue.ReadTypes(m_types)) << m_catalogue.Problem();
  EXPECT_THAT(Names(), ElementsAre("Example RGB 3W", "Second"));
  EXPECT_EQ(m_types[1].NrOfChannels, 2);
  EXPECT_EQ(m_catalogue.Problem(), "");
}

TEST_F(LedCatalogueTest, TheHeaderIsTheWordAndTheNumberTwo) {
  const std::string record = std::string(kExampleRecord) + "\r\n";
  for (const char* header : {"KestrinLEDConfigurator#2", "KestrinLEDConfigurator#2.0", "KestrinLEDConfigurator# 2 ",
                             "KestrinLEDConfigurator#2nd", "\xEF\xBB\xBFKestrinLEDConfigurator#2"}) {
    Write(header + ("\r\n" + record));
    EXPECT_TRUE(m_catalogue.ReadTypes(m_types)) << header;
  }
  for (const char* header : {"KestrinLEDConfigurator#3", "KestrinLEDConfigurator#1.9", "KestrinLEDConfigurator#2.1",
                             "KestrinLEDConfigurator#-2", "KestrinLEDConfigurator#", "KestrinLEDConfigurator",
                             "KestrinLEDConfigurator#2#", "kestrinledconfigurator#2", "KESTRINLEDConfigurator#2",
                             " KestrinLEDConfigurator#2", "KestrinLEDConfigurator #2", ""}) {
    Write(header + ("\r\n" + record));
    EXPECT_FALSE(m_catalogue.ReadTypes(m_types)) << header;
    EXPECT_THAT(m_catalogue.Problem(), HasSubstr("KestrinLEDS.ldcfg, line 1: \"KestrinLEDConfigurator#2\""));
  }
}

TEST_F(LedCatalogueTest, AProblemNamesLineChannelAndField) {
  RecordText bad = RecordOfColors({"red", "Red"});
  Write("KestrinLEDConfigurator#2\r\n" + std::string(kExampleRecord) + "\r\n\r\n" + bad.Text() + "\r\n");
  EXPECT_FALSE(m_catalogue.ReadTypes(m_types));
  EXPECT_THAT(Names(), ElementsAre("Example RGB 3W"));
  EXPECT_THAT(m_catalogue.Problem(), HasSubstr("KestrinLEDS.ldcfg, line 4, channel 2: the colour word is unknown"));
}

TEST_F(LedCatalogueTest, WithoutATypeOrAFileItIsNotValid) {
  EXPECT_FALSE(m_catalogue.ReadTypes(m_types));
  EXPECT_THAT(m_catalogue.Problem(), HasSubstr("KestrinLEDS.ldcfg: there is no such file"));
  EXPECT_EQ(m_catalogue.LineCount(), 0u);
  Write("KestrinLEDConfigurator#2\r\n\r\n");
  EXPECT_FALSE(m_catalogue.ReadTypes(m_types));
  EXPECT_THAT(m_catalogue.Problem(), HasSubstr("line 2: an LED type is expected"));
}

TEST_F(LedCatalogueTest, TheNameStandsBeforeTheFirstAt) {
  Write("KestrinLEDConfigurator#2\r\nA b@c@d\r\n@x\r\nnone\r\n\r\n");
  ASSERT_TRUE(m_catalogue.Read());
  ASSERT_EQ(m_catalogue.LineCount(), 5u);
  EXPECT_FALSE(m_catalogue.IsOf(1, "KestrinLEDConfigurator#2"));
  EXPECT_TRUE(m_catalogue.IsOf(2, "A b"));
  EXPECT_FALSE(m_catalogue.IsOf(2, "A b@c"));
  EXPECT_FALSE(m_catalogue.IsOf(2, "a b"));
  EXPECT_TRUE(m_catalogue.IsOf(3, ""));
  EXPECT_FALSE(m_catalogue.IsOf(4, "none"));
  EXPECT_FALSE(m_catalogue.IsOf(5, ""));
  EXPECT_TRUE(m_catalogue.IsEmptyLine(5));
  EXPECT_FALSE(m_catalogue.IsEmptyLine(4));
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
    ASSERT_TRUE(catalogue.ReadTypes(m_types)) << catalogue.Problem();
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
