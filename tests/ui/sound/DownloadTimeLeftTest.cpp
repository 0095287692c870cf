// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QLabel>

#include "support/FakeClock.h"
#include "ui/kit/FakeDialogs.h"
#include "ui/sound/DownloadFrame.h"

namespace kestrin::support {
namespace {

using Phase = core::sound::DownloadPhase;

/// The frame alone, at times that the test chooses.
class TimeLeft : public testing::Test {
 protected:
  TimeLeft() { frame.ShowFrame(); }
  [[nodiscard]] QString Left() const { return frame.findChild<QLabel*>("TimeLeftLabel")->text(); }

  FakeDialogs dialogs;
  FakeClock clock;
  ui::sound::DownloadFrame frame{dialogs, clock};
};

TEST_F(TimeLeft, DoesNotCountWhileAQuestionStandsOpen) {
  frame.ShowPhase(Phase::Writing, "Downloading...");
  clock.Advance(std::chrono::seconds(10));
  frame.ShowPercent(20);
  // 20 % in 10 seconds: 80 % take 40.
  EXPECT_EQ(Left(), "0:40 left");
  dialogs.okAnswers = {true};
  dialogs.whileAsking = [this] { clock.Advance(std::chrono::minutes(5)); };
  EXPECT_FALSE(frame.AskAbort("?"));
  clock.Advance(std::chrono::seconds(5));
  frame.ShowPercent(30);
  EXPECT_EQ(Left(), "0:35 left");
  {
    const ui::sound::DownloadFrame::Pause pause(frame);
    clock.Advance(std::chrono::minutes(1));
  }
  clock.Advance(std::chrono::seconds(10));
  frame.ShowPercent(50);
  EXPECT_EQ(Left(), "0:25 left");
}

TEST_F(TimeLeft, CountsWhatTheBoardDoesMeanwhile) {
  // Whatever it is called in the language of the window.
  frame.ShowPhase(Phase::Erasing, "The board forgets ...");
  clock.Advance(std::chrono::seconds(3));
  frame.ShowPercent(10);
  EXPECT_EQ(Left(), "0:27 left");
  dialogs.okAnswers = {true};
  dialogs.whileAsking = [this] { clock.Advance(std::chrono::seconds(12)); };
  EXPECT_FALSE(frame.AskAbort("?"));
  frame.ShowPercent(50);
  EXPECT_EQ(Left(), "0:15 left");
}

TEST_F(TimeLeft, ANewPhaseBeginsAnew) {
  frame.ShowPhase(Phase::Coding, "Coding data...");
  clock.Advance(std::chrono::seconds(100));
  frame.ShowPhase(Phase::Writing, "Downloading...");
  clock.Advance(std::chrono::seconds(2));
  frame.ShowPercent(50);
  EXPECT_EQ(Left(), "0:02 left");
}
}  // namespace
}  // namespace kestrin::support
