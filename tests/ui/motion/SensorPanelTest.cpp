// SPDX-License-Identifier: MIT
// What the panel "Acceleration Sensor Configuration" shows of what the board feels, and when it asks the board.

#include <QTest>
#include <chrono>

#include "simulator/MotionScript.h"
#include "ui/motion/ConfigFrameFixture.h"
#include "ui/motion/SensorChart.h"

namespace kestrin::support {
namespace {

using namespace std::chrono_literals;

constexpr const char* kStill = "Hold the saber still for a moment.";
constexpr const char* kOffline =
    "No board is connected. Plug it in to see what it feels; the sliders stay as they are.";
constexpr const char* kUnknown = "This board does not tell what its sensor feels. All else works with it as before.";
/// Each is over after its time in steps of 40 ms: a rest of 0.4 s is 10 steps, a swing 18, a tap 4.
constexpr const char* kFiveSwings =
    "rest 0.4\nswing 6\nrest 0.4\nswing 7\nrest 0.4\nswing 8\nrest 0.4\nswing 6\nrest 0.4\nswing 7\nrest 0.4\n";
constexpr int kFiveSwingsSteps = 10 + 5 * (18 + 10);

class SensorPanel : public ConfigFrameFixture {
 protected:
  static constexpr QSize kWide{1180, 760};

  /// Opens the panel in a window of that size over a board that counts how often it is asked.
  void Open(const QSize& size = kWide, const std::string& board = "id=4389") {
    Start(board);
    window->resize(size);
    Count();
    Button("ConfigBtn").click();
  }
  void Count() {
    agent->Board().MoveBy([this] {
      ++asked;
      return moves.Next();
    });
  }
  void MoveBy(const std::string& script) {
    const auto parsed = simulator::MotionScript::Parse(script, "moves");
    ASSERT_TRUE(parsed) << parsed.Text();
    moves = *parsed;
  }
  /// Lets that many times of 40 ms go by, with a look at the board in each.
  void Feel(int steps) {
    for (int step = 0; step < steps; ++step) {
      clock.Advance(40ms);
      Tick("SensorTimer");
    }
  }
  [[nodiscard]] ui::motion::SensorChart& Chart() const { return Find<ui::motion::SensorChart>("SensorChart"); }
  [[nodiscard]] QString Notice() const { return Shown("SensorNotice") ? LabelText("SensorNotice") : QString(); }
  /// A row of the trial as it is read out.
  [[nodiscard]] QString Said(const char* label) const { return Find<QLabel>(label).accessibleName(); }
  /// The height in the chart at which a threshold of that much stands: it goes from 31 at the top to -31.
  [[nodiscard]] int HeightOf(int threshold) {
    const int before = Slider("ImpactThresholdSlider").value();
    Slider("ImpactThresholdSlider").setValue(threshold);
    const int height = Chart().LineY();
    Slider("ImpactThresholdSlider").setValue(before);
    return height;
  }
  void Drag(int fromHeight, int toHeight) {
    const int x = Chart().width() / 2;
    QTest::mousePress(&Chart(), Qt::LeftButton, {}, {x, fromHeight});
    QMouseEvent move(QEvent::MouseMove, QPointF(x, toHeight), Chart().mapToGlobal(QPointF(x, toHeight)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(&Chart(), &move);
    QTest::mouseRelease(&Chart(), Qt::LeftButton, {}, {x, toHeight});
  }

  int asked = 0;
  simulator::MotionScript moves;
};

TEST_F(SensorPanel, ShowsWhatTheBoardTells) {
  MoveBy("at 3 -4 -20 17");
  Open();
  EXPECT_EQ(LabelText("SensorValues"), "");
  Feel(1);
  EXPECT_EQ(LabelText("SensorValues"), "X 3   Y -4   Z -20   tilt 17");
  EXPECT_EQ(Chart().accessibleName(), "What the board feels");
  EXPECT_EQ(Chart().accessibleDescription(), "X 3, Y -4, Z -20, tilt 17. Impact threshold 10.");
  EXPECT_EQ(Notice(), kStill);
  // The tenth reading is the first that can tell that it is held still.
  Feel(8);
  EXPECT_EQ(Notice(), kStill);
  Feel(1);
  EXPECT_EQ(Notice(), "");
}

TEST_F(SensorPanel, DrawsTheAxes) {
  MoveBy("rest 0.4\ntap 20\nrest 1");
  Open();
  Feel(10);
  const QImage still = Chart().grab().toImage();
  Feel(4);
  EXPECT_NE(Chart().grab().toImage(), still);
}

TEST_F(SensorPanel, AsksAtMost25TimesASecond) {
  Open();
  for (int i = 0; i < 5; ++i) Tick("SensorTimer");
  EXPECT_EQ(asked, 1);
  clock.Advance(39ms);
  Tick("SensorTimer");
  EXPECT_EQ(asked, 1);
  clock.Advance(1ms);
  for (int i = 0; i < 5; ++i) Tick("SensorTimer");
  EXPECT_EQ(asked, 2);
}

TEST_F(SensorPanel, GoesOnByItself) {
  realTime = true;
  Open();
  EXPECT_TRUE(Until([this] { return asked >= 12 && Notice().isEmpty(); }));
}

TEST_F(SensorPanel, AsksOnlyWhileThePictureCanBeSeen) {
  Start("id=4389");
  Count();
  for (int i = 0; i < 3; ++i) Feel(1);
  EXPECT_EQ(asked, 0) << "the panel is closed";
  window->resize(800, 560);
  Button("ConfigBtn").click();
  Feel(3);
  EXPECT_EQ(asked, 0) << "only the sliders can be seen";
  Find<QPushButton>("SensorTurnBtn").click();
  Feel(3);
  EXPECT_EQ(asked, 3);
  Find<QPushButton>("SensorTurnBtn").click();
  Feel(3);
  EXPECT_EQ(asked, 3);
  window->resize(kWide);
  QApplication::processEvents();
  const int before = asked;
  Feel(3);
  EXPECT_EQ(asked, before + 3);
  window->setWindowState(Qt::WindowMinimized);
  Feel(3);
  EXPECT_EQ(asked, before + 3);
  window->setWindowState(Qt::WindowNoState);
  Press("CloseCfgBtn");
  Feel(3);
  EXPECT_EQ(asked, before + 3);
}

TEST_F(SensorPanel, NeverAsksWhileSomethingElseTalksToTheBoard) {
  Open();
  {
    const ui::kit::CommandGate::Passage passage(gate);
    Feel(3);
    EXPECT_EQ(asked, 0);
  }
  Feel(1);
  EXPECT_EQ(asked, 1);
}

TEST_F(SensorPanel, LooksNoMoreOftenThanItWouldAskWhileSomethingElseTalksToTheBoard) {
  Open();
  Feel(1);
  ASSERT_EQ(asked, 1);
  const ui::kit::CommandGate::Passage passage(gate);
  for (int turn = 0; turn < 3; ++turn) {
    Feel(1);
    EXPECT_GE(Find<QTimer>("SensorTimer").interval(), 40);
  }
}

TEST_F(SensorPanel, WhatThePersonWantsMeanwhileComesNext) {
  Open(kWide, "id=4389,wire=usb");
  Slider("ImpactThresholdSlider").setValue(25);
  int heldInside = -1;
  bool isPressed = false;
  clock.whileWaiting = [&] {
    if (std::exchange(isPressed, true)) return;
    Press("SendCmdBtn");
    heldInside = Held()[2];
  };
  Feel(1);
  ASSERT_TRUE(isPressed);
  EXPECT_EQ(heldInside, 10) << "one after the other";
  EXPECT_EQ(asked, 1);
  // It is the first thing that comes when events are handled, before any look at the board.
  QCoreApplication::sendPostedEvents();
  clock.whileWaiting = nullptr;
  EXPECT_EQ(Held()[2], 25);
  EXPECT_EQ(asked, 1);
}

TEST_F(SensorPanel, ABoardThatDoesNotKnowTheQuestionIsAskedOnce) {
  // Going online reads six answers.
  Open(kWide, "id=4389,fault=read:7");
  Feel(5);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(Notice(), kUnknown);
  EXPECT_TRUE(Shown("AskAgainBtn"));
  // The panel works as before.
  Slider("ImpactThresholdSlider").setValue(20);
  Press("SendCmdBtn");
  EXPECT_EQ(Held()[2], 20);
  Press("CloseCfgBtn");
  Button("ConfigBtn").click();
  Feel(2);
  EXPECT_EQ(asked, 1) << "it will not have learnt it since";
  EXPECT_EQ(Notice(), kUnknown);
  Press("AskAgainBtn");
  Feel(1);
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(Notice(), kStill);
  EXPECT_FALSE(Shown("AskAgainBtn"));
}

TEST_F(SensorPanel, ABoardThatFallsSilentIsToldOf) {
  Open(kWide, "id=4389,fault=read:9");
  Feel(5);
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(Notice(), "The board no longer tells what its sensor feels. Check its plug and try again.");
}

TEST_F(SensorPanel, WithoutABoardItSaysSoAndGoesOnWithTheNextOne) {
  Open();
  Feel(2);
  agent->Unplug();
  Tick("NoticeTimer");
  Feel(2);
  EXPECT_EQ(Notice(), kOffline);
  EXPECT_FALSE(Shown("AskAgainBtn"));
  EXPECT_EQ(asked, 2);
  agent->Plug();
  Tick("NoticeTimer");
  Tick("GoOnlineTimer");
  Feel(1);
  EXPECT_EQ(asked, 3);
  EXPECT_EQ(Notice(), kStill) << "another board is another story";
}

TEST_F(SensorPanel, FiveSwingsAndFiveTapsSuggestAThreshold) {
  MoveBy(std::string(kFiveSwings) + "tap 19\nrest 0.4\ntap 22\nrest 0.4\ntap 17\nrest 0.4\ntap 25\nrest 0.4\ntap 30");
  Open();
  EXPECT_EQ(LabelText("TrialTitle"), "Swing five times, then tap five times");
  EXPECT_EQ(Said("SwingsText"), "five times: swing the saber through the air");
  EXPECT_EQ(Said("TapsText"), "after the swings");
  EXPECT_FALSE(Shown("SuggestionBox"));
  Feel(10 + 18 + 10);
  EXPECT_EQ(Said("SwingsText"), "four more: swing the saber through the air");
  EXPECT_EQ(Find<QWidget>("SwingsMarks").accessibleDescription(), "1 of 5 done");
  Feel(kFiveSwingsSteps - 38);
  EXPECT_EQ(Said("SwingsText"), "done, hardest 8");
  EXPECT_EQ(Said("TapsText"), "five times: tap the blade on your palm");
  EXPECT_FALSE(Shown("SuggestionBox"));

  Feel(3 * 14);
  EXPECT_EQ(Said("TapsText"), "two more: tap the blade on your palm");
  EXPECT_EQ(Find<QWidget>("TapsMarks").accessibleDescription(), "3 of 5 done");
  ASSERT_TRUE(Shown("SuggestionBox"));
  // Half-way between 8 and 17.
  EXPECT_EQ(LabelText("SuggestionHeadline"), "Suggestion so far: impact threshold 12.");
  EXPECT_EQ(LabelText("SuggestionText"), "Between your hardest swing (8) and your softest tap (17).");
  EXPECT_EQ(Find<QPushButton>("UseThresholdBtn").text(), "Use 12");
  Feel(2 * 14);
  EXPECT_EQ(Said("TapsText"), "done, softest 17");
  EXPECT_EQ(LabelText("SuggestionHeadline"), "Suggestion: impact threshold 12.");

  Press("UseThresholdBtn");
  EXPECT_EQ(Sliders(), (Values{180, 2, 12, 50, 125, 52}));
  EXPECT_EQ(LabelText("ImpactThresholdState"), "not sent");
  EXPECT_EQ(Held(), (Values{180, 2, 10, 50, 125, 13})) << "it only moves the slider";
  Feel(5);
  EXPECT_EQ(Held(), (Values{180, 2, 10, 50, 125, 13}));
  EXPECT_EQ(agent->Board().State().resets, 0U);
  Press("SendCmdBtn");
  EXPECT_EQ(Held(), (Values{180, 2, 12, 50, 125, 13}));
}

TEST_F(SensorPanel, SwingsAndTapsThatAreAlikeSuggestNothing) {
  MoveBy(std::string(kFiveSwings) + "tap 8\nrest 1");
  Open();
  Feel(kFiveSwingsSteps + 14);
  ASSERT_TRUE(Shown("SuggestionBox"));
  EXPECT_EQ(LabelText("SuggestionHeadline"), "No suggestion: swings and taps are too much alike.");
  EXPECT_FALSE(Shown("UseThresholdBtn"));
  Press("TrialAgainBtn");
  EXPECT_FALSE(Shown("SuggestionBox"));
  EXPECT_EQ(Said("SwingsText"), "five times: swing the saber through the air");
}

TEST_F(SensorPanel, WhatIsOutOfTurnIsToldOf) {
  MoveBy("rest 0.4\ntap 20\nrest 0.4");
  Open();
  Feel(24);
  EXPECT_EQ(Said("SwingsText"), "five times: that was a tap, swing first");
}

TEST_F(SensorPanel, BeginsAnewWhenItIsOpenedAgain) {
  MoveBy("rest 0.4\nswing 8\nrest 0.4\nrepeat");
  Open();
  Feel(38);
  ASSERT_EQ(Said("SwingsText"), "four more: swing the saber through the air");
  Press("CloseCfgBtn");
  Button("ConfigBtn").click();
  EXPECT_EQ(Said("SwingsText"), "five times: swing the saber through the air");
  EXPECT_EQ(LabelText("SensorValues"), "");
  Feel(1);
  EXPECT_EQ(Notice(), kStill);
}

TEST_F(SensorPanel, AnAnswerOfBeforeItWasOpenedAgainCountsForNothing) {
  Open(kWide, "id=4389,wire=usb");
  bool isReopened = false;
  clock.whileWaiting = [&] {
    if (std::exchange(isReopened, true)) return;
    Press("CloseCfgBtn");
    Button("ConfigBtn").click();
  };
  Feel(1);
  clock.whileWaiting = nullptr;
  ASSERT_TRUE(isReopened);
  // The tool waits until nothing talks to the board any more.
  QApplication::processEvents();
  ASSERT_TRUE(Shown("ConfigFrame"));
  Feel(2);
  EXPECT_EQ(LabelText("SensorValues"), "X 0   Y 0   Z 21   tilt 0");
}

TEST_F(SensorPanel, AnAnswerOfBeforeItWasHiddenCountsForNothing) {
  Open(kWide, "id=4389,wire=usb");
  bool wasHidden = false;
  clock.whileWaiting = [&] {
    if (std::exchange(wasHidden, true)) return;
    // As a window is that is minimized for a moment.
    Find<QWidget>("ConfigFrame").hide();
    Find<QWidget>("ConfigFrame").show();
  };
  Feel(1);
  clock.whileWaiting = nullptr;
  ASSERT_TRUE(wasHidden);
  EXPECT_EQ(LabelText("SensorValues"), "");
  Feel(1);
  EXPECT_EQ(LabelText("SensorValues"), "X 0   Y 0   Z 21   tilt 0");
}

TEST_F(SensorPanel, TheRedLineIsTheSlidersOtherHandle) {
  Open();
  const int ten = HeightOf(10);
  const int twenty = HeightOf(20);
  const int zero = HeightOf(0);
  // The picture is as high above zero as below.
  const int minusFive = 2 * zero - HeightOf(5);
  ASSERT_LT(twenty, ten);
  Drag(ten, twenty);
  EXPECT_EQ(Slider("ImpactThresholdSlider").value(), 20);
  EXPECT_EQ(Chart().LineY(), twenty);
  EXPECT_EQ(LabelText("ImpactThresholdState"), "not sent");
  EXPECT_EQ(Held()[2], 10);
  Drag(2 * zero - twenty, minusFive);
  EXPECT_EQ(Slider("ImpactThresholdSlider").value(), 5) << "below zero it is mirrored";
  Drag(HeightOf(5), -100);
  EXPECT_EQ(Slider("ImpactThresholdSlider").value(), 31) << "no farther than it goes";
  Drag(ten, twenty);
  EXPECT_EQ(Slider("ImpactThresholdSlider").value(), 31) << "the line is elsewhere";
  Slider("ImpactThresholdSlider").setFocus();
  QTest::keyClick(&Slider("ImpactThresholdSlider"), Qt::Key_Home);
  EXPECT_EQ(Chart().LineY(), zero);
  EXPECT_EQ(Chart().accessibleDescription(), "Impact threshold 0.");
}

TEST_F(SensorPanel, SlidersAndPictureStandBesideEachOtherWhereThereIsRoom) {
  Open({960, 640});
  QApplication::processEvents();
  EXPECT_FALSE(Shown("SensorTurnBtn"));
  const auto placeOf = [this](const char* name) {
    const auto& control = Find<QWidget>(name);
    return QRect(control.mapTo(window.get(), QPoint()), control.size());
  };
  for (const char* const name : {"SensorChart", "TrialCard", "SendCmdBtn", "ConfigShelf"}) {
    EXPECT_TRUE(Shown(name)) << name;
    EXPECT_TRUE(window->rect().contains(placeOf(name))) << name;
  }
  EXPECT_LT(placeOf("SensorChart").right(), placeOf("ConfigShelf").left());
  window->resize(800, 560);
  QApplication::processEvents();
  EXPECT_TRUE(Shown("SensorTurnBtn"));
  EXPECT_FALSE(Shown("SensorChart"));
  EXPECT_TRUE(Shown("ImpactThresholdSlider"));
  EXPECT_EQ(Find<QPushButton>("SensorTurnBtn").text(), "See what the sensor sees");
  Press("SensorTurnBtn");
  QApplication::processEvents();
  EXPECT_EQ(Find<QPushButton>("SensorTurnBtn").text(), "Back to the sliders");
  EXPECT_FALSE(Shown("ImpactThresholdSlider"));
  for (const char* const name : {"SensorChart", "TrialCard", "SendCmdBtn"})
    EXPECT_TRUE(window->rect().contains(placeOf(name))) << name;
  EXPECT_EQ(placeOf("TrialCard").right(), placeOf("SendCmdBtn").right()) << "all of it ends on one line";
}

TEST_F(SensorPanel, TheKeyboardReachesAllOfIt) {
  MoveBy(std::string(kFiveSwings) + "tap 19\nrest 1");
  Open();
  Feel(kFiveSwingsSteps + 14);
  window->activateWindow();
  ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
  std::vector<QString> reached;
  for (int keys = 0; keys < 20; ++keys) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    reached.push_back(QApplication::focusWidget()->objectName());
  }
  for (const char* const name : {"ImpactThresholdSlider", "TrialAgainBtn", "UseThresholdBtn", "SendCmdBtn"})
    EXPECT_NE(std::find(reached.begin(), reached.end(), name), reached.end()) << name;
}

}  // namespace
}  // namespace kestrin::support
