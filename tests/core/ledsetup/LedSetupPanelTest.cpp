// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "LedSetupFixture.h"
#include "core/led/LedSettingsFile.h"
#include "support/RecordingDisk.h"

namespace kestrin::core::ledsetup {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr led::Color kPureRed = 0x0000FF;

class PickerTest : public LedSetupFixture {
 protected:
  void SetUp() override { Init(); }

  void Use(const std::string& type) {
    m_setup.ChooseType(type);
    Forget();
  }
  void SetLevels(const std::vector<std::int16_t>& levels) {
    for (std::size_t i = 0; i < levels.size(); ++i) m_setup.LevelMoved(static_cast<int>(i) + 1, levels[i]);
  }
  /// What both pulses hold: low 1 .. 4 and high 1 .. 4 of the idle pulse, then of the flash.
  [[nodiscard]] std::vector<int> PulseLevels() const {
    std::vector<int> levels;
    for (const led::LED_Pulse* pulse : {&m_setup.State().IdlePulse, &m_setup.State().FocPulse}) {
      for (int channel = 1; channel <= 4; ++channel) levels.push_back(pulse->GetLow(channel));
      for (int channel = 1; channel <= 4; ++channel) levels.push_back(pulse->GetHigh(channel));
    }
    return levels;
  }
  const std::vector<int> m_levelsAtFirst{10, 20, 30, 40, 50, 60, 70, 80, 1, 2, 3, 4, 250, 251, 252, 253};
};

TEST_F(PickerTest, EachOfTheThreeButtonsOpensItForItsLevels) {
  struct Row {
    void (LedSetup::*open)();
    std::int32_t pulse;
    bool high;
    std::vector<int> levels;
  };
  for (const Row& row : {Row{&LedSetup::EditPulseHigh, led::kIdlePulse, true, {50, 60, 70, 80}},
                         Row{&LedSetup::EditPulseLow, led::kIdlePulse, false, {10, 20, 30, 40}},
                         Row{&LedSetup::EditFocHigh, led::kFocPulse, true, {250, 251, 252, 253}}}) {
    m_setup.PickColorCancel();
    EXPECT_FALSE(m_view.picker);
    (m_setup.*row.open)();
    EXPECT_TRUE(m_view.picker);
    EXPECT_EQ(m_setup.State().picker.EditedPulse, row.pulse);
    EXPECT_EQ(m_setup.State().picker.EditHigh, row.high);
    EXPECT_EQ(m_view.levels, row.levels);
  }
  EXPECT_THAT(m_agent.written, IsEmpty());
}

TEST_F(PickerTest, ShowsTheRowsOfTheTypeInItsColours) {
  struct Row {
    const char* type;
    std::vector<led::Color> colors;
    bool pickColor;
  };
  for (const Row& row : {Row{"Lamp", {0xFFFFFF}, false}, Row{"Duo", {0x0080FF, 0xFF8080}, false},
                         Row{"Example RGB 3W", {0x0000FF, 0x00C000, 0xFF8080}, true},
                         Row{"Quartet", {0xFF8080, 0xFFFFFF, 0x0000FF, 0x00C000}, true}}) {
    m_setup.PickColorCancel();
    m_setup.ChooseType(row.type);
    m_setup.EditPulseHigh();
    EXPECT_EQ(m_view.pickColorEnabled, row.pickColor) << row.type;
    EXPECT_EQ(m_view.rows, row.colors) << row.type;
  }
}

TEST_F(PickerTest, AColourCanBePickedOnlyWithAllOfRedGreenAndBlue) {
  const std::pair<std::vector<std::string>, bool> types[] = {{{"red", "green", "white"}, false},
                                                             {{"red", "blue", "amber"}, false},
                                                             {{"green", "blue"}, false},
                                                             {{"amber", "red", "green", "blue"}, true}};
  for (const auto& [colors, enabled] : types) {
    Catalogue({RecordOf("Blade", "1", colors)});
    m_setup.ChooseType("Blade");
    m_setup.EditFocHigh();
    EXPECT_EQ(m_view.pickColorEnabled, enabled) << colors[0] << " " << colors[1];
  }
}

TEST_F(PickerTest, AnotherTypeWhileItIsOpenBringsItsRowsAndKeepsTheLevels) {
  m_setup.EditPulseHigh();
  m_setup.LevelMoved(1, 99);
  m_setup.ChooseType("Quartet");
  EXPECT_EQ(m_view.rows.size(), 4u);
  EXPECT_THAT(m_view.levels, ElementsAre(99, 60, 70, 80)) << "those that come to light are the pulse's own";
  m_setup.ChooseType("Lamp");
  EXPECT_EQ(m_view.rows.size(), 1u);
  EXPECT_FALSE(m_view.pickColorEnabled);
}

TEST_F(PickerTest, PickingAColourSetsTheSlidersOfItsChannels) {
  struct Row {
    const char* name;
    bool fidelity;
    led::Color color;
    std::vector<int> levels;
  };
  // The dies have 900, 1500 and 600 at full level.
  const Row rows[] = {
      {"plain", false, 0x0080FF, {255, 128, 0, 7}},
      {"plain white", false, 0xFFFFFF, {255, 255, 255, 7}},
      {"pure red: its own die is the weakest used", true, kPureRed, {255, 0, 0, 7}},
      {"white: 600 * 255 / 900, 600 * 255 / 1500", true, 0xFFFFFF, {170, 102, 255, 7}},
      {"yellow: 900 is the weakest used; 900 * 255 / 1500", true, 0x00FFFF, {255, 153, 0, 7}},
      // 128 * 600 / 255 = 301.18: 301 * 255 / 900 = 85.3, / 1500 = 51.2, / 600 = 127.9
      {"grey", true, 0x808080, {85, 51, 128, 7}},
      // red 200: 200 * 600 / 255 = 470.6 -> 471 * 255 / 900 = 133.45; blue 1: 600 / 255 = 2.35 -> 2 * 255 / 600 = 0.85
      {"unequal", true, 0x0100C8, {133, 0, 1, 7}},
      {"black uses no die", true, 0, {0, 0, 0, 7}},
  };
  for (const Row& row : rows) {
    SetLevels({1, 2, 3, 7});
    m_setup.ColorFidelity(row.fidelity);
    m_view.pickedColor = row.color;
    m_setup.PickColor();
    EXPECT_EQ(m_view.levels, row.levels) << row.name;
  }
  EXPECT_THAT(m_agent.written, IsEmpty());
}

TEST_F(PickerTest, TheDiesThatAColourUsesAreThoseOfTheColourThatWasPicked) {
  // One die has 101 at full level, the others 900: what these give is cut down to 255 * 101 / 900 = 28.6 while the weak
  // one is used. A component of 1 uses it: 101 / 255 = 0.4 leaves nothing of its own light, and still it counts.
  struct Row {
    std::string weakest;
    led::Color color;
    std::vector<int> levels;
  };
  const Row rows[] = {
      {"red", 0xFFFF01, {0, 29, 29}},   {"red", 0xFFFF00, {0, 255, 255}},   {"red", 0xFFFFFF, {255, 29, 29}},
      {"green", 0xFF01FF, {29, 0, 29}}, {"green", 0xFF00FF, {255, 0, 255}}, {"green", 0xFFFFFF, {29, 255, 29}},
      {"blue", 0x01FFFF, {29, 29, 0}},  {"blue", 0x00FFFF, {255, 255, 0}},  {"blue", 0xFFFFFF, {29, 29, 255}},
  };
  m_setup.ColorFidelity(true);
  for (const Row& row : rows) {
    led::RecordText record = led::RecordOfColors({"red", "green", "blue"});
    for (led::ChannelText& channel : record.channels)
      if (channel.color == row.weakest) channel.maxLum = "101";
    Catalogue({record.Text()});
    m_setup.ChooseType(record.name);
    m_view.pickedColor = row.color;
    m_setup.PickColor();
    std::vector<int> levels = m_view.levels;
    levels.resize(3);
    EXPECT_EQ(levels, row.levels) << row.weakest << " " << std::hex << row.color;
  }
}

TEST_F(PickerTest, PickingFindsChannelsByColourAndLeavesTheOthers) {
  Use("Quartet");  // blue, white, red, green of 900 each
  SetLevels({1, 2, 3, 4});
  m_view.pickedColor = 0x332211;
  m_setup.PickColor();
  EXPECT_THAT(m_view.levels, ElementsAre(0x33, 2, 0x11, 0x22));
}

TEST_F(PickerTest, PickingWithoutTheThreeColoursSetsTheOnesThatAreThere) {
  Use("Duo");  // amber, blue
  SetLevels({1, 2, 3, 4});
  m_view.pickedColor = 0x332211;
  for (const bool fidelity : {false, true}) {
    m_setup.ColorFidelity(fidelity);
    m_setup.PickColor();
    EXPECT_THAT(m_view.levels, ElementsAre(1, 0x33, 3, 4));
  }
}

TEST_F(PickerTest, TheDialogIsPresetToTheLastColourAndCancellingChangesNothing) {
  m_setup.EditPulseHigh();
  m_setup.PickColor();
  EXPECT_EQ(m_view.preset, 0xFFFFFF);
  EXPECT_THAT(m_view.levels, ElementsAre(50, 60, 70, 80));
  m_view.pickedColor = kPureRed;
  m_setup.PickColor();
  m_view.pickedColor.reset();
  m_setup.PickColor();
  EXPECT_EQ(m_view.preset, kPureRed);
  EXPECT_THAT(m_view.levels, ElementsAre(255, 0, 0, 80));
}

TEST_F(PickerTest, LevelsStayWithinTheirRange) {
  for (const auto& [moved, kept] : {std::pair{-5, 0}, std::pair{0, 0}, std::pair{255, 255}, std::pair{300, 255}}) {
    m_setup.LevelMoved(2, moved);
    EXPECT_THAT(m_view.levels, ElementsAre(0, kept, 0, 0)) << moved;
  }
}

TEST_F(PickerTest, ApplyShowsTheLevelsOnTheBladeAndKeepsThePulses) {
  m_setup.OverdriveMoved(100);
  Use("Example RGB 3W");
  // Level 100 is a luminance of 353, 200 of 1176; see the counts of a pulse's levels.
  SetLevels({100, 200, 255, 9});
  m_setup.PickColorApply();
  EXPECT_THAT(m_view.log, ElementsAre("report 51"));
  EXPECT_THAT(Written({19})[0], ElementsAre(51, 1000 >> 8, 1000 & 255, 0, 1, 293 >> 8, 293 & 255, 0, 1, 737 >> 8,
                                            737 & 255, 0, 1, 1001 >> 8, 1001 & 255, 0, 0, 0, 0));
  EXPECT_EQ(PulseLevels(), m_levelsAtFirst);
}

TEST_F(PickerTest, ApplyOnATwoChannelTypeSendsZerosForTheOthers) {
  Use("Duo");
  SetLevels({0, 255, 255, 255});
  m_setup.PickColorApply();
  EXPECT_EQ(m_led.State().ledParam, (std::array<std::uint16_t, 9>{1000, 0, 1, 1, 1001, 0, 0, 0, 0}));
}

TEST_F(PickerTest, ApplyThatTheBoardDoesNotConfirmGoesOffline) {
  Ignore(51);
  m_setup.PickColorApply();
  EXPECT_THAT(m_view.log, ElementsAre("report 51", "offline"));
  Forget();
  m_present = false;
  m_setup.PickColorApply();
  EXPECT_THAT(m_view.log, ElementsAre("offline"));
  EXPECT_EQ(m_view.critical + m_view.information, "");
}

TEST_F(PickerTest, OkStoresTheLevelsOfTheTypesChannelsInTheEditedPulse) {
  struct Row {
    void (LedSetup::*open)();
    /// Where in PulseLevels() the first changed level stands.
    std::size_t place;
  };
  std::vector<int> expected = m_levelsAtFirst;
  for (const Row& row :
       {Row{&LedSetup::EditPulseLow, 0}, Row{&LedSetup::EditPulseHigh, 4}, Row{&LedSetup::EditFocHigh, 12}}) {
    (m_setup.*row.open)();
    Forget();
    SetLevels({201, 202, 203, 204});
    m_setup.PickColorOK();
    EXPECT_THAT(m_view.log, ElementsAre("hide picker"));
    EXPECT_FALSE(m_view.picker);
    for (std::size_t i = 0; i < 3; ++i) expected[row.place + i] = 201 + static_cast<int>(i);
    EXPECT_EQ(PulseLevels(), expected) << row.place;
  }
  EXPECT_THAT(m_agent.written, IsEmpty());
}

TEST_F(PickerTest, CancelStoresAndSendsNothing) {
  m_setup.EditPulseHigh();
  SetLevels({1, 1, 1, 1});
  Forget();
  m_setup.PickColorCancel();
  EXPECT_THAT(m_view.log, ElementsAre("hide picker"));
  EXPECT_EQ(PulseLevels(), m_levelsAtFirst);
  EXPECT_EQ(m_setup.State().picker.EditedPulse, led::kIdlePulse);
  EXPECT_TRUE(m_setup.State().picker.EditHigh);
}

TEST_F(PickerTest, OkBeforeItWasEverOpenedStoresNothing) {
  m_setup.PickColorOK();
  EXPECT_EQ(PulseLevels(), m_levelsAtFirst);
}

class PulsePanelTest : public LedSetupFixture {
 protected:
  void SetUp() override { Init(); }
};

TEST_F(PulsePanelTest, WhatIsTypedIsThePersonsUntilTheBoxIsLeft) {
  m_setup.TimeTyped(led::TimeBox::IdleTON, 0.035);
  m_setup.RepeatTyped(2.7);
  EXPECT_THAT(m_view.log, IsEmpty()) << "no box is written to";
  EXPECT_EQ(m_view.pulsesShown, 3) << "the pictures follow";
  EXPECT_EQ(m_setup.State().Shown()[led::kIdlePulse].Ton, 35);
  EXPECT_EQ(m_setup.State().Shown()[led::kFocPulse].NRep, 3);
}

TEST_F(PulsePanelTest, ArrowKeysStepFromWhatTheBoxSays) {
  m_setup.TimeTyped(led::TimeBox::FocTOFF, 1.04);
  m_setup.TimeStepped(led::TimeBox::FocTOFF, 1);
  EXPECT_EQ(m_view.Time(led::TimeBox::FocTOFF), "1.08") << "single precision has no 1.06 that the box would keep";
  m_setup.TimeStepped(led::TimeBox::IdleTRISE, -30);
  EXPECT_EQ(m_view.Time(led::TimeBox::IdleTRISE), "0");
  m_setup.RepeatTyped(7.4);
  m_setup.RepeatStepped(1);
  EXPECT_EQ(m_view.repetitions, "8");
  m_setup.RepeatStepped(10);
  EXPECT_EQ(m_view.repetitions, "10");
  EXPECT_THAT(m_agent.written, IsEmpty());
}

TEST_F(PulsePanelTest, SendingTheIdlePulseBuildsItFromTheBoxesSendsAndStartsIt) {
  m_setup.EditPulseHigh();
  m_setup.LevelMoved(1, 255);
  m_setup.LevelMoved(2, 0);
  m_setup.PickColorOK();
  m_setup.TimeTyped(led::TimeBox::IdleTON, 2.5);
  m_setup.TimeTyped(led::TimeBox::IdleTOFF, 10);
  m_setup.TimeTyped(led::TimeBox::IdleTRISE, 0.035);
  m_setup.TimeTyped(led::TimeBox::IdleTFALL, 0);
  Forget();
  EXPECT_TRUE(m_setup.SendPulse());
  EXPECT_THAT(m_view.log, ElementsAre("report 53", "report 54"));
  EXPECT_THAT(Written({2, 2}), ElementsAre(ElementsAre(53, 0), ElementsAre(54, 0)));
  const simulator::PulseState& held = m_led.State().ledPulses[0];
  EXPECT_THAT(held.low, ElementsAre(10, 20, 30, 40));
  EXPECT_THAT(held.high, ElementsAre(255, 0, 70, 80));
  EXPECT_EQ(held.Ton, 2500);
  EXPECT_EQ(held.Toff, 10000);
  EXPECT_EQ(held.Trise, 35) << "a box that was not left yet counts as it stands";
  EXPECT_EQ(held.Tfall, 0);
  EXPECT_EQ(held.NRep, 0);
  EXPECT_EQ(m_led.State().pulseStarted, 0);
  // Red: full is 1, 1001; low 10 is luminance 35.3 -> 35, d = 4.4745 of 110 % = 4.92195, t = 50.2 -> 50.
  EXPECT_EQ(held.counts[0], (simulator::ChannelCounts{1, 50, 1, 1001}));
  EXPECT_EQ(held.counts[1].onHigh, 0);
  EXPECT_EQ(held.counts[1].offHigh, 1);
  EXPECT_EQ(held.counts[3], (simulator::ChannelCounts{0, 0, 0, 0})) << "the type has three channels";
}

TEST_F(PulsePanelTest, SendingTheFlashTakesItsLowLevelsFromTheIdlePulse) {
  m_setup.TimeTyped(led::TimeBox::FocTON, 0.1);
  m_setup.TimeTyped(led::TimeBox::FocTOFF, 0.2);
  m_setup.RepeatTyped(7);
  EXPECT_TRUE(m_setup.SendFoc());
  EXPECT_THAT(Written({2, 2}), ElementsAre(ElementsAre(53, 1), ElementsAre(54, 1)));
  const simulator::PulseState& held = m_led.State().ledPulses[1];
  EXPECT_THAT(held.low, ElementsAre(50, 60, 70, 80));
  EXPECT_THAT(held.high, ElementsAre(250, 251, 252, 253));
  EXPECT_EQ(held.Ton, 100);
  EXPECT_EQ(held.Toff, 200);
  EXPECT_EQ(held.Trise, 0);
  EXPECT_EQ(held.Tfall, 0);
  EXPECT_EQ(held.NRep, 7);
  EXPECT_EQ(m_led.State().pulseStarted, 1);
}

TEST_F(PulsePanelTest, APulseThatWasNotAcceptedIsStartedAllTheSame) {
  const auto check = [this](bool (LedSetup::*send)(), std::uint8_t number) {
    struct Row {
      std::function<bool(const Report&)> ignores;
      Lines log;
    };
    const Row rows[] = {
        {[](const Report& report) { return report[0] == 53; }, {"report 53", "offline", "report 54"}},
        {[](const Report& report) { return report[0] == 54; }, {"report 53", "report 54", "offline"}},
        {[](const Report&) { return true; }, {"report 53", "offline", "report 54", "offline"}},
    };
    for (const Row& row : rows) {
      Forget();
      m_ignores = row.ignores;
      EXPECT_FALSE((m_setup.*send)());
      EXPECT_EQ(m_view.log, row.log);
      EXPECT_THAT(Written({2, 2}), ElementsAre(ElementsAre(53, number), ElementsAre(54, number)));
    }
  };
  check(&LedSetup::SendPulse, 0);
  check(&LedSetup::SendFoc, 1);
  EXPECT_EQ(m_view.critical + m_view.information, "");
}

TEST_F(PulsePanelTest, BoxesThatLoseTheFocusAreNormalised) {
  m_setup.TimeTyped(led::TimeBox::IdleTON, 0.035);
  m_setup.TimeBoxLeft(led::TimeBox::IdleTON);
  EXPECT_EQ(m_view.Time(led::TimeBox::IdleTON), "0.02");
  m_setup.TimeTyped(led::TimeBox::IdleTRISE, 12);
  m_setup.TimeBoxLeft(led::TimeBox::IdleTRISE);
  EXPECT_EQ(m_view.Time(led::TimeBox::IdleTRISE), "10");
  m_setup.RepeatTyped(15);
  m_setup.RepeatBoxLeft();
  EXPECT_EQ(m_view.repetitions, "10");
  EXPECT_THAT(m_agent.written, IsEmpty());
}

class SettingsPanelTest : public LedSetupFixture {
 protected:
  void SetUp() override { Init(); }

  [[nodiscard]] std::filesystem::path File(const std::string& text) {
    return support::WriteBytes(m_folder / "blade.ldset", text);
  }
};

TEST_F(SettingsPanelTest, LoadingHidesThePickerFillsBothPulsesAndShowsThem) {
  m_setup.EditPulseHigh();
  Forget();
  EXPECT_TRUE(
      m_setup.LoadSettings(File("KestdrinLEDSettings#1\r\n"
                                "PULSE+Low=40_1_2_3+High=255_4_5_6+Times=1000_1500_500_20\r\n"
                                "FOC=254_253_252_251+Times=40_60_3\r\n")));
  EXPECT_THAT(m_view.log, ElementsAre("hide picker", "times 1 1.5 0.5 0.02", "times 0.04 0.06", "repeat 3"));
  EXPECT_THAT(m_view.times, ElementsAre("1", "1.5", "0.5", "0.02", "0.04", "0.06"));
  EXPECT_EQ(m_setup.State().IdlePulse.GetLow(4), 3);
  EXPECT_EQ(m_setup.State().IdlePulse.GetHigh(1), 255);
  EXPECT_EQ(m_setup.State().FocPulse.GetHigh(4), 251);
  EXPECT_EQ(m_view.pulsesShown, 2);
  EXPECT_THAT(m_agent.written, IsEmpty());
}

TEST_F(SettingsPanelTest, AFileThatIsWrongInLineThreeHasReplacedTheIdlePulse) {
  EXPECT_FALSE(
      m_setup.LoadSettings(File("KestdrinLEDSettings#1\n"
                                "PULSE+Low=40_1_2_3+High=255_4_5_6+Times=1000_1500_500_20\n"
                                "FOC=254_253_252_251+Times=40_60_3_4\n")));
  EXPECT_EQ(m_view.information, "File is corrupted, could not read !");
  EXPECT_THAT(m_view.detail, HasSubstr("blade.ldset, line 3: 3 numbers"));
  EXPECT_EQ(m_setup.State().IdlePulse.GetLow(1), 40);
  EXPECT_EQ(m_setup.State().IdlePulse.Toff, 1500);
  EXPECT_EQ(m_setup.State().FocPulse.GetHigh(1), 254) << "taken before the times were read";
  EXPECT_EQ(m_setup.State().FocPulse.Ton, 40);
  EXPECT_THAT(m_view.log, ElementsAre("hide picker", "times 1 1.5 0.5 0.02", "information"));
}

TEST_F(SettingsPanelTest, AFileThatIsWrongInLineTwoShowsNothing) {
  EXPECT_FALSE(m_setup.LoadSettings(File("KestdrinLEDSettings#1\nPULSE+Low=40_1_2_3+High=255_4_5+Times=1_1_5_2\n")));
  EXPECT_THAT(m_view.log, ElementsAre("hide picker", "information"));
  EXPECT_EQ(m_setup.State().IdlePulse.GetLow(1), 40) << "nothing is undone";
  EXPECT_EQ(m_setup.State().IdlePulse.GetHigh(1), 50);
}

TEST_F(SettingsPanelTest, SavingBuildsBothPulsesFromThePanel) {
  const auto file = m_folder / "saved.ldset";
  const double seconds[] = {1.5, 2, 0.02, 0.5, 0.04, 0.0025};
  for (const led::TimeBox box : led::kTimeBoxes) m_setup.TimeTyped(box, seconds[static_cast<std::size_t>(box)]);
  m_setup.RepeatTyped(4);
  EXPECT_TRUE(m_setup.SaveSettings(file, support::AnyDisk()));
  EXPECT_EQ(support::ReadBytes(file),
            "KestdrinLEDSettings#1\r\n"
            "PULSE+Low=10_20_30_40+High=50_60_70_80+Times=1500_2000_20_500\r\n"
            "FOC=250_251_252_253+Times=40_2.5_4\r\n");
  EXPECT_EQ(m_setup.State().IdlePulse.GetToff_High(2), m_setup.State().FocPulse.GetToff_Low(2))
      << "counts are calculated too";
  EXPECT_NE(m_setup.State().IdlePulse.GetToff_High(2), 0);
  EXPECT_THAT(m_view.log, IsEmpty());
  EXPECT_THAT(m_agent.written, IsEmpty());
  EXPECT_TRUE(m_setup.LoadSettings(file));
}

TEST_F(SettingsPanelTest, AFileThatCannotBeWrittenIsTold) {
  EXPECT_FALSE(m_setup.SaveSettings(m_folder / "no such folder" / "saved.ldset", support::AnyDisk()));
  EXPECT_THAT(m_view.information, HasSubstr("saved.ldset"));
}

}  // namespace
}  // namespace kestrin::core::ledsetup
