// SPDX-License-Identifier: MIT
#include <QMouseEvent>
#include <QProgressBar>
#include <QTest>

#include "support/ReferenceCoder.h"
#include "ui/sound/DownloadFrame.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

constexpr const char* kAbortQuestion =
    "Are you sure you want to cancel downloading ? \n"
    "This might result in unsable behaviour !\n"
    "Press OK to resume downloading or Cancel to abort";

class DownloadRun : public MainFixture {
 protected:
  /// A board online and a complete set open.
  void StartWithSet(const std::string& board = "", std::size_t samplesEach = 2000) {
    Start(board);
    window->OpenSet(CompleteSet(samplesEach));
    ASSERT_EQ(dialogs.errors, std::vector<QString>());
  }
  void Send() { Button("SendBtn").click(); }
  QPushButton& FrameButton() { return Find<QPushButton>("CancelBtn"); }
  [[nodiscard]] QString Information() const { return LabelText("InformationLabel"); }
  [[nodiscard]] QString Percent() const { return LabelText("PercentLabel"); }

  /// How many bytes of the board's flash are erased, from one address up to another.
  [[nodiscard]] std::ptrdiff_t Erased(std::ptrdiff_t from, std::ptrdiff_t end) const {
    const auto flash = agent->Board().Flash();
    return std::count(flash.begin() + from, flash.begin() + end, 0xFF);
  }
  /// Clicks into the window beside the frame, or into the frame.
  void ClickBeside() {
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(1, 1), QPointF(1, 1), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(Find<QWidget>("DownloadFrame").parentWidget(), &press);
  }
  void ClickInside() {
    auto& frame = Find<QWidget>("DownloadFrame");
    const QPointF middle = frame.geometry().center();
    QMouseEvent press(QEvent::MouseButtonPress, middle, middle, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(frame.parentWidget(), &press);
  }

  /// Time goes by in which nobody would press twice.
  void LetRead() { clock.Advance(std::chrono::milliseconds(QApplication::doubleClickInterval())); }
  void ClickFrameButton() { QTest::mouseClick(&FrameButton(), Qt::LeftButton); }

  void ExpectEnded(const QString& information) {
    EXPECT_TRUE(Shown("DownloadFrame"));
    EXPECT_EQ(Information(), information);
    EXPECT_EQ(FrameButton().text(), "Close");
    EXPECT_FALSE(LabelText("BoardHoldsLabel").isEmpty());
    EXPECT_TRUE(Shown("BoardHoldsLabel"));
    EXPECT_FALSE(sleep.blocked);
    FrameButton().click();
    EXPECT_FALSE(Shown("DownloadFrame"));
  }
};

TEST_F(DownloadRun, EndsWithSuccessAndRestartsTheBoard) {
  StartWithSet();
  Send();
  EXPECT_EQ(Percent(), "");
  EXPECT_EQ(Find<QProgressBar>("DownloadBar").value(), 100);
  EXPECT_EQ(agent->Board().State().resets, 1U);
  EXPECT_EQ(sleep.blocks, 1);
  ExpectEnded("SUCCESS !");
  EXPECT_TRUE(Button("SendBtn").isEnabled());
}

TEST_F(DownloadRun, HidesTheFrameByItselfAfterSuccess) {
  StartWithSet();
  Send();
  EXPECT_TRUE(Shown("DownloadFrame"));
  auto& timer = Find<QTimer>("HideFrameTimer");
  EXPECT_TRUE(timer.isActive());
  EXPECT_TRUE(timer.isSingleShot());
  Tick("HideFrameTimer");
  EXPECT_FALSE(Shown("DownloadFrame"));
}

TEST_F(DownloadRun, SaysWhatItDoesOneAfterAnother) {
  StartWithSet("erase=2");
  std::vector<QString> seen;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    if (!Shown("DownloadFrame")) return;
    if (seen.empty() || seen.back() != Information()) seen.push_back(Information());
    EXPECT_EQ(FrameButton().text(), "Cancel");
    EXPECT_TRUE(sleep.blocked);
  });
  watch.start(0);
  Send();
  watch.stop();
  EXPECT_EQ(seen, (std::vector<QString>{"Erasing flash memory ...", "Coding data...", "Downloading..."}));
}

/// Writes down what the frame says in the moment in which it appears.
class FirstWords final : public QObject {
 public:
  explicit FirstWords(QWidget& frame) : QObject(&frame), m_frame(frame) { frame.installEventFilter(this); }
  std::vector<QString> seen;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Show)
      for (const char* const label : {"InformationLabel", "PercentLabel", "BoardHoldsLabel"})
        seen.push_back(m_frame.findChild<QLabel*>(label)->text());
    return false;
  }

 private:
  QWidget& m_frame;
};

TEST_F(DownloadRun, AppearsWithTheWordsOfThePhaseThatItAppearsIn) {
  StartWithSet();
  FirstWords& words = *new FirstWords(Find<QWidget>("DownloadFrame"));
  for (int run = 0; run < 2; ++run) {
    words.seen.clear();
    Send();
    EXPECT_EQ(words.seen, (std::vector<QString>{"Erasing flash memory ...", "0 %", ""}));
    ExpectEnded("SUCCESS !");
  }
  // One that has no phase appears with how it ended.
  agent->Unplug();
  words.seen.clear();
  Send();
  EXPECT_EQ(words.seen, (std::vector<QString>{"Connection lost", "", ""}));
}

TEST_F(DownloadRun, EraseProgressIsTheShareOfThirtySeconds) {
  StartWithSet("erase=16");
  QString atFifteen;
  const auto start = clock.Now();
  When([&] { return clock.Now() - start >= std::chrono::seconds(15) + std::chrono::milliseconds(100); },
       [&] { atFifteen = Percent(); });
  Send();
  // Polls come every three seconds: the last one before shows 15 of 30.
  EXPECT_EQ(atFifteen, "50 %");
}

struct Missing {
  const char* keyword;
  const char* message;
};

class Incomplete : public DownloadRun, public testing::WithParamInterface<Missing> {};

TEST_P(Incomplete, SetIsRefusedWithTheMessageOfThePiece) {
  Start();
  std::string text = support::ReadBytes(CompleteSet());
  const std::string keyword = GetParam().keyword;
  const std::size_t line = text.find(keyword);
  if (keyword.ends_with("-1")) {
    // No file: the two lines behind go too.
    const std::size_t volume = text.find("\r\n", text.find("\r\n", line) + 2);
    const std::size_t next = text.find("\r\n", volume + 2);
    text.replace(line, next - line, keyword.substr(0, keyword.size() - 1) + "0");
  } else {
    const std::size_t path = text.find("\r\n", line) + 2;
    text.erase(path, text.find("\r\n", path) - path);
  }
  window->OpenSet(support::WriteBytes(folder / "incomplete.lscfg", text));
  ASSERT_EQ(dialogs.errors, std::vector<QString>());
  Send();
  EXPECT_EQ(dialogs.errors, std::vector<QString>{GetParam().message});
  EXPECT_FALSE(Shown("DownloadFrame"));
  EXPECT_EQ(agent->Board().State().resets, 0U);
  EXPECT_TRUE(Button("SendBtn").isEnabled());
}

INSTANTIATE_TEST_SUITE_P(Pieces, Incomplete,
                         testing::Values(Missing{"BOOT", "Boot file is missing"},
                                         Missing{"PWRON", "Power On file is missing"},
                                         Missing{"PWROFF", "Power Off file is missing"},
                                         Missing{"IDLE", "Idle file is missing"},
                                         Missing{"MOTION-1", "At least one motion file is required"},
                                         Missing{"IMPACT-1", "At least one impact file is required"},
                                         Missing{"LOCKUP-1", "At least one locku-up file is required"}));

TEST_F(DownloadRun, AsksBeforeItIsCancelledAndStopsOnCancel) {
  StartWithSet();
  dialogs.okAnswers = {false};
  WhenInformation("Downloading...", [this] { FrameButton().click(); });
  Send();
  ASSERT_EQ(dialogs.asked.size(), 1U);
  EXPECT_EQ(dialogs.asked[0].question, kAbortQuestion);
  // Escape must not abort by mistake.
  EXPECT_EQ(dialogs.asked[0].harmless, ui::kit::Dialogs::Harmless::Ok);
  EXPECT_EQ(agent->Board().State().resets, 0U);
  // Sounds begin at 512. Without a table in front of them they are none.
  EXPECT_EQ(Erased(0, 512), 512);
  EXPECT_LT(Erased(512, 4 << 20), (4 << 20) - 512);
  EXPECT_EQ(Percent(), "");
  ExpectEnded("Canceled");
}

TEST_F(DownloadRun, GoesOnWhenThePersonResumes) {
  StartWithSet("erase=1");
  dialogs.okAnswers = {true};
  // However long they think about it.
  dialogs.whileAsking = [this] { clock.Advance(std::chrono::minutes(2)); };
  WhenInformation("Erasing flash memory ...", [this] { FrameButton().click(); });
  Send();
  ExpectEnded("SUCCESS !");
}

TEST_F(DownloadRun, IsCancelledInTheMiddleOfTheErase) {
  StartWithSet("erase=10");
  dialogs.okAnswers = {false};
  WhenInformation("Erasing flash memory ...", [this] { FrameButton().click(); });
  Send();
  ExpectEnded("Canceled");
  // Not one byte was written.
  EXPECT_EQ(Erased(0, 4 << 20), 4 << 20);
}

TEST_F(DownloadRun, CancelledInTheMiddleOfTheEraseTheBoardComesBackByItselfWhenItIsDone) {
  StartWithSet("erase=10");
  agent->Board().Receive(std::vector<std::uint8_t>(1028, 42), clock.Now());
  dialogs.okAnswers = {false};
  WhenInformation("Erasing flash memory ...", [this] { FrameButton().click(); });
  Send();
  ExpectEnded("Canceled");
  EXPECT_EQ(LabelText("SerialLabel"), "");
  EXPECT_FALSE(Button("SendBtn").isEnabled());
  EXPECT_EQ(Button("SendBtn").toolTip(),
            "The board is still erasing its memory. It comes back by itself, please wait.");
  for (int tick = 0; tick < 10 && !Button("SendBtn").isEnabled(); ++tick) {
    clock.Advance(std::chrono::seconds(1));
    Tick("GoOnlineTimer");
  }
  EXPECT_EQ(LabelText("SerialLabel"), "Kestrin USB Serial Number: 4B535401");
  ASSERT_TRUE(Button("SendBtn").isEnabled());
  Send();
  ExpectEnded("SUCCESS !");
  EXPECT_THAT(agent->Board().State().accelerometer, testing::Each(42));
  EXPECT_TRUE(kept.kept.empty());
}

TEST_F(DownloadRun, AsksForTheRestOfAHalfSerialNumberAgainAndSaysWhatIsWrongIfItDoesNotCome) {
  // Going online reads six answers, the third of which is the second half.
  StartWithSet("fault=read:3,fault=read:8");
  ASSERT_EQ(LabelText("SerialLabel"), "Kestrin USB Serial Number: 4B53");
  Send();
  EXPECT_NE(LabelText("BoardHoldsLabel").indexOf("plug it in again"), -1);
  ExpectEnded("The board told only half of its serial number.");
  Send();
  ExpectEnded("SUCCESS !");
  EXPECT_EQ(LabelText("SerialLabel"), "Kestrin USB Serial Number: 4B535401");
}

TEST_F(DownloadRun, IsCancelledWhileFilesAreCoded) {
  StartWithSet();
  dialogs.okAnswers = {false};
  WhenInformation("Coding data...", [this] { FrameButton().click(); });
  Send();
  EXPECT_EQ(Erased(0, 4 << 20), 4 << 20);
  EXPECT_EQ(agent->Board().State().resets, 0U);
  ExpectEnded("Canceled");
}

TEST_F(DownloadRun, SaysWhatTheBoardHoldsAlsoWhenItsFrameWasClosedBeforeTheRunHadEnded) {
  StartWithSet("erase=2");
  dialogs.okAnswers = {false};
  WhenInformation("Erasing flash memory ...", [this] {
    FrameButton().click();
    ASSERT_EQ(FrameButton().text(), "Close");
    FrameButton().click();
    EXPECT_FALSE(Shown("DownloadFrame"));
  });
  Send();
  ExpectEnded("Canceled");
}

TEST_F(DownloadRun, IsClosedByAClickBesideItOnceItIsDone) {
  StartWithSet();
  bool clicked = false;
  WhenInformation("Downloading...", [this, &clicked] {
    clicked = true;
    ClickBeside();
    EXPECT_TRUE(Shown("DownloadFrame"));
  });
  Send();
  EXPECT_TRUE(clicked);
  ASSERT_EQ(Information(), "SUCCESS !");
  ClickInside();
  EXPECT_TRUE(Shown("DownloadFrame"));
  LetRead();
  ClickBeside();
  EXPECT_FALSE(Shown("DownloadFrame"));
  EXPECT_TRUE(Button("SendBtn").isEnabled());
}

TEST_F(DownloadRun, TheSecondPressOfADoubleClickDoesNotDismissTheResult) {
  // The first press ends at once: the board is gone.
  StartWithSet();
  agent->Unplug();
  Send();
  ASSERT_EQ(Information(), "Connection lost");
  ClickBeside();
  EXPECT_TRUE(Shown("DownloadFrame"));
  ClickFrameButton();
  EXPECT_TRUE(Shown("DownloadFrame"));
  QTest::keyClick(&FrameButton(), Qt::Key_Space);
  EXPECT_TRUE(Shown("DownloadFrame"));
  LetRead();
  ClickFrameButton();
  EXPECT_FALSE(Shown("DownloadFrame"));
}

TEST_F(DownloadRun, APressRightAfterTheEndOfALongRunDoesNotDismissItUnread) {
  StartWithSet("erase=20");
  Send();
  ASSERT_EQ(Information(), "SUCCESS !");
  // It was meant for what stood there a moment ago.
  ClickFrameButton();
  EXPECT_TRUE(Shown("DownloadFrame"));
  EXPECT_TRUE(dialogs.asked.empty());
  LetRead();
  ClickFrameButton();
  EXPECT_FALSE(Shown("DownloadFrame"));
}

TEST_F(DownloadRun, APressRightAfterTheFrameHasComeDoesNotAskWhetherToCancel) {
  StartWithSet("erase=10");
  LetRead();
  bool pressed = false;
  When([this] { return Shown("DownloadFrame"); },
       [this, &pressed] {
         pressed = true;
         ClickFrameButton();
         QTest::keyClick(&FrameButton(), Qt::Key_Space);
       });
  Send();
  EXPECT_TRUE(pressed);
  EXPECT_TRUE(dialogs.asked.empty());
  ExpectEnded("SUCCESS !");
}

TEST_F(DownloadRun, FilesAroundTheSizesOfReportsArriveWhole) {
  // Two samples are three bytes, so 1,024 cannot come about: 1,020 go with one command, 1,023 with two, since one
  // carries 1,021 at most, 1,026 and 2,049 with whole blocks before the rest.
  for (const std::size_t samples : {680U, 682U, 684U, 1366U}) {
    window.reset();
    StartWithSet("", samples);
    Send();
    ASSERT_EQ(Information(), "SUCCESS !") << samples;
    // The first stream is that of the boot sound, which is the set's first file. Its peak is what the samples reach.
    const std::vector<std::int16_t> sound = support::SomeSamples(samples, 20000, 1);
    int peak = 0;
    for (const int sample : sound) peak = std::max(peak, std::abs(sample));
    const std::vector<std::uint8_t> expected = support::ReferenceStream(sound, peak, 100);
    ASSERT_EQ(expected.size(), samples / 2 * 3);
    const auto flash = agent->Board().Flash();
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), flash.begin() + 512)) << samples;
    FrameButton().click();
  }
}

TEST_F(DownloadRun, WaitsForAnEraseUpToTheTwentiethQuestion) {
  // Each question waits 3 seconds: the twentieth ends after 60.
  StartWithSet("erase=59");
  Send();
  ExpectEnded("SUCCESS !");
  window.reset();
  StartWithSet("erase=61");
  Send();
  ExpectEnded("Connection lost");
}

TEST_F(DownloadRun, EscapeIsTheFramesButton) {
  StartWithSet();
  Send();
  ASSERT_TRUE(Shown("DownloadFrame"));
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(&Find<QWidget>("DownloadFrame"), &escape);
  EXPECT_FALSE(Shown("DownloadFrame"));
}

TEST_F(DownloadRun, LosesTheConnectionWhenTheBoardIsPulledOutAndWorksAgainAfterwards) {
  StartWithSet();
  WhenInformation("Downloading...", [this] { agent->Unplug(); });
  Send();
  ExpectEnded("Connection lost");
  Tick("NoticeTimer");
  EXPECT_FALSE(Button("SendBtn").isEnabled());
  agent->Plug();
  Tick("NoticeTimer");
  Tick("GoOnlineTimer");
  EXPECT_TRUE(Button("SendBtn").isEnabled());
  Send();
  ExpectEnded("SUCCESS !");
}

TEST_F(DownloadRun, SaysMemoryCheckErrorWhenTheTableArrivesDamaged) {
  // Reports written: 3 to go online, 3 up to the parameters put back, 7 files of one report each; the next is the
  // table.
  StartWithSet("fault=flip:14", 100);
  Send();
  EXPECT_EQ(agent->Board().State().resets, 0U);
  ExpectEnded("Memory check error");
}

TEST_F(DownloadRun, LosesTheConnectionWhenAFileArrivesDamaged) {
  StartWithSet("fault=flip:13", 100);
  Send();
  ExpectEnded("Connection lost");
}

TEST_F(DownloadRun, NothingElseCanBeStartedMeanwhile) {
  StartWithSet("wire=usb");
  bool looked = false;
  WhenInformation("Downloading...", [this, &looked] {
    looked = true;
    for (const char* const name : {"LoadBtn", "SaveBtn", "ConfigBtn", "SendBtn", "UpdateBtn", "UndoBtn", "RedoBtn"})
      EXPECT_FALSE(Button(name).isEnabled()) << name;
    EXPECT_FALSE(Find<QWidget>("MtFileList").isEnabled());
    EXPECT_EQ(Button("SendBtn").toolTip(), "Please wait until this is done.");
    // The timers go on, but leave the board alone: no report takes its time on the wire.
    const auto before = clock.Now();
    Tick("NoticeTimer");
    Tick("GoOnlineTimer");
    EXPECT_EQ(clock.Now(), before);
  });
  Send();
  EXPECT_TRUE(looked);
  ExpectEnded("SUCCESS !");
}

TEST_F(DownloadRun, ClosingTheWindowAsksAndGoesOnWhenThePersonDoesNotMeanIt) {
  StartWithSet();
  dialogs.okAnswers = {false};
  WhenInformation("Downloading...", [this] { EXPECT_FALSE(window->close()); });
  Send();
  EXPECT_EQ(dialogs.asked.size(), 1U);
  EXPECT_TRUE(window->isVisible());
  ExpectEnded("SUCCESS !");
}

TEST_F(DownloadRun, ClosingTheWindowCancelsTheDownloadAndWaitsForASafePoint) {
  StartWithSet();
  dialogs.okAnswers = {true};
  bool closed = false;
  QObject::connect(window.get(), &ui::window::Main::closed, [&closed] { closed = true; });
  WhenInformation("Downloading...", [this, &closed] {
    window->close();
    EXPECT_FALSE(closed);
    EXPECT_EQ(agent->Board().State().byes, 0U);
  });
  Send();
  EXPECT_EQ(Information(), "Canceled");
  EXPECT_TRUE(Until([&closed] { return closed; }));
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(agent->Board().State().byes, 1U);
}

TEST_F(DownloadRun, TellsHowMuchTimeIsLeft) {
  StartWithSet("erase=16");
  QString left;
  const auto start = clock.Now();
  When([&] { return clock.Now() - start >= std::chrono::milliseconds(15100); },
       [&] { left = LabelText("TimeLeftLabel"); });
  Send();
  EXPECT_EQ(left, "0:15 left");
}

TEST_F(DownloadRun, TheTimeLeftDoesNotCountHowLongThePersonThinksAboutClosingTheWindow) {
  QStringList left;
  for (const bool asks : {false, true}) {
    window.reset();
    StartWithSet("wire=usb", 20000);
    const auto percent = [this] {
      return Information() == "Downloading..." ? Find<QProgressBar>("DownloadBar").value() : 0;
    };
    if (asks) dialogs.okAnswers = {false};
    dialogs.whileAsking = [this] { clock.Advance(std::chrono::minutes(5)); };
    if (asks) When([percent] { return percent() >= 30; }, [this] { EXPECT_FALSE(window->close()); });
    When([percent] { return percent() >= 60; }, [&] { left.append(LabelText("TimeLeftLabel")); });
    Send();
    ExpectEnded("SUCCESS !");
  }
  ASSERT_EQ(left.size(), 2);
  EXPECT_FALSE(left[0].isEmpty());
  EXPECT_EQ(left[1], left[0]);
}

}  // namespace
}  // namespace kestrin::support
