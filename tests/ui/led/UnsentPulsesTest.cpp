// SPDX-License-Identifier: MIT
// What the panel says of pulses that were not sent, and what it asks before they are lost.

#include <QFocusEvent>

#include "core/ledsetup/LedSetup.h"
#include "ui/led/LedPanelFixture.h"

namespace kestrin::support {
namespace {

using Harmless = ui::kit::Dialogs::Harmless;

constexpr const char* kSettings =
    "KestdrinLEDSettings#1\r\n"
    "PULSE+Low=1_2_3_4+High=5_6_7_8+Times=1500_20_500_500\r\n"
    "FOC=9_10_11_12+Times=40_80_4\r\n";

class UnsentPulses : public LedPanelFixture {
 protected:
  [[nodiscard]] QString Idle() const { return LabelText("FrameIdleState"); }
  [[nodiscard]] QString Foc() const { return LabelText("FrameFocState"); }
  [[nodiscard]] QString News() const { return LabelText("HelpLabel"); }
  void ChooseFile() { dialogs.filesToOpen = {Text(WriteBytes(folder / "blade.ldset", kSettings))}; }
  void Replug() {
    agent->Unplug();
    Tick("NoticeTimer");
    agent->Plug();
    Tick("NoticeTimer");
    Tick("GoOnlineTimer");
    ASSERT_TRUE(IsOnline());
  }
};

TEST_F(UnsentPulses, AreSaidToBeSoUntilTheyAreSent) {
  StartLed(12);
  EXPECT_EQ(Idle(), "");
  EXPECT_EQ(Foc(), "");
  EXPECT_FALSE(Shown("btnBringBackLED"));
  // The accessible name is what the button does; what it is still needed for is told with it.
  Type("IdleTON", "3");
  EXPECT_EQ(Idle(), "not sent");
  EXPECT_EQ(Find<QAbstractButton>("btnSendPulse").accessibleDescription(), "not sent");
  EXPECT_EQ(Foc(), "");
  Type("IdleTON", "0.8");
  EXPECT_EQ(Idle(), "") << "as before";
  Click("btnFocHigh");
  SetSlider(1, 11);
  EXPECT_EQ(Foc(), "");
  Click("PickColorOK");
  EXPECT_EQ(Foc(), "not sent");
  Click("btnSendFoc");
  EXPECT_EQ(Foc(), "");
  EXPECT_EQ(Find<QAbstractButton>("btnSendFoc").accessibleDescription(), "");
  EXPECT_EQ(Idle(), "");
  ChooseFile();
  Click("btnOpenLED");
  EXPECT_EQ(Idle(), "not sent");
  EXPECT_EQ(Foc(), "not sent");
}

TEST_F(UnsentPulses, OpeningAnotherFileAsksBeforeTheyAreLost) {
  StartLed(12);
  ChooseFile();
  Click("btnOpenLED");
  EXPECT_TRUE(dialogs.asked.empty()) << "the board's pulses are on the board";
  ChooseFile();
  Click("btnOpenLED");
  EXPECT_TRUE(dialogs.asked.empty()) << "those of a file are in the file";
  Type("IdleTON", "3");
  ChooseFile();
  dialogs.okAnswers = {false};
  Click("btnOpenLED");
  ASSERT_EQ(dialogs.asked.size(), 1U);
  EXPECT_EQ(dialogs.asked[0].question,
            "The light pulses on this page were neither sent nor saved.\nOpen the file and lose them?");
  EXPECT_EQ(dialogs.asked[0].harmless, Harmless::Cancel);
  EXPECT_EQ(dialogs.lastTopic, ui::kit::HelpContext::LedSettings);
  EXPECT_EQ(BoxText("IdleTON"), "3");
  dialogs.filesToOpen = {""};
  Click("btnOpenLED");
  EXPECT_EQ(dialogs.asked.size(), 1U) << "no file, no question";
  ChooseFile();
  dialogs.okAnswers = {true};
  Click("btnOpenLED");
  EXPECT_EQ(BoxText("IdleTON"), "1.5");
}

TEST_F(UnsentPulses, ClosingTheWindowAsksBeforeTheyAreLost) {
  StartLed(12);
  Type("focNREP", "9");
  dialogs.okAnswers = {false};
  EXPECT_FALSE(window->close());
  ASSERT_EQ(dialogs.asked.size(), 1U);
  EXPECT_EQ(dialogs.asked[0].question,
            "Light pulses of the LED driver were neither sent nor saved.\nClose the window and lose them?");
  EXPECT_EQ(dialogs.asked[0].harmless, Harmless::Cancel);
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(IsOnline());
  EXPECT_EQ(BoxText("focNREP"), "9");
  dialogs.okAnswers = {true};
  EXPECT_TRUE(window->close());
}

TEST_F(UnsentPulses, ClosingAsksNothingWhenTheyAreSaved) {
  StartLed(12);
  Type("focNREP", "9");
  dialogs.filesToSave = {Text(folder / "mine.ldset")};
  Click("btnSaveLED");
  EXPECT_EQ(Foc(), "not sent");
  EXPECT_TRUE(window->close());
}

TEST_F(UnsentPulses, StayOnThePageWhenTheBoardLeavesAndCanBeBroughtBackWhenItReturns) {
  StartLed(12);
  Type("IdleTON", "3");
  agent->Unplug();
  Tick("NoticeTimer");
  EXPECT_EQ(BoxText("IdleTON"), "3");
  EXPECT_EQ(Idle(), "not sent");
  agent->Plug();
  Tick("NoticeTimer");
  Tick("GoOnlineTimer");
  EXPECT_EQ(BoxText("IdleTON"), "0.8") << "the panel shows what the board holds";
  EXPECT_EQ(Idle(), "");
  EXPECT_EQ(News(), "The page shows the board's pulses. Yours were not sent: \"Bring back unsent pulses\" shows them.");
  ASSERT_TRUE(Shown("btnBringBackLED"));
  dialogs.okAnswers = {false};
  EXPECT_FALSE(window->close()) << "they would be lost";
  Click("btnBringBackLED");
  EXPECT_EQ(BoxText("IdleTON"), "3");
  EXPECT_EQ(Idle(), "not sent");
  EXPECT_FALSE(Shown("btnBringBackLED"));
}

TEST_F(UnsentPulses, ASendThatFailsLosesNothing) {
  StartLed(12, 100, FailRead(1));
  Type("IdleTON", "3");
  Click("btnSendPulse");
  EXPECT_FALSE(IsOnline());
  EXPECT_EQ(Idle(), "not sent");
  Tick("GoOnlineTimer");
  ASSERT_TRUE(IsOnline());
  ASSERT_TRUE(Shown("btnBringBackLED"));
  Click("btnBringBackLED");
  EXPECT_EQ(BoxText("IdleTON"), "3");
}

TEST_F(UnsentPulses, ABoardThatReturnsToPulsesThatAreSentBringsNoOffer) {
  StartLed(12);
  Type("IdleTON", "3");
  Click("btnSendPulse");
  Replug();
  EXPECT_EQ(BoxText("IdleTON"), "3");
  EXPECT_FALSE(Shown("btnBringBackLED"));
  EXPECT_TRUE(window->close());
}

TEST_F(UnsentPulses, UpdateLedSaysWhatItDropsAndThenThatItIsDone) {
  StartLed(12);
  dialogs.okAnswers = {true};
  Click("btnUpdateLED");
  EXPECT_EQ(dialogs.asked[0].advice, "");
  Type("IdleTON", "3");
  dialogs.okAnswers = {true};
  Click("btnUpdateLED");
  ASSERT_EQ(dialogs.asked.size(), 2U);
  EXPECT_EQ(dialogs.asked[1].question, QString(core::ledsetup::LedSetup::kWarning));
  EXPECT_EQ(dialogs.asked[1].advice, QString(core::ledsetup::LedSetup::kUnsentPulses));
  EXPECT_EQ(dialogs.asked[1].harmless, Harmless::Cancel);
  EXPECT_EQ(BoxText("IdleTON"), "0.8");
  EXPECT_FALSE(Shown("btnBringBackLED")) << "the person has agreed";
  EXPECT_EQ(News(), "The board has taken LED type and overdrive.");
}

TEST_F(UnsentPulses, ThatAnUpdateIsDoneStandsAlsoWhenTheQuestionHasGone) {
  StartLed(12);
  auto& button = Find<QWidget>("btnUpdateLED");
  const auto send = [&](QEvent&& event) { QApplication::sendEvent(&button, &event); };
  send(QEnterEvent({1, 1}, {1, 1}, {1, 1}));
  button.setFocus();
  EXPECT_EQ(News(), "Update LED Configuration");
  dialogs.okAnswers = {true};
  // A question of the desktop takes pointer and keyboard; they are back only when the answer has been acted on.
  dialogs.whileAsking = [&] {
    send(QEvent(QEvent::Leave));
    send(QFocusEvent(QEvent::FocusOut, Qt::ActiveWindowFocusReason));
  };
  Click("btnUpdateLED");
  dialogs.whileAsking = nullptr;
  send(QFocusEvent(QEvent::FocusIn, Qt::ActiveWindowFocusReason));
  EXPECT_EQ(News(), "The board has taken LED type and overdrive.");
  send(QEnterEvent({1, 1}, {1, 1}, {1, 1}));
  EXPECT_EQ(News(), "The board has taken LED type and overdrive.");
  send(QEvent(QEvent::Leave));
  QEnterEvent other({1, 1}, {1, 1}, {1, 1});
  QApplication::sendEvent(&Find<QWidget>("btnSendFoc"), &other);
  EXPECT_EQ(News(), "Apply and Test");
}

TEST_F(UnsentPulses, AnUpdateAfterWhichTheBoardIsSilentIsSaidToBeSo) {
  StartLed(12, 100, FailRead(5));
  dialogs.okAnswers = {true};
  Click("btnUpdateLED");
  EXPECT_EQ(News(), "The board has taken LED type and overdrive, but then could not be read.");
}

}  // namespace
}  // namespace kestrin::support
