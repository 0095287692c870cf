// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "LedSetupFixture.h"

namespace kestrin::core::ledsetup {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class InitLedDriversTest : public LedSetupFixture {};

TEST_F(InitLedDriversTest, ShowsTypesFittedTypeOverdriveAndBothPulses) {
  EXPECT_TRUE(m_setup.InitLedDrivers());
  EXPECT_TRUE(m_setup.State().reading);
  EXPECT_THAT(m_view.log, ElementsAre("report 60", "types Lamp, Example RGB 3W*, Duo, Quartet", "overdrive 110%",
                                      "report 52", "times 1.5 2 0.5 0.02", "report 52", "times 0.04 0.06", "repeat 3"));
  EXPECT_THAT(Written({1, 2, 2}), ElementsAre(ElementsAre(60), ElementsAre(52, 0), ElementsAre(52, 1)));
  EXPECT_THAT(m_view.times, ElementsAre("1.5", "2", "0.5", "0.02", "0.04", "0.06"));
  EXPECT_THAT(m_view.labels, ElementsAre(0x0000FF, 0x00C000, 0xFF8080, 0));
  // The strongest channel may have 90 %: 10000 / 90 = 111.1.
  EXPECT_EQ(m_view.overdriveMaximum, 111);
  EXPECT_EQ(m_view.overdrive, 110);
  EXPECT_EQ(m_setup.State().CurrentDriver.LEDName, "Example RGB 3W");
  EXPECT_EQ(m_setup.State().CurrentDriver.Voltage, 3.7);
  EXPECT_EQ(m_setup.State().CurrentDriver.OverDrive, 110);
  EXPECT_EQ(m_setup.State().IdlePulse.GetLow(2), 20);
  EXPECT_EQ(m_setup.State().IdlePulse.GetHigh(4), 80);
  EXPECT_EQ(m_setup.State().FocPulse.GetLow(1), 1);
  EXPECT_EQ(m_setup.State().FocPulse.GetHigh(3), 252);
  EXPECT_EQ(m_setup.State().FocPulse.NRep, 3);
  EXPECT_EQ(m_view.pulsesShown, 1);
}

TEST_F(InitLedDriversTest, ALaterTypeWithTheBoardsCodeTakesTheSelection) {
  Catalogue({RecordOf("First", "12", {"red"}), RecordOf("Other", "1", {"red"}), RecordOf("Second", "12", {"white"})});
  ASSERT_TRUE(m_setup.InitLedDrivers());
  EXPECT_EQ(m_view.selectedType, 2u);
  EXPECT_EQ(m_setup.State().CurrentDriver.LEDName, "Second");
}

TEST_F(InitLedDriversTest, ANegativeCodeComesBackAsTheSixteenBitsThatWentOut) {
  struct Row {
    const char* code;
    std::uint16_t held;
  };
  for (const Row& row : {Row{"-5", 65531}, Row{"-1", 65535}, Row{"-32768", 32768}, Row{"32767", 32767}}) {
    m_view = {};
    m_led = simulator::VirtualBoard(StateAtFirst());
    Catalogue({RecordOf("Lamp", "12", {"white"}), RecordOf("Odd", row.code, {"amber", "blue"})});
    Init();
    m_setup.ChooseType("Odd");
    m_view.confirms = true;
    EXPECT_TRUE(m_setup.UpdateLED());
    EXPECT_EQ(m_led.State().ledConfig.code, row.held);
    EXPECT_TRUE(m_setup.State().reading) << m_setup.State().reading.Text();
    EXPECT_EQ(m_view.selectedType, 1u) << row.code;
  }
}

TEST_F(InitLedDriversTest, LinesMayEndWithLfAloneAndEmptyOnesMeanNothing) {
  support::WriteBytes(m_folder / led::LedCatalogue::kFileName, "KestrinLEDConfigurator#2.0\n\n" +
                                                                   RecordOf("Lamp", "3", {"white"}) + "\r\n\r\n" +
                                                                   RecordOf("Duo", "12", {"amber", "blue"}));
  EXPECT_EQ(m_setup.InitLedDrivers().Text(), "");
  EXPECT_THAT(m_view.types, ElementsAre("Lamp", "Duo"));
}

TEST_F(InitLedDriversTest, PulsesAreMadeAnewEachTime) {
  Init();
  m_setup.TimeTyped(led::TimeBox::FocTON, 9);
  m_setup.SendPulse();
  m_setup.SendFoc();
  ASSERT_EQ(m_setup.State().IdlePulse.GetTon_High(1), 1);
  ASSERT_EQ(m_setup.State().FocPulse.GetTon_High(1), 1);
  m_led = simulator::VirtualBoard(StateAtFirst());
  Init();
  EXPECT_EQ(m_setup.State().IdlePulse.GetTon_High(1), 0) << "counts are not asked from the board";
  EXPECT_EQ(m_setup.State().FocPulse.GetTon_High(1), 0);
  EXPECT_EQ(m_setup.State().FocPulse.Ton, 40);
  EXPECT_EQ(m_view.Time(led::TimeBox::FocTON), "0.04");
}

/// One way in which it fails, and what has been done by then.
struct InitFailure {
  const char* name;
  std::function<void(const std::filesystem::path& catalogue)> prepare;
  /// What the problem says; the board's failures all say the same.
  const char* problem;
  Lines types;
};

TEST_F(InitLedDriversTest, EveryFaultOfTheCatalogueFailsWithoutAMessage) {
  const auto writes = [](const std::string& text) {
    return [text](const std::filesystem::path& file) { support::WriteBytes(file, text); };
  };
  const std::string good = RecordOf("Lamp", "12", {"white"});
  const InitFailure failures[] = {
      {"missing", [](const auto& file) { std::filesystem::remove(file); }, "there is no such file", {}},
      {"a folder",
       [](const auto& file) {
         std::filesystem::remove(file);
         std::filesystem::create_directory(file);
       },
       "not a file",
       {}},
      {"empty", writes(""), "line 1: \"KestrinLEDConfigurator#2\" is expected", {}},
      {"version 3", writes(CatalogueOf({good}, "KestrinLEDConfigurator#3")), "line 1: ", {}},
      {"version without number", writes(CatalogueOf({good}, "KestrinLEDConfigurator#")), "line 1: ", {}},
      {"no version", writes(CatalogueOf({good}, "KestrinLEDConfigurator")), "line 1: ", {}},
      {"two versions", writes(CatalogueOf({good}, "KestrinLEDConfigurator#2#2")), "line 1: ", {}},
      {"other case", writes(CatalogueOf({good}, "kestrinLEDConfigurator#2")), "line 1: ", {}},
      {"blank in front", writes(CatalogueOf({good}, " KestrinLEDConfigurator#2")), "line 1: ", {}},
      {"header in line 2", writes("\r\n" + CatalogueOf({good})), "line 1: ", {}},
      {"no type", writes(CatalogueOf({"", ""})), "has no LED type", {}},
      {"bad record",
       writes(CatalogueOf({good, "", "Bad@1#1#9+Col="})),
       "line 4, record: period is 9, allowed is 10",
       {}},
      {"other codes",
       writes(CatalogueOf({RecordOf("Lamp", "11", {"white"}), RecordOf("Duo", "13", {"red", "red"})})),
       "code 12, which KestrinLEDS.ldcfg does not have",
       {"Lamp", "Duo"}},
  };
  for (const InitFailure& failure : failures) {
    SCOPED_TRACE(failure.name);
    m_view = {};
    Forget();
    failure.prepare(m_folder / led::LedCatalogue::kFileName);
    const base::Result<> read = m_setup.InitLedDrivers();
    ASSERT_FALSE(read);
    EXPECT_EQ(read.Why().kind, base::FailureKind::NotValid);
    EXPECT_THAT(read.Why().text, HasSubstr(failure.problem));
    EXPECT_EQ(m_setup.State().reading.Text(), read.Text());
    EXPECT_EQ(m_view.types, failure.types);
    EXPECT_THAT(Written({1}), ElementsAre(ElementsAre(60)));
    EXPECT_EQ(m_view.critical + m_view.information, "");
    EXPECT_EQ(m_view.wentOffline, 0) << "that is the session's affair";
    EXPECT_EQ(m_view.pulsesShown, 1) << "what was shown before is out of date";
    EXPECT_EQ(m_setup.State().CurrentDriver.LEDName, "");
    if (std::filesystem::is_directory(m_folder / led::LedCatalogue::kFileName))
      std::filesystem::remove(m_folder / led::LedCatalogue::kFileName);
  }
}

TEST_F(InitLedDriversTest, EachCommandThatIsNotAnsweredFailsIt) {
  struct Row {
    std::uint8_t code;
    std::uint8_t set;
    std::size_t reports;
    std::size_t types;
    bool idleShown;
  };
  for (const Row& row : {Row{60, 0, 1, 0, false}, Row{52, 0, 2, 4, false}, Row{52, 1, 3, 4, true}}) {
    m_view = {};
    Forget();
    m_ignores = [&](const Report& report) { return report[0] == row.code && (row.code == 60 || report[1] == row.set); };
    const base::Result<> read = m_setup.InitLedDrivers();
    ASSERT_FALSE(read);
    EXPECT_EQ(read.Why().kind, base::FailureKind::NoAnswer);
    EXPECT_EQ(read.Why().text, "The LED driver did not answer. Unplug it and plug it in again.");
    EXPECT_EQ(m_agent.written.size(), row.reports);
    EXPECT_EQ(m_view.types.size(), row.types);
    EXPECT_EQ(m_view.Time(led::TimeBox::IdleTON), row.idleShown ? "1.5" : "-");
    EXPECT_EQ(m_view.Time(led::TimeBox::FocTON), "-");
    EXPECT_EQ(m_view.pulsesShown, 1) << "what was shown before is out of date";
    EXPECT_EQ(m_view.wentOffline, 0);
  }
  m_ignores = nullptr;
  EXPECT_TRUE(m_setup.InitLedDrivers()) << "nothing sticks";
  EXPECT_TRUE(m_setup.State().reading);
}

TEST_F(InitLedDriversTest, WithoutABoardNothingIsSent) {
  m_present = false;
  const base::Result<> read = m_setup.InitLedDrivers();
  ASSERT_FALSE(read);
  EXPECT_EQ(read.Why().kind, base::FailureKind::NoAnswer);
  EXPECT_THAT(m_agent.written, IsEmpty());
}

class SelectLEDTest : public LedSetupFixture {};

TEST_F(SelectLEDTest, TakesTheTypeAndShowsItsColours) {
  EXPECT_TRUE(m_setup.SelectLED("Quartet", 5.5, 90));
  EXPECT_EQ(m_setup.State().CurrentDriver.LEDName, "Quartet");
  EXPECT_EQ(m_setup.State().CurrentDriver.Voltage, 5.5);
  EXPECT_EQ(m_setup.State().CurrentDriver.OverDrive, 90);
  EXPECT_THAT(m_view.labels, ElementsAre(0xFF8080, 0xFFFFFF, 0x0000FF, 0x00C000));
  EXPECT_TRUE(m_setup.SelectLED("Lamp", 6, 70));
  EXPECT_THAT(m_view.labels, ElementsAre(0xFFFFFF, 0, 0, 0));
  EXPECT_EQ(m_view.overdrive, 70);
  EXPECT_THAT(m_agent.written, IsEmpty());
}

TEST_F(SelectLEDTest, TheMostOverdriveDrivesTheStrongestChannelFully) {
  struct Row {
    std::vector<const char*> maxDC;
    int maximum;
  };
  // 10000 / 32 is 312.5, a tie.
  const Row rows[] = {{{"100"}, 100}, {{"80"}, 125}, {{"85"}, 118},       {{"64"}, 156},
                      {{"2"}, 5000},  {{"32"}, 312}, {{"40", "90"}, 111}, {{"90", "40", "50", "89"}, 111}};
  for (const Row& row : rows) {
    led::RecordText record = led::RecordOfColors(std::vector<std::string>(row.maxDC.size(), "red"));
    for (std::size_t i = 0; i < row.maxDC.size(); ++i) record.channels[i].maxDC = row.maxDC[i];
    Catalogue({record.Text()});
    for (const auto& [wanted, set] :
         {std::pair{row.maximum - 1, row.maximum - 1}, std::pair{row.maximum, row.maximum},
          std::pair{row.maximum + 1, row.maximum}, std::pair{65535, row.maximum}, std::pair{0, 0}}) {
      ASSERT_TRUE(m_setup.SelectLED("Blade", 6, wanted));
      EXPECT_EQ(m_view.overdriveMaximum, row.maximum) << row.maxDC[0];
      EXPECT_EQ(m_setup.State().CurrentDriver.OverDrive, set);
      EXPECT_EQ(m_view.overdrive, set);
    }
  }
}

TEST_F(SelectLEDTest, AnUnknownNameOnlyTurnsTheLabelsBlack) {
  ASSERT_TRUE(m_setup.SelectLED("Quartet", 5.5, 90));
  Forget();
  // The header is a line like any other, and never a type.
  for (const char* name : {"quartet", "Quartet ", "", "KestrinLEDConfigurator#2", "KestrinLEDConfigurator"}) {
    EXPECT_TRUE(m_setup.SelectLED(name, 6, 50)) << name;
    EXPECT_THAT(m_view.labels, ElementsAre(0, 0, 0, 0));
    EXPECT_EQ(m_setup.State().CurrentDriver.LEDName, "Quartet");
    EXPECT_EQ(m_setup.State().CurrentDriver.OverDrive, 90);
    EXPECT_EQ(m_view.overdrive, 90);
  }
  EXPECT_THAT(m_view.log, IsEmpty());
}

TEST_F(SelectLEDTest, ABadRecordOfTheWantedNameIsToldWithItsField) {
  led::RecordText bad = led::RecordOfColors({"red", "green"});
  bad.channels[1].maxLum = "50001";
  Catalogue({RecordOf("Lamp", "3", {"white"}), "", bad.Text()});
  EXPECT_FALSE(m_setup.SelectLED("Blade", 6, 100));
  EXPECT_EQ(m_view.critical, "Invalid LED configuration file. Check KestrinLEDS.ldcfg in the installation path !");
  EXPECT_THAT(m_view.detail, HasSubstr("KestrinLEDS.ldcfg, line 4, channel 2: ML is 50001, allowed is 101 to 50000"));
  EXPECT_THAT(m_view.labels, ElementsAre(0, 0, 0, 0));
}

TEST_F(SelectLEDTest, BadRecordsOfOtherNamesDoNotMatter) {
  Catalogue({"Bad@", "no record at all", RecordOf("Lamp", "3", {"white"}), "Worse@1#1"});
  EXPECT_TRUE(m_setup.SelectLED("Lamp", 6, 100));
  EXPECT_EQ(m_setup.State().CurrentDriver.LEDName, "Lamp");
  EXPECT_EQ(m_view.critical, "");
}

TEST_F(SelectLEDTest, OfTwoTypesOfOneNameTheLaterCountsAndTheFirstCapsToo) {
  led::RecordText weak = led::RecordOfColors({"red", "green"});
  weak.channels[0].maxDC = "100";
  led::RecordText strong = led::RecordOfColors({"blue"});
  strong.channels[0].maxDC = "50";
  Catalogue({weak.Text(), strong.Text()});
  EXPECT_TRUE(m_setup.SelectLED("Blade", 6, 180));
  EXPECT_EQ(m_setup.State().CurrentDriver.NrOfChannels, 1);
  EXPECT_EQ(m_view.overdriveMaximum, 200);
  EXPECT_EQ(m_view.overdrive, 100);
  EXPECT_THAT(m_view.labels, ElementsAre(0xFF8080, 0x00C000, 0, 0));
}

TEST_F(SelectLEDTest, AMissingCatalogueIsToldWithTheSameText) {
  std::filesystem::remove(m_folder / led::LedCatalogue::kFileName);
  EXPECT_FALSE(m_setup.SelectLED("Lamp", 6, 100));
  EXPECT_EQ(m_view.critical, led::LedCatalogue::kInvalid);
  EXPECT_THAT(m_view.detail, HasSubstr("there is no such file"));
}

class DriverConfigurationTest : public LedSetupFixture {};

TEST_F(DriverConfigurationTest, ChoosingATypeTakesTheOverdriveOfTheLabelAndSendsNothing) {
  Init();
  m_setup.OverdriveMoved(97);
  m_setup.ChooseType("Lamp");
  EXPECT_EQ(m_view.selectedType, 0u);
  EXPECT_EQ(m_setup.State().CurrentDriver.LEDName, "Lamp");
  EXPECT_EQ(m_setup.State().CurrentDriver.Voltage, 6.0);
  EXPECT_EQ(m_setup.State().CurrentDriver.OverDrive, 97);
  EXPECT_EQ(m_view.overdrive, 97);
  EXPECT_THAT(m_agent.written, IsEmpty());
}

TEST_F(DriverConfigurationTest, AnotherTypeLowersAnOverdriveThatItDoesNotBear) {
  led::RecordText weak = led::RecordOfColors({"red"});
  weak.name = "Weak";
  weak.channels[0].maxDC = "40";
  Catalogue({led::kExampleRecord, weak.Text(), RecordOf("Duo", "4", {"amber", "blue"})});
  Init();
  m_setup.ChooseType("Weak");
  m_setup.OverdriveMoved(250);
  EXPECT_EQ(m_view.overdrive, 250) << "10000 / 40";
  m_setup.ChooseType("Duo");
  EXPECT_EQ(m_view.overdrive, 125) << "both channels of the test's records have 80 %";
  EXPECT_EQ(m_setup.State().CurrentDriver.OverDrive, 125);
}

TEST_F(DriverConfigurationTest, AnOverdriveIsAtLeastOnePercentAndNoMoreThanTheTypeBears) {
  Init();
  const std::pair<int, int> rows[] = {{0, 1}, {-7, 1}, {1, 1}, {110, 110}, {111, 111}, {112, 111}, {2147483647, 111}};
  for (const auto& [moved, set] : rows) {
    m_setup.OverdriveMoved(moved);
    EXPECT_EQ(m_setup.State().overdrive, set) << moved;
    EXPECT_EQ(m_view.overdrive, set) << moved;
  }
}

TEST_F(DriverConfigurationTest, ABoardWithoutOverdriveIsShownSoAndWrittenWithTheLeast) {
  simulator::BoardState state = StateAtFirst();
  state.ledConfig.overdrive = 0;
  m_led = simulator::VirtualBoard(state);
  Init();
  EXPECT_EQ(m_view.overdrive, 0);
  m_view.confirms = true;
  EXPECT_TRUE(m_setup.UpdateLED());
  EXPECT_EQ(m_led.State().ledConfig, (simulator::LedConfigState{12, 60, 1}));
}

TEST_F(DriverConfigurationTest, MovingTheSliderChangesTheLabelAndNothingElse) {
  Init();
  m_setup.OverdriveMoved(64);
  EXPECT_THAT(m_view.log, ElementsAre("overdrive 64%"));
  EXPECT_EQ(m_setup.State().CurrentDriver.OverDrive, 110);
  EXPECT_THAT(m_agent.written, IsEmpty());
}

TEST_F(DriverConfigurationTest, AnUpdateThatIsNotConfirmedSendsNothingAndLeavesTheSlider) {
  Init();
  m_setup.OverdriveMoved(64);
  m_setup.EditPulseHigh();
  Forget();
  m_setup.UpdateLED();
  EXPECT_EQ(m_view.question,
            "WARNING: Setting a different LED than actually installed may damage the LED and driver\r\n"
            "Are you sure you want to continue ?");
  EXPECT_THAT(m_view.log, ElementsAre("ask"));
  EXPECT_EQ(m_view.overdrive, 64);
  EXPECT_TRUE(m_view.picker);
  EXPECT_EQ(m_setup.State().CurrentDriver.OverDrive, 110);
  EXPECT_EQ(m_setup.State().CurrentDriver.Voltage, 3.7);
}

TEST_F(DriverConfigurationTest, AnUpdateWritesTypeSixVoltsAndSliderAndReadsTheBoardAgain) {
  Init();
  m_setup.ChooseType("Duo");
  m_setup.OverdriveMoved(120);
  m_view.confirms = true;
  Forget();
  m_setup.UpdateLED();
  EXPECT_THAT(m_view.log, ElementsAre("ask", "hide picker", "report 61", "report 60",
                                      "types Lamp, Example RGB 3W, Duo*, Quartet", "overdrive 120%", "report 52",
                                      "times 1.5 2 0.5 0.02", "report 52", "times 0.04 0.06", "repeat 3"));
  EXPECT_THAT(Written({7, 1, 2, 2})[0], ElementsAre(61, 0, 4, 0, 60, 0, 120));
  EXPECT_EQ(m_led.State().ledConfig, (simulator::LedConfigState{4, 60, 120}));
  EXPECT_EQ(m_view.wentOffline, 0);
}

TEST_F(DriverConfigurationTest, AnUpdateWritesSixVoltsWhateverTheBoardReported) {
  Init();
  ASSERT_EQ(m_setup.State().CurrentDriver.Voltage, 3.7);
  m_view.confirms = true;
  m_setup.UpdateLED();
  EXPECT_EQ(m_led.State().ledConfig, (simulator::LedConfigState{12, 60, 110}));
}

TEST_F(DriverConfigurationTest, AnUpdateThatTheBoardDoesNotConfirmGoesOfflineAndReadsNothing) {
  Init();
  m_view.confirms = true;
  Ignore(61);
  m_setup.UpdateLED();
  EXPECT_THAT(m_view.log, ElementsAre("ask", "hide picker", "report 61", "offline"));
  Forget();
  m_present = false;
  m_setup.UpdateLED();
  EXPECT_THAT(m_view.log, ElementsAre("ask", "hide picker", "offline"));
  EXPECT_EQ(m_view.critical + m_view.information, "");
}

TEST_F(DriverConfigurationTest, WhatTheReadingAfterAnUpdateFailsAtIsIgnored) {
  Init();
  m_view.confirms = true;
  Ignore(60);
  m_setup.UpdateLED();
  EXPECT_THAT(m_view.log, ElementsAre("ask", "hide picker", "report 61", "report 60"));
  EXPECT_EQ(m_view.wentOffline, 0);
  EXPECT_EQ(m_view.critical + m_view.information, "");
}

}  // namespace
}  // namespace kestrin::core::ledsetup
