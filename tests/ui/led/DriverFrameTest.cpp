// SPDX-License-Identifier: MIT
// "Driver configuration", and how the panel comes up.

#include "core/ledsetup/LedSetup.h"
#include "ui/kit/CommandGate.h"
#include "ui/kit/TopicOf.h"
#include "ui/led/LedPanelFixture.h"

namespace kestrin::support {
namespace {

using ::testing::ElementsAre;

const QColor kRed(255, 0, 0);
const QColor kGreen(0, 192, 0);
const QColor kBlue(128, 128, 255);
const QColor kAmber(255, 128, 0);
const QColor kWhite(255, 255, 255);
const QColor kBlack(0, 0, 0);

constexpr const char* kInvalid = "Invalid LED configuration file. Check KestrinLEDS.ldcfg in the installation path !";

class DriverFrame : public LedPanelFixture {
 protected:
  [[nodiscard]] QComboBox& Types() const { return Find<QComboBox>("LEDcombo"); }
  [[nodiscard]] QSlider& Overdrive() const { return Find<QSlider>("OverdriveSlider"); }
  [[nodiscard]] QString OverdriveText() const { return Find<QSpinBox>("OverdriveLabel").text(); }
};

TEST_F(DriverFrame, TakesThePlaceOfTheSoundsAndShowsWhatTheBoardHolds) {
  StartLed(12, 110);
  EXPECT_TRUE(Shown("frmLED"));
  EXPECT_FALSE(Shown("DriveList"));
  QStringList types;
  for (int i = 0; i < Types().count(); ++i) types.append(Types().itemText(i));
  EXPECT_EQ(types, QStringList({"Solo", "Duo", "Trio", "Quad"}));
  EXPECT_EQ(Types().currentText(), "Trio");
  EXPECT_THAT(TextColors("labelLED"), ElementsAre(kRed, kGreen, kBlue, kBlack));
  EXPECT_EQ(Overdrive().minimum(), 1);
  EXPECT_EQ(Overdrive().maximum(), 111) << "10000 / 90";
  EXPECT_EQ(Overdrive().value(), 110);
  EXPECT_EQ(OverdriveText(), "110%");
  EXPECT_EQ(BoxText("IdleTON"), "0.8");
  EXPECT_EQ(BoxText("IdleTOFF"), "1.5");
  EXPECT_EQ(BoxText("IdleTRISE"), "1");
  EXPECT_EQ(BoxText("IdleTFALL"), "0.5");
  EXPECT_EQ(BoxText("FocTON"), "0.04");
  EXPECT_EQ(BoxText("FocTOFF"), "0.06");
  EXPECT_EQ(BoxText("focNREP"), "3");
  EXPECT_FALSE(Shown("PickColor_frame"));
  EXPECT_EQ(LabelText("LEDNotice"), "");
}

TEST_F(DriverFrame, HasTheCaptionsThatItShouldHave) {
  StartLed(12);
  Click("btnPulseHigh");
  QStringList texts;
  for (const QLabel* const label : Find<QWidget>("frmLED").findChildren<QLabel*>()) texts.append(label->text());
  for (const QAbstractButton* const button : Find<QWidget>("frmLED").findChildren<QAbstractButton*>())
    texts.append(button->text());
  for (const char* const text : {"LED DRIVER SETUP",
                                 "Driver configuration",
                                 "LED Type",
                                 "Output Channels",
                                 "LED 1",
                                 "LED 2",
                                 "LED 3",
                                 "LED 4",
                                 "Overdrive:",
                                 "Idle Pulse",
                                 "Flash on Clash",
                                 "ON",
                                 "OFF",
                                 "RISE",
                                 "FALL",
                                 "Repeat",
                                 "times",
                                 "LED setting",
                                 "LED1",
                                 "LED2",
                                 "LED3",
                                 "LED4",
                                 "Pick color",
                                 "Color Fidelity",
                                 "Apply",
                                 "Cancel"})
    EXPECT_TRUE(texts.contains(text)) << text;
  EXPECT_EQ(texts.count("s"), 6) << "a unit beside every time box";
}

TEST_F(DriverFrame, SaysAHundredPercentBeforeAnyBoardWasThere) {
  Make();
  Show();
  EXPECT_EQ(OverdriveText(), "100%");
  EXPECT_EQ(Overdrive().value(), 100);
}

TEST_F(DriverFrame, EveryControlHasItsPictureNameAndTopic) {
  StartLed(40);
  for (const char* const button : {"btnUpdateLED", "btnSendPulse", "btnSendFoc", "btnOpenLED", "btnSaveLED"})
    EXPECT_FALSE(Find<QAbstractButton>(button).icon().isNull()) << button;
  const auto topic = [this](const char* control) { return ui::kit::TopicOf(&Find<QWidget>(control)); };
  EXPECT_EQ(topic("frmLED"), ui::kit::HelpContext::LedFrame);
  EXPECT_EQ(topic("LEDcombo"), ui::kit::HelpContext::LedConfiguration);
  EXPECT_EQ(topic("btnUpdateLED"), ui::kit::HelpContext::LedConfiguration);
  EXPECT_EQ(topic("IdleTON"), ui::kit::HelpContext::IdlePulse);
  EXPECT_EQ(topic("btnSendFoc"), ui::kit::HelpContext::FlashOnClash);
  EXPECT_EQ(topic("SliderLedSet1"), ui::kit::HelpContext::ColorPicker);
  EXPECT_EQ(topic("btnOpenLED"), ui::kit::HelpContext::LedSettings);
  for (const QWidget* const control : Find<QWidget>("frmLED").findChildren<QWidget*>()) {
    if ((control->focusPolicy() & Qt::TabFocus) == 0 || control->window() != window.get()) continue;
    // What another control speaks for.
    if (control->focusProxy() != nullptr) continue;
    const auto* const button = qobject_cast<const QAbstractButton*>(control);
    EXPECT_FALSE(control->accessibleName().isEmpty() && (button == nullptr || button->text().isEmpty()))
        << control->objectName().toStdString();
  }
}

TEST_F(DriverFrame, AnotherTypeIsShownAndNothingIsSent) {
  StartLed(12, 110);
  const simulator::BoardState before = Held();
  Choose("Duo");
  EXPECT_THAT(TextColors("labelLED"), ElementsAre(kBlue, kAmber, kBlack, kBlack));
  EXPECT_EQ(Overdrive().maximum(), 200) << "10000 / 50";
  EXPECT_EQ(OverdriveText(), "110%");
  Choose("Quad");
  EXPECT_THAT(TextColors("labelLED"), ElementsAre(kRed, kGreen, kBlue, kWhite));
  Choose("Solo");
  EXPECT_THAT(TextColors("labelLED"), ElementsAre(kWhite, kBlack, kBlack, kBlack));
  EXPECT_EQ(Held(), before);
}

TEST_F(DriverFrame, TypesAreChosenWithTheKeyboardToo) {
  StartLed(12);
  Types().setFocus();
  QTest::keyClick(&Types(), Qt::Key_Up);
  EXPECT_EQ(Types().currentText(), "Duo");
  EXPECT_EQ(Overdrive().maximum(), 200);
}

TEST_F(DriverFrame, ATypeWhoseNameIsNoUtf8CanBeChosenToo) {
  std::string latin = kDuo;
  latin.replace(0, 3,
                "D\xFC"
                "o");
  WriteCatalogue(std::string(kHeader) + kSolo + latin);
  StartLed(1);
  Choose(
      QString::fromUtf8("D\xFC"
                        "o"));
  EXPECT_THAT(TextColors("labelLED"), ElementsAre(kBlue, kAmber, kBlack, kBlack));
}

TEST_F(DriverFrame, NumbersHaveTheSameDigitsInEveryCountry) {
  const QLocale before;
  QLocale::setDefault(QLocale("ar_EG"));
  ASSERT_NE(QLocale().toString(110), "110");
  StartLed(2, 110);
  Choose("Trio");
  EXPECT_EQ(OverdriveText(), "110%");
  EXPECT_EQ(Overdrive().value(), 110) << "read back from the box";
  Click("btnPulseHigh");
  EXPECT_EQ(Find<QSpinBox>("ValueLedSet1").text(), "255");
  QLocale::setDefault(before);
}

TEST_F(DriverFrame, AnotherTypeLowersAnOverdriveThatItDoesNotBear) {
  StartLed(2, 180);
  EXPECT_EQ(OverdriveText(), "180%");
  Choose("Trio");
  EXPECT_EQ(Overdrive().value(), 111);
  EXPECT_EQ(OverdriveText(), "111%");
}

TEST_F(DriverFrame, AnOverdriveFromTheBoardIsLoweredToo) {
  StartLed(1, 4000);
  EXPECT_EQ(Overdrive().maximum(), 125) << "10000 / 80";
  EXPECT_EQ(OverdriveText(), "125%");
}

TEST_F(DriverFrame, ABoardWithoutOverdriveIsShownAsItIs) {
  StartLed(1, 0);
  EXPECT_EQ(OverdriveText(), "0%");
  EXPECT_EQ(Overdrive().value(), 1);
}

TEST_F(DriverFrame, OverdriveIsDraggedAndTyped) {
  StartLed(2, 100);
  const simulator::BoardState before = Held();
  Overdrive().setFocus();
  QTest::keyClick(&Overdrive(), Qt::Key_Right);
  EXPECT_EQ(OverdriveText(), "101%");
  auto& box = Find<QSpinBox>("OverdriveLabel");
  box.setFocus();
  box.selectAll();
  QTest::keyClicks(&box, "150");
  EXPECT_EQ(Overdrive().value(), 150);
  EXPECT_EQ(OverdriveText(), "150%");
  box.selectAll();
  QTest::keyClicks(&box, "0");
  EXPECT_EQ(Overdrive().value(), 1) << "an LED cannot be driven with nothing";
  EXPECT_EQ(OverdriveText(), "1%");
  box.selectAll();
  QTest::keyClicks(&box, "0");
  EXPECT_EQ(Overdrive().value(), 1) << "also when it stands there already";
  EXPECT_EQ(OverdriveText(), "1%");
  EXPECT_EQ(Held(), before);
}

TEST_F(DriverFrame, UpdateAsksWritesAndReadsAgain) {
  StartLed(12, 100);
  Choose("Duo");
  Overdrive().setValue(120);
  Find<QLineEdit>("IdleTON").setText("99");
  Click("btnPulseHigh");
  dialogs.okAnswers = {true};
  Click("btnUpdateLED");
  ASSERT_EQ(dialogs.asked.size(), 1U);
  EXPECT_EQ(dialogs.asked[0].question,
            "WARNING: Setting a different LED than actually installed may damage the LED and driver\r\n"
            "Are you sure you want to continue ?");
  EXPECT_EQ(dialogs.asked[0].harmless, ui::kit::Dialogs::Harmless::Cancel);
  EXPECT_EQ(Held().ledConfig, (simulator::LedConfigState{2, 60, 120}));
  EXPECT_FALSE(Shown("PickColor_frame"));
  EXPECT_EQ(Types().currentText(), "Duo");
  EXPECT_EQ(OverdriveText(), "120%");
  EXPECT_EQ(BoxText("IdleTON"), "0.8") << "the panel shows what the board holds";
  EXPECT_EQ(LabelText("HelpLabel"), "The board has taken LED type and overdrive.");
  EXPECT_TRUE(IsOnline());
}

TEST_F(DriverFrame, UpdateThatIsCancelledSendsNothingAndLeavesTheSlider) {
  StartLed(12, 100);
  Overdrive().setValue(107);
  Click("btnPulseHigh");
  const simulator::BoardState before = Held();
  dialogs.okAnswers = {false};
  Click("btnUpdateLED");
  EXPECT_EQ(Held(), before);
  EXPECT_EQ(Overdrive().value(), 107);
  EXPECT_EQ(OverdriveText(), "107%");
  EXPECT_TRUE(Shown("PickColor_frame"));
}

TEST_F(DriverFrame, APulseThatCannotBeReadAfterAnUpdateIsToldOnThePanel) {
  // The answers behind the update's own: three of the configuration, then those of the idle pulse.
  StartLed(12, 100, FailRead(5));
  dialogs.okAnswers = {true};
  Click("btnUpdateLED");
  EXPECT_EQ(LabelText("LEDNotice"), "The LED driver did not answer. Unplug it and plug it in again.");
  EXPECT_TRUE(IsOnline()) << "the update itself went well";
}

TEST_F(DriverFrame, ThePicturesGoDarkWithPulsesThatCannotBeRead) {
  StartLed(12, 100, FailRead(5));
  Choose("Solo");
  dialogs.okAnswers = {true};
  Click("btnUpdateLED");
  EXPECT_EQ(Find<QAbstractButton>("btnPulseHigh").accessibleDescription(), "#000000")
      << "no pulse could be read, so there is no light";
}

TEST_F(DriverFrame, UpdateThatFailsGoesOfflineWithoutAMessage) {
  StartLed(12, 100, FailRead(1));
  dialogs.okAnswers = {true};
  Click("btnUpdateLED");
  EXPECT_FALSE(IsOnline());
  EXPECT_TRUE(dialogs.errors.empty());
  EXPECT_TRUE(dialogs.messages.empty());
  for (const char* const button : {"btnUpdateLED", "btnSendPulse", "btnSendFoc", "PickColorApply"}) {
    EXPECT_FALSE(Find<QAbstractButton>(button).isEnabled()) << button;
    EXPECT_EQ(Find<QAbstractButton>(button).toolTip(), "No LED driver is connected.") << button;
  }
  EXPECT_TRUE(Find<QAbstractButton>("btnSaveLED").isEnabled());
}

TEST_F(DriverFrame, ATypeWhoseRecordHasBecomeInvalidIsToldWithLineAndField) {
  StartLed(12);
  WriteCatalogue(std::string(kHeader) + kTrio + "\r\nQuad@40#1#1000+Col=redML100MDC80VL3Coef0_0_0_0;0_0_0.1_0;\r\n");
  Choose("Quad");
  EXPECT_EQ(dialogs.errors, std::vector<QString>{kInvalid});
  EXPECT_TRUE(dialogs.lastDetail.contains("line 4")) << dialogs.lastDetail.toStdString();
  EXPECT_TRUE(dialogs.lastDetail.contains("ML")) << dialogs.lastDetail.toStdString();
  EXPECT_TRUE(IsOnline());
}

TEST_F(DriverFrame, ACatalogueThatIsNotValidIsToldWithItsDetailAndGoesOffline) {
  const std::string header = kHeader;
  WriteCatalogue(header + kSolo + "Odd@3#1#9+Col=redML900MDC80VL3Coef0_0_0_0;0_0_0.1_0;\r\n");
  StartLed(12);
  EXPECT_EQ(dialogs.errors, std::vector<QString>{kInvalid});
  EXPECT_TRUE(dialogs.lastDetail.contains("line 3")) << dialogs.lastDetail.toStdString();
  EXPECT_FALSE(IsOnline());
  EXPECT_TRUE(LabelText("LEDNotice").startsWith("KestrinLEDS.ldcfg, line 3")) << LabelText("LEDNotice").toStdString();
  EXPECT_EQ(Types().count(), 0);
  EXPECT_FALSE(Find<QAbstractButton>("btnPulseHigh").isEnabled()) << "there is no LED type to set a level for";
}

TEST_F(DriverFrame, ACatalogueWithoutTheBoardsTypeIsListedAndGoesOffline) {
  StartLed(77);
  EXPECT_EQ(dialogs.errors, std::vector<QString>{kInvalid});
  EXPECT_TRUE(dialogs.lastDetail.contains("77")) << dialogs.lastDetail.toStdString();
  EXPECT_EQ(Types().count(), 4);
  EXPECT_EQ(Types().currentIndex(), -1) << "none of them is the board's";
  EXPECT_FALSE(IsOnline());
}

TEST_F(DriverFrame, ABoardThatComesBackIsReadAgain) {
  StartLed(12);
  Find<QLineEdit>("IdleTON").setText("7");
  Click("btnPulseLow");
  agent->Unplug();
  Tick("NoticeTimer");
  EXPECT_FALSE(IsOnline());
  EXPECT_TRUE(Shown("frmLED")) << "what was set stays in sight";
  EXPECT_FALSE(Find<QAbstractButton>("btnSendPulse").isEnabled());
  agent->Plug();
  Tick("NoticeTimer");
  Tick("GoOnlineTimer");
  EXPECT_TRUE(IsOnline());
  EXPECT_EQ(BoxText("IdleTON"), "0.8");
  EXPECT_FALSE(Shown("PickColor_frame"));
  EXPECT_TRUE(Find<QAbstractButton>("btnSendPulse").isEnabled());
}

TEST_F(DriverFrame, NoCommandStartsInsideAnother) {
  StartLed(12);
  Overdrive().setValue(107);
  dialogs.okAnswers = {true};
  {
    const ui::kit::CommandGate::Passage download(gate);
    for (const char* const button : {"btnUpdateLED", "btnSendPulse", "btnSendFoc"}) Click(button);
    QApplication::processEvents();
    EXPECT_EQ(Held().ledConfig.overdrive, 100);
    EXPECT_EQ(Held().pulseStarted, std::nullopt);
    EXPECT_TRUE(dialogs.asked.empty());
  }
  EXPECT_TRUE(Until([this] { return Held().pulseStarted == 1; })) << "they come afterwards, in their order";
  EXPECT_EQ(Held().ledConfig.overdrive, 107);
}

}  // namespace
}  // namespace kestrin::support
