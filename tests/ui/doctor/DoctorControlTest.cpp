// SPDX-License-Identifier: MIT
// When the doctor looks, when the board is asked, and what becomes of results that come too late.

#include <QCheckBox>
#include <QClipboard>

#include "ui/doctor/DoctorControl.h"
#include "ui/doctor/DoctorFrame.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

using ui::kit::CommandGate;

class Doctor : public MainFixture {
 protected:
  /// No thread waits when the window goes.
  ~Doctor() override { doctor.survey.barrier.Release(); }

  void OpenSheet() { Find<QAction>("ConnectionAction").trigger(); }
  void CloseSheet() { Find<QPushButton>("CloseDoctorBtn").click(); }
  [[nodiscard]] int Looks() const { return doctor.survey.barrier.Passed(); }
  /// Waits until the sheet shows what that many looks have found.
  [[nodiscard]] bool HasJudged(std::size_t times) {
    return Until([this, times] { return doctor.judged.size() >= times; });
  }
  /// Waits until what was due has been done: a question to the board, and a look that began after all that was before.
  void Settle() {
    for (int turn = 0; turn < 5; ++turn) QApplication::processEvents();
    const std::size_t judged = doctor.judged.size();
    Tick("DoctorTimer");
    EXPECT_TRUE(HasJudged(judged + 1));
  }
  /// Lets timers ring that are later than the one that fetches what a thread has found.
  static void LetResultsArrive() {
    constexpr int kRounds = 5;
    constexpr int kMilliseconds = 20;
    int rounds = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&rounds] { ++rounds; });
    timer.start(kMilliseconds);
    ASSERT_TRUE(Until([&rounds] { return rounds == kRounds; }));
  }
  void PullOut() {
    agent->Unplug();
    Tick("NoticeTimer");
  }
  void PlugIn() {
    agent->Plug();
    Tick("NoticeTimer");
    Tick("GoOnlineTimer");
  }
};

TEST_F(Doctor, LooksEverySecondWhileItsSheetIsOpen) {
  StartOffline();
  const auto& timer = Find<QTimer>("DoctorTimer");
  EXPECT_FALSE(timer.isActive());
  OpenSheet();
  EXPECT_TRUE(Shown("DoctorFrame"));
  EXPECT_TRUE(timer.isActive());
  EXPECT_EQ(timer.interval(), 1000);
  ASSERT_TRUE(HasJudged(1));
  Tick("DoctorTimer");
  ASSERT_TRUE(HasJudged(2));
  EXPECT_EQ(doctor.judged, (std::vector<std::string>{"completed look 1", "completed look 2"}));
  CloseSheet();
  EXPECT_FALSE(timer.isActive());
}

TEST_F(Doctor, NeverLooksTwiceAtATime) {
  StartOffline();
  doctor.survey.barrier.Hold();
  OpenSheet();
  ASSERT_TRUE(Until([this] { return doctor.survey.barrier.Come() == 1; }));
  for (int tick = 0; tick < 3; ++tick) Tick("DoctorTimer");
  CloseSheet();
  OpenSheet();
  for (int tick = 0; tick < 3; ++tick) Tick("DoctorTimer");
  doctor.survey.barrier.Release();
  ASSERT_TRUE(HasJudged(1));
  EXPECT_EQ(Looks(), 2) << "one before it was closed, one after";
  EXPECT_EQ(doctor.survey.barrier.Most(), 1);
}

TEST_F(Doctor, DoesNotGiveUpALookThatTakesLongerThanASecond) {
  StartOffline();
  doctor.survey.barrier.Hold();
  OpenSheet();
  ASSERT_TRUE(Until([this] { return doctor.survey.barrier.Come() == 1; }));
  for (int tick = 0; tick < 3; ++tick) Tick("DoctorTimer");
  doctor.survey.barrier.Release();
  ASSERT_TRUE(HasJudged(1));
  EXPECT_EQ(doctor.judged.front(), "completed look 1");
}

TEST_F(Doctor, DropsWhatIsFoundForASheetThatWasClosed) {
  StartOffline();
  doctor.survey.barrier.Hold();
  OpenSheet();
  ASSERT_TRUE(Until([this] { return doctor.survey.barrier.Come() == 1; }));
  CloseSheet();
  doctor.survey.barrier.Release();
  ASSERT_TRUE(Until([this] { return Looks() == 1; }));
  LetResultsArrive();
  EXPECT_EQ(doctor.judged, std::vector<std::string>());
  EXPECT_FALSE(Shown("DoctorFrame"));

  doctor.survey.barrier.Hold();
  OpenSheet();
  ASSERT_TRUE(Until([this] { return doctor.survey.barrier.Come() == 2; }));
  CloseSheet();
  OpenSheet();
  doctor.survey.barrier.Release();
  ASSERT_TRUE(HasJudged(1));
  EXPECT_EQ(doctor.judged.front(), "completed look 3")
      << "results arrive in their order: those of closed sheets did not";
}

TEST_F(Doctor, AsksABoardOnceAndNotEverySecond) {
  Start();
  OpenSheet();
  ASSERT_TRUE(Until([this] { return doctor.interviews == 1; }));
  Settle();
  for (int tick = 0; tick < 3; ++tick) {
    Tick("DoctorTimer");
    Settle();
  }
  EXPECT_EQ(doctor.interviews, 1);
  EXPECT_NE(doctor.judged.back().find(", asked"), std::string::npos);

  PullOut();
  Settle();
  EXPECT_EQ(doctor.judged.back().find(", asked"), std::string::npos) << "what a board has told goes with it";
  EXPECT_EQ(doctor.interviews, 1);
  PlugIn();
  EXPECT_TRUE(Until([this] { return doctor.interviews == 2; }));
  Settle();
  EXPECT_EQ(doctor.interviews, 2);
}

TEST_F(Doctor, AsksAgainWhenThePersonWantsIt) {
  doctor.diagnosis = Hung();
  Start();
  OpenSheet();
  ASSERT_TRUE(Until([this] { return doctor.interviews == 1; }));
  Settle();
  Find<QPushButton>("NextOtherBtn").click();
  EXPECT_TRUE(Until([this] { return doctor.interviews == 2; }));
}

TEST_F(Doctor, AsksABoardThatIsThereAndDoesNotComeOnline) {
  // The board that keeps silent is the one that somebody wants to know about.
  Make("fault=read:1", false);
  dialogs.okAnswers = {true};
  ASSERT_TRUE(window->StartUp());
  Show();
  agent->Plug();
  Tick("NoticeTimer");
  ASSERT_TRUE(Shown("NoBoardLabel"));
  OpenSheet();
  EXPECT_TRUE(Until([this] { return doctor.interviews == 1; }));
}

TEST_F(Doctor, AsksNobodyWithoutABoard) {
  StartOffline();
  OpenSheet();
  ASSERT_TRUE(HasJudged(1));
  Settle();
  EXPECT_EQ(doctor.interviews, 0);
}

TEST_F(Doctor, AsksOnlyWhenNothingElseTalksToTheBoardAndKeepsOthersAway) {
  Start();
  {
    const CommandGate::Passage passage(gate);
    OpenSheet();
    ASSERT_TRUE(HasJudged(1)) << "looking disturbs nobody";
    Settle();
    EXPECT_EQ(doctor.interviews, 0);
  }
  bool wasKept = false;
  doctor.whileAsking = [&](const std::function<bool()>&) { wasKept = gate.IsBusy(); };
  EXPECT_TRUE(Until([this] { return doctor.interviews == 1; }));
  EXPECT_TRUE(wasKept);
}

TEST_F(Doctor, NeverAsksFromInsideANoticeOfTheLink) {
  StartOffline();
  OpenSheet();
  Settle();
  agent->Plug();
  bool isInside = true;
  bool wasInside = false;
  doctor.whileAsking = [&](const std::function<bool()>&) { wasInside = isInside; };
  Tick("NoticeTimer");
  Tick("GoOnlineTimer");
  isInside = false;
  EXPECT_TRUE(Until([this] { return doctor.interviews == 1; }));
  EXPECT_FALSE(wasInside);
}

TEST_F(Doctor, StopsAskingWhenTheSheetIsClosed) {
  Start();
  bool stopped = false;
  doctor.whileAsking = [&](const std::function<bool()>& goOn) {
    EXPECT_TRUE(goOn());
    EXPECT_EQ(Find<QWidget>("QuestionRow4").accessibleDescription(), "The board is being asked ...");
    CloseSheet();
    EXPECT_FALSE(goOn());
    OpenSheet();
    EXPECT_FALSE(goOn()) << "that is another sheet";
    CloseSheet();
    stopped = true;
  };
  OpenSheet();
  ASSERT_TRUE(Until([&] { return stopped; }));
  EXPECT_EQ(doctor.interviews, 1);
  doctor.whileAsking = [&](const std::function<bool()>&) {
    for (const std::string& judged : doctor.judged) EXPECT_EQ(judged.find(", asked"), std::string::npos) << judged;
  };
  OpenSheet();
  EXPECT_TRUE(Until([this] { return doctor.interviews == 2; })) << "it begins anew";
}

TEST_F(Doctor, StopsAskingWhenTheProgramEnds) {
  Start();
  bool stopped = false;
  doctor.whileAsking = [&](const std::function<bool()>& goOn) {
    window->EndNow();
    stopped = !goOn();
  };
  OpenSheet();
  ASSERT_TRUE(Until([this] { return window->IsOver(); }));
  EXPECT_TRUE(stopped);
}

TEST_F(Doctor, SaysInTheSheetWhenAskingGoesWrong) {
  Start();
  doctor.whileAsking = [](const std::function<bool()>&) { throw std::runtime_error("no such interface"); };
  OpenSheet();
  EXPECT_TRUE(Until([this] { return doctor.interviews == 1; }));
  Settle();
  EXPECT_EQ(LabelText("NextFailure"), "The board could not be asked: no such interface");
  EXPECT_TRUE(dialogs.errors.empty());
  EXPECT_EQ(doctor.interviews, 1);
}

TEST_F(Doctor, TurnsToAllIsWellByItself) {
  StartOffline();
  OpenSheet();
  ASSERT_TRUE(HasJudged(1));
  EXPECT_TRUE(Shown("NextBox"));
  doctor.diagnosis = Healthy();
  PlugIn();
  EXPECT_TRUE(Until([this] { return LabelText("DoctorSummary") == "All is well. It looks again every second."; }));
  EXPECT_FALSE(Shown("NextBox"));
}

TEST_F(Doctor, PutsTheReportOntoTheClipboard) {
  Start();
  doctor.diagnosis = Healthy();
  OpenSheet();
  ASSERT_TRUE(Until([this] { return doctor.interviews == 1; }));
  ASSERT_TRUE(Until([this] { return !doctor.judged.empty() && doctor.judged.back() == "completed look 2, asked"; }));
  const QString look = "completed look 2";
  Find<QPushButton>("CopyReportBtn").click();
  EXPECT_EQ(QGuiApplication::clipboard()->text(), look + ", asked, well");
  EXPECT_EQ(LabelText("CopyReportHint"), "Copied. Paste it where you ask; nothing is sent.");
  Find<QCheckBox>("WithSerialCheck").click();
  Find<QPushButton>("CopyReportBtn").click();
  EXPECT_EQ(QGuiApplication::clipboard()->text(), look + ", asked, well, 4B535401");
}

/// The control over boards that the test makes up.
class DoctorAlone : public testing::Test {
 protected:
  DoctorAlone() { control.Open(); }

  ui::kit::Pictures pictures{KESTRIN_PICTURES};
  ui::doctor::DoctorFrame frame{pictures};
  FakeDoctor doctor;
  core::device::TLS board;
  bool isOnline = true;
  bool isErasing = false;
  ui::doctor::DoctorControl control{frame,
                                    {doctor.means,
                                     [this]() -> std::optional<ui::doctor::DoctorControl::Board> {
                                       return ui::doctor::DoctorControl::Board{board, isOnline, isErasing};
                                     },
                                     [](const std::function<void()>& action) { action(); }}};
};

TEST_F(DoctorAlone, AsksLaterAlsoWhenNothingElseTalksToTheBoard) {
  EXPECT_EQ(doctor.interviews, 0) << "whoever says that something has changed may be in the middle of it";
  EXPECT_TRUE(Until([this] { return doctor.interviews == 1; }));
}

TEST_F(DoctorAlone, AsksABoardOnceHoweverOftenTheSessionChanges) {
  ASSERT_TRUE(Until([this] { return doctor.interviews == 1; }));
  for (int i = 0; i < 3; ++i) {
    control.Follow();
    QApplication::processEvents();
  }
  EXPECT_EQ(doctor.interviews, 1);
}

TEST_F(DoctorAlone, LooksAgainWhenTheSessionHasChangedDuringALook) {
  ASSERT_TRUE(Until([this] { return doctor.interviews == 1 && doctor.judged.size() >= 3; }))
      << "before the board was asked, with its answers, and after";
  auto& timer = *control.findChild<QTimer*>("DoctorTimer");
  timer.stop();
  const int looks = doctor.survey.barrier.Passed();
  doctor.survey.barrier.Hold();
  QMetaObject::invokeMethod(&timer, "timeout");
  ASSERT_TRUE(Until([&] { return doctor.survey.barrier.Come() == looks + 1; }));
  control.Follow();
  doctor.survey.barrier.Release();
  EXPECT_TRUE(Until([&] { return doctor.survey.barrier.Passed() == looks + 2; }));
}

TEST_F(DoctorAlone, AsksABoardAgainThatHasComeOnline) {
  isOnline = false;
  ASSERT_TRUE(Until([this] { return doctor.interviews == 1; }));
  isOnline = true;
  control.Follow();
  EXPECT_TRUE(Until([this] { return doctor.interviews == 2; }));
}

TEST_F(DoctorAlone, LeavesABoardAloneThatErasesItsMemory) {
  isErasing = true;
  const QLabel& found = *frame.findChild<QWidget*>("QuestionRow4")->findChild<QLabel*>("FoundLabel");
  EXPECT_TRUE(Until([&found] {
    return found.text() == "The board is still erasing its memory. It comes back by itself, please wait.";
  }));
  EXPECT_EQ(doctor.interviews, 0);
  isErasing = false;
  control.Follow();
  EXPECT_TRUE(Until([this] { return doctor.interviews == 1; }));
}

}  // namespace
}  // namespace kestrin::support
