// SPDX-License-Identifier: MIT
#include "ui/window/Closing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include <QSlider>
#include <QTest>

#include "ui/kit/CommandGate.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Unsaved = ui::kit::Dialogs::Unsaved;

/// The steps alone, over a gate.
class Closing : public testing::Test {
 protected:
  std::vector<std::string> steps;
  bool wanted = true;
  std::function<void()> whileAsking;
  ui::kit::CommandGate gate;
  ui::window::Closing closing{gate,
                              {[this] {
                                 steps.emplace_back("ask");
                                 if (whileAsking) whileAsking();
                                 return wanted;
                               },
                               [this] { steps.emplace_back("stop"); }, [this] { steps.emplace_back("finish"); }}};
};

TEST_F(Closing, AsksThenStopsThenFinishes) {
  EXPECT_TRUE(closing.Close());
  EXPECT_THAT(steps, ElementsAre("ask", "stop", "finish"));
  EXPECT_TRUE(closing.Close()) << "it is closed";
  EXPECT_EQ(steps.size(), 3U);
}

TEST_F(Closing, LeavesEverythingAloneWhenThePersonWantsToStayAndAsksAgainTheNextTime) {
  wanted = false;
  EXPECT_FALSE(closing.Close());
  EXPECT_FALSE(closing.IsEnding());
  EXPECT_THAT(steps, ElementsAre("ask"));
  wanted = true;
  EXPECT_TRUE(closing.Close());
}

TEST_F(Closing, TakesOneCloseAtATime) {
  whileAsking = [this] { EXPECT_FALSE(closing.Close()); };
  std::optional<ui::kit::CommandGate::Passage> work(gate);
  EXPECT_FALSE(closing.Close()) << "something goes on";
  EXPECT_FALSE(closing.Close());
  EXPECT_THAT(steps, ElementsAre("ask", "stop"));
  work.reset();
  ASSERT_TRUE(Until([this] { return closing.IsOver(); }));
  EXPECT_THAT(steps, ElementsAre("ask", "stop", "finish"));
}

TEST_F(Closing, WithoutAQuestionWhenThereIsNobodyToAnswer) {
  closing.EndNow();
  closing.EndNow();
  EXPECT_THAT(steps, ElementsAre("stop", "finish"));
}

TEST_F(Closing, EndsEvenWhileAQuestionStandsWhateverItsAnswer) {
  wanted = false;
  whileAsking = [this] { closing.EndNow(); };
  EXPECT_TRUE(closing.Close());
  EXPECT_THAT(steps, ElementsAre("ask", "stop", "finish"));
}

TEST_F(Closing, DropsWhatWaitsAndWhatComesLater) {
  std::optional<ui::kit::CommandGate::Passage> work(gate);
  gate.WhenFree([this] { steps.emplace_back("waiting"); });
  closing.EndNow();
  gate.WhenFree([this] { steps.emplace_back("later"); });
  work.reset();
  ASSERT_TRUE(Until([this] { return closing.IsOver(); }));
  gate.WhenFree([this] { steps.emplace_back("after the end"); });
  EXPECT_THAT(steps, ElementsAre("stop", "finish"));
}

/// The same in the window.
class ClosingTheWindow : public MainFixture {
 protected:
  void StartWithSet() {
    Start();
    QObject::connect(window.get(), &ui::window::Main::closed, [this] { ++closed; });
    window->OpenSet(CompleteSet(2000));
    ASSERT_EQ(dialogs.errors, std::vector<QString>());
  }
  /// Makes the set differ from its file, in a way that can still be sent.
  void ChangeVolume() {
    auto& list = Find<QListView>("MtFileList");
    const QPoint row = list.visualRect(list.model()->index(0, 0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, row);
    Find<QSlider>("VolSlider").setValue(90);
    ASSERT_TRUE(LabelText("SetLabel").endsWith(QString::fromUtf8("\u2022")));
  }
  [[nodiscard]] QString Information() const { return LabelText("InformationLabel"); }

  int closed = 0;
};

TEST_F(ClosingTheWindow, ASecondTimeWhileTheDownloadEndsAsksNothingAndChangesNothing) {
  StartWithSet();
  // A second question would get "Cancel", and the test would see that one answer was asked for too often.
  dialogs.okAnswers = {true};
  WhenInformation("Downloading...", [this] {
    EXPECT_FALSE(window->close());
    EXPECT_FALSE(window->close());
    EXPECT_EQ(dialogs.asked.size(), 1U);
  });
  Button("SendBtn").click();
  EXPECT_EQ(Information(), "Canceled");
  EXPECT_TRUE(Until([this] { return closed > 0; }));
  EXPECT_FALSE(window->close() && closed > 1);
  EXPECT_EQ(closed, 1);
}

TEST_F(ClosingTheWindow, AsksAboutTheSetBeforeTheDownloadIsStoppedAndCancelLeavesBoth) {
  StartWithSet();
  ChangeVolume();
  dialogs.unsavedAnswers = {Unsaved::GoBack};
  WhenInformation("Downloading...", [this] { EXPECT_FALSE(window->close()); });
  Button("SendBtn").click();
  EXPECT_EQ(Information(), "SUCCESS !");
  EXPECT_EQ(dialogs.unsavedAsked.size(), 1U);
  EXPECT_THAT(dialogs.asked, IsEmpty());
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(closed, 0);
}

TEST_F(ClosingTheWindow, ThinkingBetterOfItAtTheLastQuestionLeavesTheDownloadAndTheSet) {
  StartWithSet();
  ChangeVolume();
  dialogs.unsavedAnswers = {Unsaved::Discard};
  dialogs.okAnswers = {false};
  WhenInformation("Downloading...", [this] { EXPECT_FALSE(window->close()); });
  Button("SendBtn").click();
  EXPECT_EQ(Information(), "SUCCESS !");
  QApplication::processEvents();
  EXPECT_EQ(closed, 0);
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(LabelText("SetLabel").endsWith(QString::fromUtf8("\u2022")));
}

TEST_F(ClosingTheWindow, AfterAllQuestionsNothingIsAskedWhenTheDownloadHasEnded) {
  StartWithSet();
  ChangeVolume();
  dialogs.unsavedAnswers = {Unsaved::Discard};
  dialogs.okAnswers = {true};
  std::string duringQuestion;
  dialogs.whileAsking = [&] { duringQuestion += Information().toStdString() + ";"; };
  WhenInformation("Downloading...", [this] { EXPECT_FALSE(window->close()); });
  Button("SendBtn").click();
  EXPECT_TRUE(Until([this] { return closed > 0; }));
  EXPECT_EQ(duringQuestion, "Downloading...;Downloading...;") << "nothing is stopped before the last answer";
  EXPECT_EQ(dialogs.unsavedAsked.size(), 1U);
  EXPECT_EQ(agent->Board().State().byes, 1U);
}

TEST_F(ClosingTheWindow, EndsADownloadWithoutAQuestionWhenNobodyCanAnswer) {
  StartWithSet();
  ChangeVolume();
  const auto parameters = agent->Board().State().accelerometer;
  WhenInformation("Downloading...", [this] {
    window->EndNow();
    EXPECT_FALSE(window->IsOver());
    EXPECT_EQ(agent->Board().State().byes, 0U);
  });
  Button("SendBtn").click();
  EXPECT_EQ(Information(), "Canceled");
  EXPECT_TRUE(Until([this] { return closed > 0; }));
  EXPECT_TRUE(window->IsOver());
  EXPECT_EQ(agent->Board().State().byes, 1U);
  EXPECT_EQ(agent->Board().State().resets, 0U);
  EXPECT_EQ(agent->Board().State().accelerometer, parameters);
  EXPECT_THAT(dialogs.unsavedAsked, IsEmpty());
}

TEST_F(ClosingTheWindow, WithoutAQuestionEndsAtOnceWhenNothingGoesOn) {
  StartWithSet();
  ChangeVolume();
  window->EndNow();
  EXPECT_EQ(closed, 1);
  EXPECT_FALSE(window->isVisible());
}

TEST_F(ClosingTheWindow, OffersNoNewSetAfterAnUpdateThatTheEndHasStopped) {
  StartWithSet();
  update.sets = {folder / "complete.lscfg"};
  update.whileOpen = [this] { window->EndNow(); };
  Button("UpdateBtn").click();
  EXPECT_TRUE(Until([this] { return closed > 0; }));
  EXPECT_THAT(dialogs.asked, IsEmpty());
}

/// Parameters of the acceleration sensor that were not sent.
class ClosingWithParameters : public ClosingTheWindow {
 protected:
  void StartInSetup(const std::string& board = "") {
    Start(board);
    QObject::connect(window.get(), &ui::window::Main::closed, [this] { ++closed; });
    Button("ConfigBtn").click();
    ASSERT_TRUE(Shown("ConfigFrame"));
  }
};

TEST_F(ClosingWithParameters, AsksBeforeValuesAreLostAndNamesThem) {
  // One that has a flash period.
  StartInSetup("id=65535");
  Find<QSlider>("MotionThresholdSlider").setValue(200);
  Find<QSlider>("FOCTimeSlider").setValue(100);
  dialogs.okAnswers = {false, true};
  EXPECT_FALSE(window->close());
  EXPECT_EQ(closed, 0);
  ASSERT_EQ(dialogs.asked.size(), 1U);
  EXPECT_EQ(dialogs.asked[0].question,
            "Motion and impact parameters were changed and not sent.\nClose the window and lose them?");
  EXPECT_EQ(dialogs.asked[0].advice,
            "Not sent: Threshold, MOTION DETECTION PARAMETERS: 200; Flash period [ms], LOCKUP FLASH TIMING: 100.\n"
            "Cancel goes back to the window. Setup sends them to the board.");
  EXPECT_EQ(dialogs.asked[0].harmless, ui::kit::Dialogs::Harmless::Cancel);
  EXPECT_TRUE(window->close());
  EXPECT_EQ(closed, 1);
}

TEST_F(ClosingWithParameters, AsksAlsoWhenTheirBoardIsGone) {
  StartInSetup();
  Find<QSlider>("ImpactTimeSlider").setValue(99);
  agent->Unplug();
  Tick("NoticeTimer");
  dialogs.okAnswers = {true};
  EXPECT_TRUE(window->close());
  EXPECT_EQ(dialogs.asked.size(), 1U);
}

TEST_F(ClosingWithParameters, AsksNothingAboutValuesThatAreWhereTheyWere) {
  StartInSetup();
  auto& slider = Find<QSlider>("MotionThresholdSlider");
  const int before = slider.value();
  slider.setValue(before + 1);
  slider.setValue(before);
  EXPECT_TRUE(window->close());
}

TEST_F(ClosingWithParameters, AsksNothingAboutValuesThatWereSent) {
  StartInSetup();
  Find<QSlider>("MotionThresholdSlider").setValue(200);
  Find<QPushButton>("SendCmdBtn").click();
  EXPECT_TRUE(window->close());
}

TEST_F(ClosingWithParameters, AsksNothingAboutValuesThatThisComputerKeeps) {
  kept.kept["4B535401"] = {77, 3, 11, 51, 126, 14};
  StartInSetup();
  Find<QPushButton>("PutBackBtn").click();
  ASSERT_EQ(Find<QSlider>("MotionThresholdSlider").value(), 77);
  EXPECT_TRUE(window->close());
}

TEST_F(ClosingWithParameters, AsksNothingAboutABoardThatDidNotTellItsOwn) {
  StartInSetup("fault=read:4");
  ASSERT_TRUE(Shown("ReadCmdBtn"));
  EXPECT_TRUE(window->close());
}

TEST_F(ClosingWithParameters, AsksAboutThemAfterTheSetAndAboutNothingMoreWhenThePersonStays) {
  StartInSetup();
  Find<QPushButton>("CloseCfgBtn").click();
  window->OpenSet(CompleteSet(2000));
  ChangeVolume();
  Find<QSlider>("MotionThresholdSlider").setValue(200);
  dialogs.unsavedAnswers = {Unsaved::GoBack};
  EXPECT_FALSE(window->close());
  EXPECT_THAT(dialogs.asked, IsEmpty());
  dialogs.unsavedAnswers = {Unsaved::Discard};
  dialogs.okAnswers = {true};
  EXPECT_TRUE(window->close());
  EXPECT_EQ(dialogs.asked.size(), 1U);
}

}  // namespace
}  // namespace kestrin::support
