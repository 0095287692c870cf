// SPDX-License-Identifier: MIT
// What the panel "Acceleration Sensor Configuration" says about the board, and what it asks before it sends.

#include <QTest>

#include "ui/motion/ConfigFrameFixture.h"
#include "ui/motion/ParameterSlider.h"

namespace kestrin::support {
namespace {

using Harmless = ui::kit::Dialogs::Harmless;

constexpr const char* kSerial = "4B535401";
/// As the board holds them; the flash period in units of 4 ms.
constexpr core::device::AccParam kMine{7, 8, 9, 10, 11, 100};
constexpr std::array<int, 6> kMineHeld{7, 8, 9, 10, 11, 100};
constexpr std::array<int, 6> kWipedHeld{255, 255, 255, 255, 255, 255};

constexpr const char* kUnread = "The board's values could not be read: the sliders do not show what it holds.";
constexpr const char* kAllHeld = "The board holds these values.";
constexpr const char* kSomeUnsent =
    "▲ marks what the board holds. Values that are \"not sent\" are on the sliders only.";

class ConfigControl : public ConfigFrameFixture {
 protected:
  using Texts = std::vector<QString>;
  using Marks = std::vector<int>;

  void Open() { Button("ConfigBtn").click(); }
  /// What stands beside each value.
  [[nodiscard]] Texts States() const {
    Texts texts;
    for (const ConfigRow& row : kConfigRows) texts.push_back(LabelText(State(row).c_str()));
    return texts;
  }
  [[nodiscard]] static std::string State(const ConfigRow& row) {
    const std::string label = row.label;
    return label.substr(0, label.size() - std::string("Label").size()) + "State";
  }
  /// Where each slider's mark is; -1 for none.
  [[nodiscard]] Marks MarksShown() const {
    Marks marks;
    for (const ConfigRow& row : kConfigRows)
      marks.push_back(Find<ui::motion::ParameterSlider>(row.slider).Mark().value_or(-1));
    return marks;
  }
  [[nodiscard]] static Texts Of(std::initializer_list<int> unsent) {
    Texts texts(6);
    for (const int index : unsent) texts[static_cast<std::size_t>(index)] = "not sent";
    return texts;
  }
  [[nodiscard]] Values Kept() const {
    const auto found = kept.Find(kSerial);
    if (!found) return {};
    return {found->MotionTh, found->MotionDeb, found->ImpactTh, found->ImpactDeb, found->ImpactTm, found->FOCTime};
  }
  [[nodiscard]] QString News() const { return LabelText("HelpLabel"); }
  /// A download that loses the connection between the erase and the putting back of the values.
  void InterruptDownload() {
    window->OpenSet(CompleteSet());
    Button("SendBtn").click();
    ASSERT_EQ(LabelText("InformationLabel"), "Connection lost");
    // "Close".
    Press("CancelBtn");
  }
};

TEST_F(ConfigControl, SaysWhichValuesTheBoardHoldsAndWhichAreNotSent) {
  StartHolding(4389, kMineHeld);
  Open();
  EXPECT_EQ(LabelText("ConfigSummary"), kAllHeld);
  EXPECT_EQ(States(), Of({}));
  EXPECT_EQ(MarksShown(), (Marks{7, 8, 9, 10, 11, 400}));
  EXPECT_FALSE(Shown("ReadCmdBtn"));
  EXPECT_FALSE(Shown("KeptNotice"));

  Slider("ImpactThresholdSlider").setValue(30);
  Slider("FOCTimeSlider").setValue(200);
  EXPECT_EQ(States(), Of({2, 5}));
  EXPECT_EQ(MarksShown(), (Marks{7, 8, 9, 10, 11, 400})) << "the board holds what it held";
  EXPECT_EQ(LabelText("ConfigSummary"), kSomeUnsent);
  EXPECT_EQ(Slider("ImpactThresholdSlider").accessibleDescription(), "Not sent. The board holds 9.");
  EXPECT_EQ(Slider("MotionThresholdSlider").accessibleDescription(), "The board holds 7.");
  Slider("FOCTimeSlider").setValue(400);
  EXPECT_EQ(States(), Of({2})) << "moved back";

  Press("CloseCfgBtn");
  Open();
  EXPECT_EQ(States(), Of({2})) << "as it was left";
  EXPECT_EQ(Slider("ImpactThresholdSlider").value(), 30);
  Press("SendCmdBtn");
  EXPECT_EQ(Held(), (Values{7, 8, 30, 10, 11, 100}));
  EXPECT_EQ(States(), Of({}));
  EXPECT_EQ(MarksShown(), (Marks{7, 8, 30, 10, 11, 400}));
  EXPECT_EQ(LabelText("ConfigSummary"), kAllHeld);
  EXPECT_EQ(News(), "The board has taken the new values.");
}

TEST_F(ConfigControl, FactoryDefaultsAreNotSentUntilTheyAre) {
  StartHolding(4389, {180, 2, 9, 50, 11, 13});
  Open();
  Press("DefaultBtn");
  EXPECT_EQ(States(), Of({2, 4}));
  EXPECT_EQ(Held(), (Values{180, 2, 9, 50, 11, 13}));
  Press("SendCmdBtn");
  EXPECT_EQ(States(), Of({}));
}

TEST_F(ConfigControl, AValueThatItsSliderDoesNotReachIsNotTakenForTheBoards) {
  StartHolding(4389, {7, 255, 9, 10, 11, 255});
  Open();
  EXPECT_EQ(States(), Of({1, 5}));
  EXPECT_EQ(Find<QLabel>("MotionDebouncingState").toolTip(), "The board holds 255.");
  EXPECT_EQ(Find<QLabel>("FOCTimeState").toolTip(), "The board holds 1020.");
  EXPECT_EQ(MarksShown(), (Marks{7, 25, 9, 10, 11, 1000})) << "the nearest place that there is";
}

TEST_F(ConfigControl, ABoardWithoutAFlashPeriodHoldsNoneAndIsSentAllTheSame) {
  StartHolding(4388, kMineHeld);
  Open();
  EXPECT_EQ(States(), Of({}));
  EXPECT_EQ(MarksShown(), (Marks{7, 8, 9, 10, 11, -1}));
}

TEST_F(ConfigControl, ARefusedSendLeavesTheValuesNotSent) {
  // Going online reads six answers; the seventh is that to the new values.
  Start("id=4389,fault=read:7");
  Open();
  Slider("MotionThresholdSlider").setValue(99);
  Press("SendCmdBtn");
  EXPECT_EQ(States(), Of({0}));
  EXPECT_EQ(MarksShown()[0], 180);
}

TEST_F(ConfigControl, ValuesThatCouldNotBeReadAreToldAndReadAgain) {
  // The fourth answer is the first with parameters.
  StartHolding(4389, kMineHeld, ",fault=read:4");
  EXPECT_EQ(News(),
            "The board did not tell its motion and impact parameters. \"Read again\" under Setup asks once more.");
  Open();
  EXPECT_EQ(LabelText("ConfigSummary"), kUnread);
  EXPECT_TRUE(Shown("ReadCmdBtn"));
  EXPECT_EQ(States(), Of({0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(MarksShown(), (Marks{-1, -1, -1, -1, -1, -1}));
  EXPECT_EQ(Slider("MotionThresholdSlider").accessibleDescription(), "Not sent.");
  Slider("ImpactThresholdSlider").setValue(30);
  Press("ReadCmdBtn");
  EXPECT_EQ(Sliders(), (Values{7, 8, 30, 10, 11, 400})) << "the one that was moved stays";
  EXPECT_EQ(States(), Of({2}));
  EXPECT_EQ(MarksShown(), (Marks{7, 8, 9, 10, 11, 400}));
  EXPECT_FALSE(Shown("ReadCmdBtn"));
  EXPECT_EQ(News(), "The board has told its values.");
}

TEST_F(ConfigControl, SendingOverUnreadValuesAsksFirst) {
  StartHolding(4389, kMineHeld, ",fault=read:4");
  Open();
  dialogs.okAnswers = {false};
  Press("SendCmdBtn");
  ASSERT_EQ(dialogs.asked.size(), 1U);
  EXPECT_EQ(dialogs.asked[0].question,
            "The board's own values could not be read.\nReplace all six by what the sliders show?");
  EXPECT_EQ(dialogs.asked[0].harmless, Harmless::Cancel);
  EXPECT_EQ(Held(), (Values{7, 8, 9, 10, 11, 100}));
  EXPECT_EQ(agent->Board().State().resets, 0U);
  EXPECT_EQ(News(), "Nothing was sent.");
  dialogs.okAnswers = {true};
  Press("SendCmdBtn");
  EXPECT_EQ(Held(), (Values{180, 2, 10, 50, 125, 13}));
  EXPECT_EQ(LabelText("ConfigSummary"), kAllHeld);
  Press("SendCmdBtn");
  EXPECT_EQ(dialogs.asked.size(), 2U) << "they are known now";
}

TEST_F(ConfigControl, AReadingThatFailsAgainIsTold) {
  StartHolding(4389, kMineHeld, ",fault=unplug:8");
  Open();
  ASSERT_EQ(LabelText("ConfigSummary"), kUnread);
  Press("ReadCmdBtn");
  EXPECT_EQ(LabelText("ConfigSummary"), kUnread);
  EXPECT_TRUE(Shown("ReadCmdBtn"));
  EXPECT_EQ(News(), "The board did not tell its values. Check its plug and read again.");
}

TEST_F(ConfigControl, ValuesThatWereTakenButNotReadBackAreSaidToBeSo) {
  // The seventh answer takes the values, the eighth would tell them.
  StartHolding(4389, kMineHeld, ",fault=read:8");
  kept.kept[kSerial] = kMine;
  Open();
  Press("SendCmdBtn");
  EXPECT_EQ(LabelText("ConfigSummary"),
            "The board has taken the values that ▲ marks, but has not told since what it holds.");
  EXPECT_EQ(States(), Of({}));
  EXPECT_EQ(MarksShown(), (Marks{7, 8, 9, 10, 11, 400}));
  EXPECT_EQ(Kept(), (Values{7, 8, 9, 10, 11, 100})) << "it has not confirmed that it holds them";
  Press("ReadCmdBtn");
  EXPECT_EQ(LabelText("ConfigSummary"), kAllHeld);
  EXPECT_EQ(Kept(), Values{}) << "now it has";
  EXPECT_FALSE(Shown("KeptNotice"));
}

TEST_F(ConfigControl, KeptSettingsAreToldAndPutBack) {
  kept.kept[kSerial] = kMine;
  kept.kept["other"] = kMine;
  StartHolding(4389, kWipedHeld);
  EXPECT_EQ(News(), "This board's settings from before an interrupted download are kept. Put them back under Setup.");
  Open();
  EXPECT_EQ(News(), "This board's settings from before an interrupted download are kept. Put them back here.");
  EXPECT_TRUE(Shown("KeptNotice"));
  EXPECT_EQ(Find<QPushButton>("PutBackBtn").text(), "Put back the settings from before the download");
  Press("PutBackBtn");
  EXPECT_EQ(Sliders(), (Values{7, 8, 9, 10, 11, 400}));
  EXPECT_EQ(States(), Of({0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(Held(), (Values{255, 255, 255, 255, 255, 255})) << "nothing is sent yet";
  EXPECT_EQ(Kept(), (Values{7, 8, 9, 10, 11, 100}));
  Press("SendCmdBtn");
  EXPECT_EQ(Held(), (Values{7, 8, 9, 10, 11, 100}));
  EXPECT_TRUE(dialogs.asked.empty()) << "nothing is lost by it";
  EXPECT_EQ(Kept(), Values{});
  EXPECT_EQ(kept.kept.size(), 1U) << "those of another board stay";
  EXPECT_FALSE(Shown("KeptNotice"));
  EXPECT_EQ(States(), Of({}));
}

TEST_F(ConfigControl, OtherValuesOverKeptSettingsAreAskedAbout) {
  kept.kept[kSerial] = kMine;
  StartHolding(4389, kWipedHeld);
  Open();
  dialogs.okAnswers = {false};
  Press("SendCmdBtn");
  ASSERT_EQ(dialogs.asked.size(), 1U);
  EXPECT_EQ(dialogs.asked[0].question,
            "The settings from before the interrupted download are kept for this board.\n"
            "Send other values and forget the kept ones?");
  EXPECT_EQ(dialogs.asked[0].harmless, Harmless::Cancel);
  EXPECT_EQ(Held(), (Values{255, 255, 255, 255, 255, 255}));
  EXPECT_EQ(Kept(), (Values{7, 8, 9, 10, 11, 100}));
  Press("DefaultBtn");
  dialogs.okAnswers = {true};
  Press("SendCmdBtn");
  EXPECT_EQ(Held(), (Values{180, 2, 10, 50, 125, 13}));
  EXPECT_EQ(Kept(), Values{}) << "the person has chosen others, and the board has confirmed these";
  EXPECT_FALSE(Shown("KeptNotice"));
}

TEST_F(ConfigControl, KeptSettingsThatTheBoardRefusesStayKept) {
  kept.kept[kSerial] = kMine;
  StartHolding(4389, kWipedHeld, ",fault=read:7");
  Open();
  Press("PutBackBtn");
  Press("SendCmdBtn");
  EXPECT_EQ(Kept(), (Values{7, 8, 9, 10, 11, 100}));
  EXPECT_TRUE(Shown("KeptNotice"));
}

TEST_F(ConfigControl, ADownloadThatWasInterruptedMeanwhileIsNoticed) {
  // Going online writes three reports; the third of the download puts the values back.
  StartHolding(4389, kMineHeld, ",fault=write:6");
  InterruptDownload();
  ASSERT_EQ(Kept(), (Values{7, 8, 9, 10, 11, 100}));
  Open();
  EXPECT_TRUE(Shown("KeptNotice"));
  EXPECT_EQ(LabelText("ConfigSummary"), "What the board holds now is not known.");
  EXPECT_EQ(States(), Of({0, 1, 2, 3, 4, 5})) << "they were the board's once";
  EXPECT_EQ(MarksShown(), (Marks{-1, -1, -1, -1, -1, -1}));
}

TEST_F(ConfigControl, ADownloadThatPutThemBackIsNoticed) {
  kept.kept[kSerial] = kMine;
  StartHolding(4389, kWipedHeld);
  Open();
  Slider("ImpactThresholdSlider").setValue(3);
  Press("CloseCfgBtn");
  window->OpenSet(CompleteSet());
  Button("SendBtn").click();
  ASSERT_EQ(LabelText("InformationLabel"), "SUCCESS !");
  ASSERT_EQ(Kept(), Values{});
  Press("CancelBtn");
  Open();
  EXPECT_FALSE(Shown("KeptNotice"));
  EXPECT_EQ(MarksShown(), (Marks{7, 8, 9, 10, 11, 400}));
  EXPECT_EQ(Sliders(), (Values{7, 8, 3, 10, 11, 400})) << "the one that was moved stays";
  EXPECT_EQ(States(), Of({2}));
}

TEST_F(ConfigControl, HasRoomInTheSmallestWindowWithAllThatItCanSay) {
  kept.kept[kSerial] = kMine;
  StartHolding(4389, kMineHeld, ",fault=read:4");
  EXPECT_EQ(News(), "This board's settings from before an interrupted download are kept. Put them back under Setup.")
      << "which is more than that it could not be read";
  window->resize(800, 600);
  Open();
  ASSERT_TRUE(Shown("KeptNotice"));
  ASSERT_TRUE(Shown("ReadCmdBtn"));
  window->activateWindow();
  ASSERT_TRUE(Until([this] { return window->isActiveWindow(); })) << "only there the focus moves what is in sight";
  for (const char* const name :
       {"ReadCmdBtn", "PutBackBtn", "DefaultBtn", "CloseCfgBtn", "SendCmdBtn", "ConfigCaption"}) {
    const auto& control = Find<QWidget>(name);
    EXPECT_TRUE(window->rect().contains(QRect(control.mapTo(window.get(), QPoint()), control.size()))) << name;
    EXPECT_GE(control.height(), control.sizeHint().height()) << name;
  }
  for (const ConfigRow& row : kConfigRows) {
    for (int keys = 0; keys < 50 && !Slider(row.slider).hasFocus(); ++keys)
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_TRUE(Slider(row.slider).hasFocus()) << row.slider;
    QWidget& shelf = *Find<QWidget>("ConfigShelf").findChild<QWidget*>("qt_scrollarea_viewport");
    EXPECT_TRUE(shelf.rect().contains(QRect(Slider(row.slider).mapTo(&shelf, QPoint()), Slider(row.slider).size())))
        << row.slider;
  }
}

TEST_F(ConfigControl, NothingIsSentToABoardThatDidNotSayWhatItIs) {
  // The second half of the serial number is missing (answer 3), and again (8) when it is asked for before the sending;
  // the third time it comes.
  StartHolding(4389, kMineHeld, ",fault=read:3,fault=read:8");
  Open();
  Slider("MotionThresholdSlider").setValue(99);
  Press("SendCmdBtn");
  EXPECT_EQ(Held(), (Values{7, 8, 9, 10, 11, 100}));
  EXPECT_EQ(News(), "The board did not say what it is: nothing was sent. Unplug it and plug it in again.");
  Press("SendCmdBtn");
  EXPECT_EQ(Held()[0], 99);
}

TEST_F(ConfigControl, ABoardThatComesBackShowsItsOwnAndSaysThatUnsentValuesAreGone) {
  StartHolding(4389, kMineHeld);
  Open();
  Slider("MotionThresholdSlider").setValue(99);
  agent->Unplug();
  Tick("NoticeTimer");
  EXPECT_EQ(Slider("MotionThresholdSlider").value(), 99);
  EXPECT_EQ(States(), Of({0}));
  for (const char* const button : {"ReadCmdBtn", "PutBackBtn"}) {
    SCOPED_TRACE(button);
    Press(button);
    EXPECT_TRUE(News().startsWith("No sound board is connected")) << News().toStdString();
  }
  agent->Plug();
  Tick("NoticeTimer");
  Tick("GoOnlineTimer");
  EXPECT_EQ(Slider("MotionThresholdSlider").value(), 7);
  EXPECT_EQ(News(), "Setup shows what the board holds; values that were not sent are gone.");
}

TEST_F(ConfigControl, WhatTheBoardHasMadeOfTheValuesIsTold) {
  Start("id=4389,wire=usb");
  Open();
  simulator::BoardState clipped = agent->Board().State();
  clipped.accelerometer = {40, 2, 10, 50, 125, 13};
  clock.whileWaiting = [this, &clipped] {
    if (agent->Board().State().resets != 1) return;
    // Two resets are never sent, so this happens once.
    clipped.resets = 2;
    agent->Board() = simulator::VirtualBoard(clipped);
  };
  Slider("MotionThresholdSlider").setValue(99);
  Press("SendCmdBtn");
  clock.whileWaiting = nullptr;
  EXPECT_EQ(News(), "The board has made other values of some of them: the sliders show what it holds.");
  EXPECT_EQ(States(), Of({}));
}

}  // namespace
}  // namespace kestrin::support
