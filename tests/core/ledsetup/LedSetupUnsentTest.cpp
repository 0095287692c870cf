// SPDX-License-Identifier: MIT
// What of the pulses was not sent, and what would be lost.

#include <gmock/gmock.h>

#include "LedSetupFixture.h"
#include "support/RecordingDisk.h"

namespace kestrin::core::ledsetup {
namespace {

constexpr std::int32_t kIdle = led::kIdlePulse;
constexpr std::int32_t kFoc = led::kFocPulse;

class UnsentPulsesTest : public LedSetupFixture {
 protected:
  /// Whether idle pulse and flash are sent, and whether something would be lost.
  struct Standing {
    bool idleSent;
    bool focSent;
    bool unsaved;
    friend bool operator==(const Standing&, const Standing&) = default;
    friend void PrintTo(const Standing& standing, std::ostream* out) {
      *out << (standing.idleSent ? "sent, " : "not sent, ") << (standing.focSent ? "sent, " : "not sent, ")
           << (standing.unsaved ? "unsaved" : "safe");
    }
  };
  static constexpr Standing kAllSent{true, true, false};
  static constexpr Standing kIdleUnsaved{false, true, true};
  static constexpr Standing kFocUnsaved{true, false, true};

  void SetUp() override { Init(); }
  [[nodiscard]] Standing Now() const { return {m_setup.IsSent(kIdle), m_setup.IsSent(kFoc), m_setup.HasUnsaved()}; }
  void SetIdleTime(double seconds) { m_setup.TimeTyped(led::TimeBox::IdleTON, seconds); }
  void PickFlashLevel(std::int16_t level) {
    m_setup.EditFocHigh();
    m_setup.LevelMoved(1, level);
    m_setup.PickColorOK();
  }
  [[nodiscard]] std::filesystem::path File() const { return m_folder / "blade.ldset"; }
  [[nodiscard]] bool Save() { return m_setup.SaveSettings(File(), support::AnyDisk()); }
};

TEST_F(UnsentPulsesTest, BeforeAnyBoardThereIsNothingToLose) {
  support::RecordingLedSetupView view;
  const LedSetup setup(
      m_folder.Path(), [] { return nullptr; }, view);
  EXPECT_TRUE(setup.IsSent(kIdle));
  EXPECT_TRUE(setup.IsSent(kFoc));
  EXPECT_FALSE(setup.HasUnsaved());
}

TEST_F(UnsentPulsesTest, WhatTheBoardToldIsSent) {
  EXPECT_EQ(Now(), kAllSent);
  EXPECT_FALSE(m_setup.HasSetAside());
}

TEST_F(UnsentPulsesTest, EveryPartOfAPulseCounts) {
  const std::pair<led::TimeBox, Standing> boxes[] = {
      {led::TimeBox::IdleTON, kIdleUnsaved},   {led::TimeBox::IdleTOFF, kIdleUnsaved},
      {led::TimeBox::IdleTRISE, kIdleUnsaved}, {led::TimeBox::IdleTFALL, kIdleUnsaved},
      {led::TimeBox::FocTON, kFocUnsaved},     {led::TimeBox::FocTOFF, kFocUnsaved}};
  for (const auto& [box, standing] : boxes) {
    const double before = m_setup.State().Time(box).value();
    m_setup.TimeTyped(box, 9.5);
    EXPECT_EQ(Now(), standing) << static_cast<int>(box);
    m_setup.TimeTyped(box, before);
    EXPECT_EQ(Now(), kAllSent);
  }
  m_setup.RepeatTyped(4);
  EXPECT_EQ(Now(), kFocUnsaved);
  m_setup.RepeatTyped(3);
  struct Row {
    void (LedSetup::*open)();
    Standing standing;
  };
  for (const Row& row : {Row{&LedSetup::EditPulseHigh, kIdleUnsaved}, Row{&LedSetup::EditPulseLow, kIdleUnsaved},
                         Row{&LedSetup::EditFocHigh, kFocUnsaved}}) {
    for (int channel = 1; channel <= 3; ++channel) {
      (m_setup.*row.open)();
      const int before = m_view.levels.at(static_cast<std::size_t>(channel) - 1);
      m_setup.LevelMoved(channel, 99);
      EXPECT_EQ(Now(), kAllSent) << "not taken yet";
      m_setup.PickColorOK();
      EXPECT_EQ(Now(), row.standing) << channel;
      m_setup.LevelMoved(channel, before);
      m_setup.PickColorOK();
      EXPECT_EQ(Now(), kAllSent);
    }
  }
}

TEST_F(UnsentPulsesTest, SendingSavingAndOpeningMakeThemSafe) {
  SetIdleTime(9.5);
  m_setup.RepeatTyped(4);
  EXPECT_EQ(Now(), (Standing{false, false, true}));
  EXPECT_TRUE(m_setup.SendPulse());
  EXPECT_EQ(Now(), kFocUnsaved);
  ASSERT_TRUE(Save());
  EXPECT_EQ(Now(), (Standing{true, false, false})) << "it is in a file";
  EXPECT_TRUE(m_setup.SendFoc());
  EXPECT_EQ(Now(), kAllSent);
  SetIdleTime(1);
  PickFlashLevel(3);
  EXPECT_EQ(Now(), (Standing{false, false, true}));
  ASSERT_TRUE(m_setup.LoadSettings(File()));
  EXPECT_EQ(Now(), kAllSent) << "as it was sent";
  m_setup.RepeatTyped(5);
  EXPECT_EQ(Now(), kFocUnsaved);
}

TEST_F(UnsentPulsesTest, WhatFailsMakesNothingSafe) {
  SetIdleTime(9.5);
  Ignore(53);
  EXPECT_FALSE(m_setup.SendPulse());
  EXPECT_EQ(Now(), kIdleUnsaved);
  EXPECT_FALSE(m_setup.SaveSettings(m_folder / "no such folder" / "blade.ldset", support::AnyDisk()));
  EXPECT_EQ(Now(), kIdleUnsaved);
  Ignore(54);
  EXPECT_FALSE(m_setup.SendPulse());
  EXPECT_EQ(Now(), kAllSent) << "the board has it and did not start it";
  support::WriteBytes(File(), "KestdrinLEDSettings#1\nPULSE+Low=1_2_3_4+High=5_6_7_8+Times=1_1_1_1\nFOC=1");
  EXPECT_FALSE(m_setup.LoadSettings(File()));
  EXPECT_EQ(Now(), kIdleUnsaved) << "half of a damaged file is on the panel only";
}

TEST_F(UnsentPulsesTest, APulseThatTheBoardCutsIsSentAndWouldStillBeLost) {
  SetIdleTime(70);
  EXPECT_TRUE(m_setup.SendPulse());
  EXPECT_EQ(Now(), (Standing{true, true, true})) << "65.535 seconds are the most that a board holds";
  ASSERT_TRUE(Save());
  EXPECT_EQ(Now(), kAllSent);
}

TEST_F(UnsentPulsesTest, ABoardThatComesBackShowsItsOwnPulsesAndOthersAreSetAside) {
  SetIdleTime(9.5);
  PickFlashLevel(3);
  ASSERT_TRUE(m_setup.InitLedDrivers());
  EXPECT_EQ(m_view.Time(led::TimeBox::IdleTON), "1.5");
  EXPECT_EQ(m_setup.State().FocPulse.GetHigh(1), 250);
  EXPECT_EQ(Now(), kAllSent);
  EXPECT_TRUE(m_setup.HasSetAside());
  ASSERT_TRUE(m_setup.InitLedDrivers());
  EXPECT_TRUE(m_setup.HasSetAside()) << "also when it comes back once more";
  m_setup.EditPulseHigh();
  m_setup.BringBack();
  EXPECT_FALSE(m_view.picker) << "it showed a level that is gone";
  EXPECT_FALSE(m_setup.HasSetAside());
  EXPECT_EQ(m_view.Time(led::TimeBox::IdleTON), "9.5");
  EXPECT_EQ(m_view.Time(led::TimeBox::IdleTFALL), "0.02") << "as the board had it";
  EXPECT_EQ(m_setup.State().FocPulse.GetHigh(1), 3);
  EXPECT_EQ(m_setup.State().IdlePulse.GetLow(2), 20);
  EXPECT_EQ(m_view.repetitions, "3");
  EXPECT_EQ(Now(), (Standing{false, false, true}));
}

TEST_F(UnsentPulsesTest, BringingBackLosesNothingEither) {
  SetIdleTime(9.5);
  ASSERT_TRUE(m_setup.InitLedDrivers());
  SetIdleTime(4.5);
  m_setup.BringBack();
  EXPECT_EQ(m_view.Time(led::TimeBox::IdleTON), "9.5");
  ASSERT_TRUE(m_setup.HasSetAside());
  m_setup.BringBack();
  EXPECT_EQ(m_view.Time(led::TimeBox::IdleTON), "4.5");
  ASSERT_TRUE(m_setup.HasSetAside());
  EXPECT_TRUE(m_setup.SendPulse());
  m_setup.BringBack();
  EXPECT_EQ(m_view.Time(led::TimeBox::IdleTON), "9.5");
  EXPECT_FALSE(m_setup.HasSetAside()) << "the other one is on the board";
  m_setup.BringBack();
  EXPECT_EQ(m_view.Time(led::TimeBox::IdleTON), "9.5") << "there is nothing more";
}

TEST_F(UnsentPulsesTest, PulsesAreSetAsideAlsoWhenTheBoardFailsInTheMiddle) {
  SetIdleTime(9.5);
  Ignore(60);
  EXPECT_FALSE(m_setup.InitLedDrivers());
  EXPECT_FALSE(m_setup.HasSetAside()) << "they are still on the panel";
  EXPECT_EQ(Now(), kIdleUnsaved);
  Ignore(52);
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(m_setup.InitLedDrivers());
    EXPECT_TRUE(m_setup.HasSetAside());
    EXPECT_FALSE(m_setup.HasUnsaved()) << "nothing of the person's is left on the panel";
  }
  m_ignores = nullptr;
  ASSERT_TRUE(m_setup.InitLedDrivers());
  m_setup.BringBack();
  EXPECT_EQ(m_view.Time(led::TimeBox::IdleTON), "9.5");
}

TEST_F(UnsentPulsesTest, WhatIsSafeIsNotSetAside) {
  SetIdleTime(9.5);
  ASSERT_TRUE(Save());
  ASSERT_TRUE(m_setup.InitLedDrivers());
  EXPECT_FALSE(m_setup.HasSetAside());
}

TEST_F(UnsentPulsesTest, UpdatingTheLedSaysWhatItDropsAndDropsIt) {
  m_setup.UpdateLED();
  EXPECT_EQ(m_view.question, LedSetup::kWarning);
  EXPECT_EQ(m_view.detail, "") << "everything is sent";
  for (const bool flash : {false, true}) {
    ASSERT_TRUE(m_setup.InitLedDrivers());
    if (flash)
      PickFlashLevel(3);
    else
      SetIdleTime(9.5);
    m_view.confirms = false;
    EXPECT_FALSE(m_setup.UpdateLED());
    EXPECT_EQ(m_view.question, LedSetup::kWarning);
    EXPECT_EQ(m_view.detail, LedSetup::kUnsentPulses);
    EXPECT_TRUE(m_setup.HasUnsaved());
    m_view.confirms = true;
    EXPECT_TRUE(m_setup.UpdateLED());
    EXPECT_EQ(Now(), kAllSent);
    EXPECT_FALSE(m_setup.HasSetAside()) << "it was agreed to";
  }
}

}  // namespace
}  // namespace kestrin::core::ledsetup
