// SPDX-License-Identifier: MIT
// What comes in between while the window asks a board what it holds: everything else goes first.

#include "ui/board/BoardFixture.h"

namespace kestrin::support {
namespace {

/// A board over a wire that takes its time, so that the window lives while it is asked.
class BoardQuarrel : public BoardFixture {
 protected:
  /// Starts the window over that board and runs `action` once that many questions were asked.
  void StartAnd(std::uint64_t questions, const std::function<void()>& action, const std::string& more = "") {
    PutOnBoard(Plain());
    Make(Board("wire=usb" + more));
    ASSERT_TRUE(window->StartUp());
    const std::uint64_t before = Written();
    When([this, before, questions] { return Written() >= before + questions; }, action);
    Show();
  }
  [[nodiscard]] bool IsAsking() const { return Chip().Words() == "Board: being asked ..."; }
};

constexpr const char* kUnknownSet =
    "Board: A set this computer does not know: 1 motion sound, 1 impact sound, 1 lock-up sound, 0.0 s in all";

TEST_F(BoardQuarrel, NothingIsAskedTwiceAlthoughItIsInterrupted) {
  std::uint64_t start = 0;
  std::uint64_t then = 0;
  StartAnd(20, [&] {
    EXPECT_TRUE(gate.IsBusy());
    gate.WhenFree([&] {
      EXPECT_TRUE(IsAsking());
      then = Written();
    });
    start = Written();
  });
  ASSERT_TRUE(Says(kUnknownSet));
  ASSERT_GT(start, 0U);
  EXPECT_LE(then, start + 1) << "it went on asking";
  // Three reports tell who the board is, and parameters are read once; the table has 30 bytes and 18 for its lists,
  // and all of it is looked at again at the end.
  const std::uint64_t all = Written();
  EXPECT_EQ(all - start + 20, 48U + 7 + 1);
}

TEST_F(BoardQuarrel, ABoardThatIsPulledOutIsForgotten) {
  StartAnd(20, [this] { agent->Unplug(); });
  ASSERT_TRUE(Until([this] { return !Chip().isVisible(); }));
  EXPECT_EQ(LabelText("SerialLabel"), "");
  EXPECT_TRUE(dialogs.errors.empty());
  agent->Plug();
  ASSERT_TRUE(Says(kUnknownSet));
}

TEST_F(BoardQuarrel, AnotherBoardInTheSamePlaceIsAskedAnew) {
  StartWith(Plain(), Plain());
  ASSERT_TRUE(Says("Board: This set"));
  agent->Unplug();
  ASSERT_TRUE(Until([this] { return !Chip().isVisible(); }));
  std::vector<std::uint8_t> erase(core::device::kCommandSize, 0);
  erase[0] = 10;
  agent->Board().Receive(erase, clock.Now());
  ASSERT_TRUE(agent->Board().NextAnswer(clock.Now()));
  agent->Plug();
  ASSERT_TRUE(Says("Board: Nothing yet: its memory is empty"));
}

TEST_F(BoardQuarrel, ADownloadBeginsAtOnce) {
  const auto set = WriteSet("open.lscfg", With(3, 42));
  std::uint64_t pressed = 0;
  StartAnd(20, [&] {
    pressed = Written();
    window->OpenSet(set);
    Button("SendBtn").click();
    EXPECT_TRUE(IsAsking());
  });
  ASSERT_TRUE(Until([this] { return LabelText("InformationLabel") == "SUCCESS !"; }, 20000));
  EXPECT_GT(pressed, 0U);
  ASSERT_TRUE(Says("Board: This set"));
  EXPECT_EQ(Entries().size(), 1U);
}

TEST_F(BoardQuarrel, TheWindowClosesAtOnce) {
  std::uint64_t closed = 0;
  StartAnd(20, [&] {
    closed = Written();
    window->close();
  });
  ASSERT_TRUE(Until([this] { return window->IsOver(); }));
  // The question that was under way, and the good-bye.
  EXPECT_LE(Written(), closed + 2);
}

// Nobody is there any more to see a download through.
TEST_F(BoardQuarrel, AWindowThatClosesWhileADownloadOnlyLooksSendsNothing) {
  PutOnBoard(With(6, 50));
  Make(Board("wire=usb"));
  ASSERT_TRUE(window->StartUp());
  Show();
  Open(Plain());
  ASSERT_TRUE(Says("Board: This set, but Lock-up 1 differs"));
  const std::string flash = Flash();
  const std::uint64_t before = Written();
  // Behind the table all sounds but the last are the same.
  When([this, before] { return Written() >= before + 6; }, [this] { window->close(); });
  Button("SendBtn").click();
  ASSERT_TRUE(Until([this] { return window->IsOver(); }));
  EXPECT_EQ(Flash(), flash);
  EXPECT_TRUE(Entries().empty());
}

// The answer may come late, in place of the one to what the download asks first: the parameters that are put back.
TEST_F(BoardQuarrel, ADownloadLetsTheAnswerPassThatItHasNotGotInTime) {
  PutOnBoard(With(6, 50));
  // Answers 1 to 6 tell who the board is and its parameters, 56 its table and its sounds, 4 the lock-up's volume. The
  // next is to the question whether it holds the set; what follows is read before the download asks.
  Make(Board("fault=read:67,fault=read:68"));
  ASSERT_TRUE(window->StartUp());
  Show();
  ASSERT_TRUE(Says(kUnknownSet));
  Open(Plain());
  ASSERT_TRUE(Says("Board: This set, but Lock-up 1 differs"));
  Button("SendBtn").click();
  ASSERT_TRUE(Until([this] { return LabelText("InformationLabel") == "SUCCESS !"; }));
}

// What waits is no reason to send for a minute what is there already.
TEST_F(BoardQuarrel, ADownloadThatOnlyLooksDoesSoToTheEnd) {
  PutOnBoard(Plain());
  Make(Board("wire=usb"));
  ASSERT_TRUE(window->StartUp());
  Show();
  Open(Plain());
  ASSERT_TRUE(Says("Board: This set"));
  const std::string flash = Flash();
  const std::uint64_t before = Written();
  bool hasHadItsTurn = false;
  When([this, before] { return Written() >= before + 3; },
       [&] {
         EXPECT_TRUE(gate.IsBusy());
         gate.WhenFree([&hasHadItsTurn] { hasHadItsTurn = true; });
       });
  Button("SendBtn").click();
  EXPECT_EQ(LabelText("InformationLabel"), "The board holds just this set.");
  EXPECT_TRUE(Until([&hasHadItsTurn] { return hasHadItsTurn; }));
  EXPECT_EQ(Flash(), flash);
}

TEST_F(BoardQuarrel, ABoardThatFallsSilentIsNotKnownAndStaysOnline) {
  // The answers before are those to who it is and to its parameters.
  StartAnd(
      1000, [] {}, ",fault=read:25");
  ASSERT_TRUE(Says("Board: not known"));
  EXPECT_EQ(LabelText("SerialLabel"), "Kestrin USB Serial Number: 4B535401");
  const std::uint64_t written = Written();
  Open(With(0, 5));
  Open(Plain());
  EXPECT_TRUE(Says("Board: not known"));
  EXPECT_EQ(Written(), written) << "it is asked again and again";
}

TEST_F(BoardQuarrel, WithoutAPlaceToKeepItNobodyAsks) {
  knowledge.clear();
  PutOnBoard(Plain());
  Start(Board());
  const std::uint64_t written = Written();
  Open(Plain());
  Button("SendBtn").click();
  ASSERT_TRUE(Until([this] { return LabelText("InformationLabel") == "SUCCESS !"; }));
  EXPECT_GT(Written(), written);
  EXPECT_EQ(window->findChild<ui::board::BoardChip*>(), nullptr);
}

}  // namespace
}  // namespace kestrin::support
