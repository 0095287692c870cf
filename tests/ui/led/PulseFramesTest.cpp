// SPDX-License-Identifier: MIT
// "Idle Pulse" and "Flash on Clash": boxes, sending, failures.

#include "ui/led/LedPanelFixture.h"

namespace kestrin::support {
namespace {

using simulator::ChannelCounts;
using simulator::PulseState;

class PulseFrames : public LedPanelFixture {
 protected:
  /// Without counts: those of channels that the LED type does not have are sent as they are in a new pulse.
  [[nodiscard]] static PulseState Empty() {
    PulseState pulse;
    pulse.counts.fill(ChannelCounts{0, 0, 0, 0});
    return pulse;
  }
};

struct Typed {
  const char* box;
  const char* typed;
  const char* kept;
};

constexpr Typed kTyped[] = {
    {"IdleTON", "0.035", "0.02"}, {"IdleTON", "-1", "0"},       {"IdleTON", "12000", "10000"},
    {"IdleTON", "1.5", "1.5"},    {"IdleTON", "", "0"},         {"IdleTOFF", "12000", "10000"},
    {"IdleTOFF", "0.019", "0"},   {"IdleTRISE", "12", "10"},    {"IdleTRISE", "10", "10"},
    {"IdleTRISE", "-0.5", "0"},   {"IdleTFALL", "12", "12"},    {"IdleTFALL", "10001", "10000"},
    {"FocTON", "0.05", "0.04"},   {"FocTON", "20000", "10000"}, {"FocTOFF", "2.5 s", "2.5"},
    {"FocTOFF", "never", "0"},    {"focNREP", "0", "1"},        {"focNREP", "2.7", "2"},
    {"focNREP", "15", "10"},      {"focNREP", "10", "10"},      {"focNREP", "-3", "1"},
};

TEST_F(PulseFrames, BoxesArePutRightWhenTheyAreLeft) {
  StartLed(12);
  const simulator::BoardState before = Held();
  for (const Typed& row : kTyped) {
    Type(row.box, row.typed);
    EXPECT_EQ(BoxText(row.box).toStdString(), row.kept) << row.box << " " << row.typed;
  }
  EXPECT_EQ(Held(), before);
}

TEST_F(PulseFrames, EnterPutsABoxRightToo) {
  StartLed(12);
  auto& box = Find<QLineEdit>("FocTON");
  box.setFocus();
  box.setText("0.099");
  QTest::keyClick(&box, Qt::Key_Return);
  EXPECT_EQ(box.text(), "0.08");
}

TEST_F(PulseFrames, ArrowKeysMoveAValueInTheBoardsSteps) {
  StartLed(12);
  const auto press = [this](const char* box, Qt::Key key) { QTest::keyClick(&Find<QLineEdit>(box), key); };
  press("IdleTON", Qt::Key_Up);
  EXPECT_EQ(BoxText("IdleTON"), "0.82");
  press("IdleTON", Qt::Key_PageDown);
  EXPECT_EQ(BoxText("IdleTON"), "0.62");
  // Single precision has no 1.06 that the box would keep.
  Type("IdleTON", "1.04");
  press("IdleTON", Qt::Key_Up);
  EXPECT_EQ(BoxText("IdleTON"), "1.08");
  press("IdleTON", Qt::Key_Down);
  EXPECT_EQ(BoxText("IdleTON"), "1.04");
  for (int i = 0; i < 5; ++i) press("FocTON", Qt::Key_Down);
  EXPECT_EQ(BoxText("FocTON"), "0");
  press("focNREP", Qt::Key_Up);
  EXPECT_EQ(BoxText("focNREP"), "4");
  press("focNREP", Qt::Key_PageUp);
  EXPECT_EQ(BoxText("focNREP"), "10");
}

TEST_F(PulseFrames, SendingTheIdlePulseSendsWhatThePanelShowsAndStartsIt) {
  // Period 1000, duty cycle a tenth of the luminance, which is the level * 1000 / 255.
  StartLed(1);
  Type("IdleTON", "2");
  Type("IdleTOFF", "0.5");
  Type("IdleTRISE", "1.02");
  Type("IdleTFALL", "0");
  Click("btnPulseLow");
  SetSlider(1, 51);
  Click("PickColorOK");
  Click("btnSendPulse");
  PulseState expected = Empty();
  expected.low = {51, 0, 90, 7};
  expected.high = {255, 30, 140, 200};
  // 51 is a fifth: luminance 200, duty cycle 20 %, 200 counts and the base; 255 is full drive.
  expected.counts[0] = ChannelCounts{1, 201, 1, 1001};
  expected.Trise = 1020;
  expected.Ton = 2000;
  expected.Tfall = 0;
  expected.Toff = 500;
  expected.NRep = 0;
  EXPECT_EQ(Held().ledPulses[0], expected);
  EXPECT_EQ(Held().pulseStarted, 0);
  EXPECT_EQ(LabelText("HelpLabel"), "The board has the idle pulse and plays it.");
}

TEST_F(PulseFrames, SendingTheFlashStartsFromTheIdleColour) {
  StartLed(2, 200);
  Type("FocTON", "0.1");
  Type("focNREP", "7");
  Click("btnSendFoc");
  PulseState expected = Empty();
  expected.low = {255, 30, 140, 200};
  expected.high = {255, 128, 64, 20};
  // Blue: full drive both times. Amber at 30: luminance 117.6 -> 118, 5.9 % twice, of 500 counts: 59 and the base. At
  // 128: luminance 501.96 -> 502, 25.1 % twice: 251 and the base.
  expected.counts[0] = ChannelCounts{1, 501, 1, 501};
  expected.counts[1] = ChannelCounts{1, 60, 1, 252};
  expected.Ton = 100;
  expected.Toff = 60;
  expected.NRep = 7;
  EXPECT_EQ(Held().ledPulses[1], expected);
  EXPECT_EQ(Held().ledPulses[0].Ton, 800) << "the idle pulse stays as it is";
  EXPECT_EQ(Held().pulseStarted, 1);
}

TEST_F(PulseFrames, ATimeThatTheBoardCannotHoldIsSentAndTold) {
  StartLed(12);
  const QString tooLong =
      "The board holds times up to 65.535 s; a longer one plays much shorter. Set less and send it again.";
  Type("IdleTFALL", "65.54");
  Click("btnSendPulse");
  // 65540 ms are 4 more than 16 bits hold.
  EXPECT_EQ(Held().ledPulses[0].Tfall, 4);
  EXPECT_EQ(LabelText("HelpLabel"), tooLong);
  EXPECT_TRUE(IsOnline());
  Click("btnSendFoc");
  EXPECT_EQ(LabelText("HelpLabel"), "The board has the flash and plays it.");
  Type("FocTON", "10000");
  Click("btnSendFoc");
  EXPECT_EQ(LabelText("HelpLabel"), tooLong);
}

struct Failing {
  const char* button;
  int pulse;
  std::size_t index;
};

class FailingSend : public PulseFrames, public testing::WithParamInterface<Failing> {};

INSTANTIATE_TEST_SUITE_P(Pulses, FailingSend,
                         testing::Values(Failing{"btnSendPulse", 0, 0}, Failing{"btnSendFoc", 1, 1}),
                         [](const auto& row) { return row.param.button; });

TEST_P(FailingSend, ThePulseIsStartedAlsoWhenItDidNotGetThere) {
  StartLed(12, 100, FailWrite(1));
  const PulseState before = Held().ledPulses[GetParam().index];
  Type("IdleTON", "5");
  Type("FocTON", "5");
  Click(GetParam().button);
  EXPECT_EQ(Held().ledPulses[GetParam().index], before);
  EXPECT_EQ(Held().pulseStarted, GetParam().pulse);
  EXPECT_FALSE(IsOnline());
  EXPECT_TRUE(dialogs.errors.empty());
  EXPECT_EQ(LabelText("HelpLabel"), "Press F1 for help") << "there is no good news";
}

TEST_P(FailingSend, AStartThatFailsGoesOffline) {
  StartLed(12, 100, FailWrite(2));
  Type("IdleTON", "5");
  Type("FocTON", "5");
  Click(GetParam().button);
  EXPECT_EQ(Held().ledPulses[GetParam().index].Ton, 5000);
  EXPECT_EQ(Held().pulseStarted, std::nullopt);
  EXPECT_FALSE(IsOnline());
}

TEST_F(PulseFrames, TheHelpLineSaysWhatTheButtonsAreFor) {
  StartLed(12);
  const auto enter = [this](const char* control) {
    QEnterEvent event({1, 1}, {1, 1}, {1, 1});
    QApplication::sendEvent(&Find<QWidget>(control), &event);
    return LabelText("HelpLabel");
  };
  EXPECT_EQ(enter("btnSendPulse"), "Apply and Test");
  EXPECT_EQ(enter("FrameFoc"), "Press F1 for help");
  EXPECT_EQ(enter("btnSendFoc"), "Apply and Test");
  EXPECT_EQ(enter("PickColor_frame"), "Press F1 for help");
  EXPECT_EQ(enter("btnUpdateLED"), "Update LED Configuration");
  EXPECT_EQ(enter("labelLED1"), "Press F1 for help");
}

TEST_F(PulseFrames, TheTabKeyGoesThroughThePanelAsTheEyeDoes) {
  StartLed(12);
  Find<QWidget>("LEDcombo").setFocus();
  QStringList order;
  for (int i = 0; i < 17; ++i) {
    order.append(window->focusWidget()->objectName());
    QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(order, QStringList({"LEDcombo", "OverdriveSlider", "OverdriveLabel", "btnUpdateLED", "btnPulseHigh",
                                "btnPulseLow", "IdleTON", "IdleTOFF", "IdleTRISE", "IdleTFALL", "btnSendPulse",
                                "btnFocHigh", "FocTON", "FocTOFF", "focNREP", "btnSendFoc", "btnOpenLED"}));
}

}  // namespace
}  // namespace kestrin::support
