// SPDX-License-Identifier: MIT
// Opening and saving LED settings from the panel.

#include "ui/led/LedPanelFixture.h"

namespace kestrin::support {
namespace {

constexpr const char* kGood =
    "KestdrinLEDSettings#1\r\n"
    "PULSE+Low=1_2_3_4+High=5_6_7_8+Times=1500_20_2.5_500\r\n"
    "FOC=9_10_11_12+Times=40_80_4\r\n";

class LedSettings : public LedPanelFixture {
 protected:
  void Open(const std::string& text) {
    dialogs.filesToOpen = {Text(WriteBytes(folder / "blade.ldset", text))};
    Click("btnOpenLED");
  }
};

TEST_F(LedSettings, OpeningFillsBothPulsesAndSendsNothing) {
  StartLed(40);
  const simulator::BoardState before = Held();
  Click("btnPulseHigh");
  Open(kGood);
  EXPECT_FALSE(Shown("PickColor_frame")) << "it showed a level that is gone";
  EXPECT_EQ(BoxText("IdleTON"), "1.5");
  EXPECT_EQ(BoxText("IdleTOFF"), "0.02");
  EXPECT_EQ(BoxText("IdleTRISE"), "0");
  EXPECT_EQ(BoxText("IdleTFALL"), "0.5");
  EXPECT_EQ(BoxText("FocTON"), "0.04");
  EXPECT_EQ(BoxText("FocTOFF"), "0.08");
  EXPECT_EQ(BoxText("focNREP"), "4");
  Click("btnPulseLow");
  EXPECT_EQ(Sliders(4), (std::vector<int>{1, 2, 3, 4}));
  Click("btnPulseHigh");
  EXPECT_EQ(Sliders(4), (std::vector<int>{5, 6, 7, 8}));
  Click("btnFocHigh");
  EXPECT_EQ(Sliders(4), (std::vector<int>{9, 10, 11, 12}));
  EXPECT_EQ(Held(), before);
  EXPECT_EQ(dialogs.lastStart, Text(program));
  EXPECT_EQ(dialogs.lastFilter, "LED Driver Setting (*.ldset);;All files (*)");
  EXPECT_EQ(dialogs.lastTopic, ui::kit::HelpContext::LedSettings);
  EXPECT_EQ(LabelText("HelpLabel"), "The LED settings are open. Send the pulses to put them on the board.");
}

TEST_F(LedSettings, OpeningAndSavingMayBeCancelled) {
  StartLed(12);
  Click("btnPulseHigh");
  dialogs.filesToOpen = {""};
  Click("btnOpenLED");
  dialogs.filesToSave = {""};
  Click("btnSaveLED");
  EXPECT_TRUE(dialogs.messages.empty());
  EXPECT_EQ(BoxText("IdleTON"), "0.8");
  EXPECT_TRUE(Shown("PickColor_frame"));
}

TEST_F(LedSettings, ADamagedFileIsToldAndWhatWasReadStays) {
  StartLed(12);
  Open(
      "KestdrinLEDSettings#1\r\nPULSE+Low=1_2_3_4+High=5_6_7_8+Times=3000_20_0_500\r\nFOC=9_10_11_12+Times=40_80_4_"
      "5\r\n");
  EXPECT_EQ(dialogs.messages, std::vector<QString>{"File is corrupted, could not read !"});
  EXPECT_TRUE(dialogs.errors.empty());
  EXPECT_TRUE(dialogs.lastDetail.contains("line 3")) << dialogs.lastDetail.toStdString();
  EXPECT_EQ(BoxText("IdleTON"), "3");
  EXPECT_EQ(BoxText("FocTON"), "0.04");
  Click("btnPulseHigh");
  EXPECT_EQ(Sliders(3), (std::vector<int>{5, 6, 7}));
}

TEST_F(LedSettings, LevelsOutOfRangeAreShownAsTheNearestOne) {
  StartLed(12);
  Open("KestdrinLEDSettings#1\r\nPULSE+Low=300_-5_0_0+High=0_0_0_0+Times=1_1_1_1\r\nFOC=0_0_0_0+Times=1_1_1\r\n");
  EXPECT_TRUE(dialogs.messages.empty());
  Click("btnPulseLow");
  EXPECT_EQ(Sliders(3), (std::vector<int>{255, 0, 0}));
}

TEST_F(LedSettings, SavingWritesWhatThePanelShows) {
  StartLed(12);
  Type("IdleTON", "2.5");
  Type("focNREP", "9");
  const simulator::BoardState before = Held();
  dialogs.filesToSave = {Text(folder / "mine.ldset")};
  Click("btnSaveLED");
  EXPECT_EQ(ReadBytes(folder / "mine.ldset"),
            "KestdrinLEDSettings#1\r\n"
            "PULSE+Low=40_0_90_7+High=255_30_140_200+Times=2500_1500_1000_500\r\n"
            "FOC=255_128_64_20+Times=40_60_9\r\n");
  EXPECT_EQ(dialogs.lastSuffix, "ldset");
  EXPECT_EQ(dialogs.lastStart, Text(program));
  EXPECT_EQ(Held(), before);
  EXPECT_EQ(LabelText("HelpLabel"), "The LED settings are saved.");
}

TEST_F(LedSettings, AFileThatCannotBeWrittenIsTold) {
  StartLed(12);
  dialogs.filesToSave = {Text(folder / "no such folder" / "mine.ldset")};
  Click("btnSaveLED");
  ASSERT_EQ(dialogs.messages.size(), 1U);
  EXPECT_TRUE(dialogs.messages[0].contains("mine.ldset")) << dialogs.messages[0].toStdString();
}

/// With the keyboard, wherever it is on the page.
class LedSettingsKeys : public LedSettings {
 protected:
  void Press(QKeySequence::StandardKey key) {
    const QKeyCombination combination = QKeySequence(key)[0];
    QTest::keyClick(window->focusWidget(), combination.key(), combination.keyboardModifiers());
  }
};

TEST_F(LedSettingsKeys, OpenAndSave) {
  StartLed(12);
  Find<QWidget>("IdleTFALL").setFocus();
  dialogs.filesToOpen = {Text(WriteBytes(folder / "blade.ldset", kGood))};
  Press(QKeySequence::Open);
  EXPECT_TRUE(Until([this] { return BoxText("IdleTON") == "1.5"; }));
  dialogs.filesToSave = {Text(folder / "mine.ldset")};
  Press(QKeySequence::Save);
  EXPECT_TRUE(Until([this] { return std::filesystem::exists(folder / "mine.ldset"); }));
  EXPECT_EQ(LabelText("HelpLabel"), "The LED settings are saved.");
  EXPECT_TRUE(Find<QWidget>("btnOpenLED").toolTip().contains("Ctrl+O"));
  EXPECT_TRUE(Find<QWidget>("btnSaveLED").toolTip().contains("Ctrl+S"));
}

TEST_F(LedSettingsKeys, SaveWhatWasBeingTyped) {
  StartLed(12);
  auto& box = Find<QLineEdit>("IdleTON");
  box.setFocus();
  box.selectAll();
  QTest::keyClicks(&box, "2.5");
  dialogs.filesToSave = {Text(folder / "mine.ldset")};
  Press(QKeySequence::Save);
  ASSERT_TRUE(Until([this] { return std::filesystem::exists(folder / "mine.ldset"); }));
  EXPECT_NE(ReadBytes(folder / "mine.ldset").find("+Times=2500_1500_1000_500"), std::string::npos);
}

TEST_F(LedSettingsKeys, OfflineOpenIsForTheSoundSetAgain) {
  StartLed(12);
  agent->Unplug();
  Tick("NoticeTimer");
  ASSERT_TRUE(Shown("frmLED"));
  Find<QWidget>("IdleTON").setFocus();
  dialogs.filesToOpen = {""};
  Press(QKeySequence::Open);
  EXPECT_TRUE(Until([this] { return dialogs.filesToOpen.empty(); }));
  EXPECT_FALSE(dialogs.lastFilter.contains("LED Driver Setting")) << dialogs.lastFilter.toStdString();
  EXPECT_FALSE(Find<QWidget>("btnOpenLED").toolTip().contains("Ctrl+O"));
  dialogs.filesToSave = {Text(folder / "mine.ldset")};
  Press(QKeySequence::Save);
  EXPECT_TRUE(Until([this] { return std::filesystem::exists(folder / "mine.ldset"); })) << "they are still on the page";
}

}  // namespace
}  // namespace kestrin::support
