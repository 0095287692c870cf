// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

#include "rig/ProgramFixture.h"
#include "rig/SecondBoard.h"
#include "rig/window/ProgramFolder.h"
#include "rig/window/WindowProgram.h"

namespace kestrin::rig {
namespace {

using testing::Each;

constexpr const char* kSerial = "Kestrin USB Serial Number: 4B535401";
constexpr const char* kBoardIsThere = "A board is connected";
constexpr const char* kNoBoardIsThere = "No board is connected";
constexpr const char* kNothingYet = "Board: Nothing yet: its memory is empty";
constexpr const char* kNotFound =
    "A connection with Kuskekpize could not be established.\n"
    " Press OK to work offline or Cancel to exit the application";

/// The window over the real HID library and the kernel's notices, with a mocked device that has the board's firmware
/// behind it.
class PluggedWindow : public ProgramFixture {
 protected:
  void Start(const std::vector<std::string>& more = {}) {
    std::vector<std::string> arguments{"--program-folder", m_folder.Path().string()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    window.Start(arguments, m_environment);
  }
  void AwaitBoard() const {
    window.Await("label", kSerial);
    window.Await("graphic", kBoardIsThere);
  }
  /// Closes the frame that tells how a run ended. For a moment after the end it takes no press, which could be the
  /// second of a double-click: a person presses again.
  void CloseResult(const std::string& information) const {
    while (window.IsShown("label", information)) {
      try {
        window.Click("push button", "Close");
      } catch (const std::exception&) {
        // An earlier press may have come through between the look and this one.
        if (window.IsShown("label", information)) throw;
      }
    }
  }
  void AwaitNoBoard() const {
    window.Await("graphic", kNoBoardIsThere);
    window.AwaitGone("label", kSerial);
  }
  [[nodiscard]] bool MaySend() const { return window.Await("push button", "Download").Is(Control::State::Enabled); }

  ProgramFolder program{m_folder.Path()};
  WindowProgram window;
};

TEST_F(PluggedWindow, ABoardThatIsThereIsUsedWhileItIsThere) {
  mock.Plug(3);
  Start();
  AwaitBoard();
  EXPECT_TRUE(MaySend());
  UnplugFrom(window.Program());
  AwaitNoBoard();
  EXPECT_FALSE(MaySend());
  EXPECT_EQ(window.Await("push button", "Download").description, "Write the sound set into the board");
  mock.Plug(4);
  AwaitBoard();
  EXPECT_TRUE(MaySend());
  EXPECT_EQ(window.Close().code, 0);
  EXPECT_EQ(board.State().byes, 1U);
}

TEST_F(PluggedWindow, ABoardThatIsPluggedInLaterIsFound) {
  Start();
  window.Await("label", kNotFound);
  EXPECT_FALSE(window.IsShown("push button", "Download"));
  window.Click("push button", "OK");
  AwaitNoBoard();
  EXPECT_FALSE(MaySend());
  mock.Plug();
  AwaitBoard();
  EXPECT_TRUE(MaySend());

  // What it holds can be seen and changed.
  window.Press({"Control_L", "e"});
  const std::string threshold = "Threshold, MOTION DETECTION PARAMETERS";
  EXPECT_EQ(window.Value(window.Await("slider", threshold)), 180);
  window.Press({"Right"});
  window.Await("the next value",
               [&](const Control& control) { return control.name == threshold && window.Value(control) == 181; });
  window.Click("push button", "SEND Configuration");
  window.Await("label", "The board has taken the new values.");
  window.Press({"Escape"});
  window.AwaitGone("slider", threshold);
  EXPECT_EQ(window.Close().code, 0);
  EXPECT_EQ(board.State().accelerometer, (std::array<std::uint8_t, 6>{181, 2, 10, 50, 125, 13}));
}

TEST_F(PluggedWindow, WithoutABoardCancelEndsTheProgramBeforeItsWindowIsSeen) {
  Start();
  window.Await("label", kNotFound);
  window.Press({"Escape"});
  EXPECT_EQ(window.Wait().code, 0);
}

TEST_F(PluggedWindow, ABoardThatIsPulledOutOfADownloadTakesItWhenItIsBack) {
  mock.Plug();
  Start({Configuration()});
  window.Await("label", "complete set");
  AwaitBoard();
  window.Await("what the board holds", [](const Control& control) { return control.name == kNothingYet; });
  // Before the sounds go a question, which shows that the board holds another set, the detection parameters, the erase,
  // and the parameters back. Each of the seven sounds takes three reports, so this is the last one of the third sound.
  HoldTheAnswersTo(13);
  window.Click("push button", "Download");
  WaitUntilHeld();
  UnplugFrom(window.Program());
  window.Await("label", "Connection lost");
  window.Await("label", "The board holds no complete sound set. Repeat the download before you use the saber.");
  CloseResult("Connection lost");
  AwaitNoBoard();
  // No table, three sounds, nothing behind them.
  const Bytes whole = ExpectedFlash();
  const auto flash = board.Flash();
  const auto third = static_cast<std::ptrdiff_t>(512 + 3 * (kCodedBytes + 1));
  EXPECT_THAT(Bytes(flash.begin(), flash.begin() + 512), Each(0xFF));
  EXPECT_TRUE(std::equal(whole.begin() + 512, whole.begin() + third, flash.begin() + 512));
  EXPECT_THAT(Bytes(flash.begin() + third, flash.begin() + third + kCodedBytes), Each(0xFF));

  mock.Plug(2);
  AwaitBoard();
  window.Click("push button", "Download");
  window.Await("label", "SUCCESS !");
  EXPECT_TRUE(BoardHoldsTheSet());
  EXPECT_EQ(board.State().accelerometer, simulator::BoardState{}.accelerometer);
  EXPECT_EQ(window.Close().code, 0);
}

TEST_F(PluggedWindow, OfSeveralBoardsTheFirstIsUsedAndTheLabelSaysHowManyThereAre) {
  SecondBoard other(host);
  mock.Plug(0);
  other.Mock().Plug(1);
  Start();
  AwaitBoard();
  const auto saysOfLabel = [](const std::string& text) {
    return [text](const Control& control) { return control.name == kSerial && control.description == text; };
  };
  window.Await("a label that tells of both",
               saysOfLabel("2 boards are connected; this is the first one, which is used."));
  window.Program().Signal(SIGSTOP);
  other.Mock().Unplug();
  window.Program().Signal(SIGCONT);
  window.Await("a label that tells of one", saysOfLabel(""));
  other.Mock().Plug(1);
  window.Await("a label that tells of both again",
               saysOfLabel("2 boards are connected; this is the first one, which is used."));
  EXPECT_EQ(other.Firmware().State().byes, 0U);
  EXPECT_EQ(window.Close().code, 0);
}

}  // namespace
}  // namespace kestrin::rig
