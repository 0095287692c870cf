// SPDX-License-Identifier: MIT
#include <QProgressBar>
#include <algorithm>
#include <map>

#include "support/EventLoopTurns.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

/// The window stays alive in the middle of long work. What it waits for is told in work and in the board's own time:
/// how long that takes on the computer at hand is for the benchmarks.
class Pause : public MainFixture {
 protected:
  /// Of each of the sounds of LargeSet(). The first is never coded, nor is the last of an even count.
  static constexpr std::size_t kSamples = 69000;
  static constexpr int kSounds = 40;

  /// A set of 40 files, which fills the board nearly.
  std::filesystem::path LargeSet() {
    std::string text;
    unsigned seed = 1;
    const auto add = [&] {
      const std::string name = "s" + std::to_string(seed) + ".lsu";
      text += core::base::TextOf(Sound(name, kSamples, seed)) + "\r\n 100\r\n";
      ++seed;
    };
    for (const char* const keyword : {"BOOT", "PWRON", "PWROFF", "IDLE"}) {
      text += std::string(keyword) + "\r\n";
      add();
    }
    for (const char* const keyword : {"MOTION-12", "IMPACT-12", "LOCKUP-12"}) {
      text += std::string(keyword) + "\r\n";
      for (int i = 0; i < 12; ++i) add();
    }
    return support::WriteBytes(folder / "large.lscfg", text);
  }
};

TEST_F(Pause, TheWindowHasItsTurnWithEverySoundThatIsLoaded) {
  const auto set = LargeSet();
  Start();
  const EventLoopTurns turns;
  window->OpenSet(set);
  ASSERT_EQ(dialogs.errors, std::vector<QString>());
  EXPECT_GE(turns.Count(), kSounds);
}

TEST_F(Pause, TheWindowHasItsTurnWithEveryBlockThatIsReadCodedAndSent) {
  Start();
  window->OpenSet(LargeSet());
  const auto& bar = Find<QProgressBar>("DownloadBar");
  std::map<QString, int> last;
  std::map<QString, int> longestStep;
  const EventLoopTurns turns([&] {
    const QString doing = LabelText("InformationLabel");
    if (!Shown("DownloadFrame") || bar.maximum() != 100) return;
    longestStep[doing] = std::max(longestStep[doing], bar.value() - last[doing]);
    last[doing] = bar.value();
  });
  Button("SendBtn").click();
  ASSERT_EQ(LabelText("InformationLabel"), "SUCCESS !");
  // Each sound is read once to see whether it can be coded, and once to code it, 16,384 samples at a time: 68,998 are
  // five blocks. Coded they are three bytes for two samples, 103,497, which are sent in 102 reports of 1,024.
  EXPECT_GE(turns.Count(), kSounds * (5 + 5 + 102));
  for (const char* const doing : {"Coding data...", "Downloading..."}) {
    EXPECT_GE(last[doing], 97) << doing;
    EXPECT_LE(longestStep[doing], 3) << doing << " of 100";
  }
  Find<QPushButton>("CancelBtn").click();
}

TEST_F(Pause, TheWindowHasItsTurnEveryTwentyMillisecondsOfAWaitForTheBoard) {
  // The first poll of the erase waits 3,000 ms in vain.
  Start("erase=4");
  window->OpenSet(CompleteSet());
  const auto begin = clock.Now();
  auto before = begin;
  core::base::Clock::Duration longest{};
  const EventLoopTurns turns([&] { longest = std::max(longest, clock.Now() - std::exchange(before, clock.Now())); });
  Button("SendBtn").click();
  ASSERT_EQ(LabelText("InformationLabel"), "SUCCESS !");
  EXPECT_GE(clock.Now() - begin, std::chrono::seconds(4));
  EXPECT_EQ(longest, std::chrono::milliseconds(20));
  Find<QPushButton>("CancelBtn").click();
}

TEST_F(Pause, CancelAnswersInTheNextTurnAlsoWhileAReadWaits) {
  Start("erase=30");
  window->OpenSet(CompleteSet());
  dialogs.okAnswers = {false};
  auto& button = Find<QPushButton>("CancelBtn");
  int pressedIn = -1;
  int askedIn = -1;
  int turnsOfTheErase = 0;
  const EventLoopTurns turns([&] {
    // Before the first read the window has its turn a few times, all the others are turns of its wait of three seconds.
    if (LabelText("InformationLabel") != "Erasing flash memory ..." || ++turnsOfTheErase != 20) return;
    pressedIn = turns.Count();
    // As a person's press comes: from outside of what runs just now.
    QMetaObject::invokeMethod(&button, "click", Qt::QueuedConnection);
  });
  dialogs.whileAsking = [&] { askedIn = turns.Count(); };
  Button("SendBtn").click();
  ASSERT_GE(pressedIn, 0);
  ASSERT_GE(askedIn, 0);
  EXPECT_LE(askedIn - pressedIn, 1);
  EXPECT_EQ(LabelText("InformationLabel"), "Canceled");
}

}  // namespace
}  // namespace kestrin::support
