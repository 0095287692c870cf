// SPDX-License-Identifier: MIT
#include "ui/stage/StageSound.h"

#include <gtest/gtest.h>

#include "support/FakeClock.h"
#include "support/FakeOutput.h"

namespace kestrin::ui::stage {
namespace {

using core::saber::Event;
using core::saber::SaberSounds;
using core::saber::State;
using core::sound::SlotKind;
using Samples = std::vector<std::int16_t>;
using std::chrono::milliseconds;

Samples Same(std::size_t count, std::int16_t value) { return Samples(count, value); }

class StageSoundTest : public testing::Test {
 protected:
  /// 20 ms of power on, 10 ms of hum, 5 ms of power off.
  static SaberSounds Sounds() {
    SaberSounds sounds;
    sounds.Add(SlotKind::PwrOn, Same(960, 500));
    sounds.Add(SlotKind::Idle, Same(480, 100));
    sounds.Add(SlotKind::PwrOff, Same(240, 300));
    return sounds;
  }
  StageSound& Make(bool withOutput = true) {
    sound.emplace(withOutput ? &output : nullptr, clock);
    sound->Use(Sounds(), 1);
    return *sound;
  }
  /// Lets so much time pass, in looks of 10 ms.
  void Pass(int time) {
    for (int passed = 0; passed < time; passed += 10) {
      clock.Advance(milliseconds(10));
      last = sound->Look();
    }
  }

  support::FakeClock clock;
  support::FakeOutput output;
  std::optional<StageSound> sound;
  core::saber::LiveSaber::View last;
};

TEST_F(StageSoundTest, IsHeardFromTheMomentItIsSwitchedOn) {
  Make();
  EXPECT_EQ(output.starts, 0);
  sound->Take(Event::On);
  EXPECT_EQ(output.starts, 1);
  EXPECT_EQ(output.Pull(960), Same(960, 500));
  EXPECT_EQ(output.Pull(700), Same(700, 100));
  EXPECT_EQ(sound->Look().state, State::On);
  Pass(200);
  EXPECT_EQ(last.now, 1660) << "the loudspeaker alone is its clock";
}

TEST_F(StageSoundTest, EndsItsStreamWithTheBladeInAndStartsAnother) {
  Make();
  sound->Take(Event::On);
  output.Pull(1000);
  sound->Take(Event::Off);
  output.Pull(480);
  EXPECT_EQ(sound->Look().state, State::Off);
  EXPECT_TRUE(output.Pull(480).empty());
  static_cast<void>(sound->Look());
  sound->Take(Event::On);
  EXPECT_EQ(output.starts, 2);
  EXPECT_EQ(output.Pull(10), Same(10, 500));
}

TEST_F(StageSoundTest, StartsAnewWhatIsSwitchedOnBeforeTheLastStreamIsOut) {
  Make();
  sound->Take(Event::On);
  output.Pull(1000);
  sound->Take(Event::Off);
  output.Pull(480);
  // The stream knows that it is over, and nobody has looked.
  EXPECT_TRUE(output.Pull(480).empty());
  sound->Take(Event::On);
  EXPECT_EQ(output.starts, 1);
  static_cast<void>(sound->Look());
  EXPECT_EQ(output.starts, 2);
  EXPECT_EQ(output.Pull(10), Same(10, 500));
  EXPECT_FALSE(sound->TakeProblem());
}

TEST_F(StageSoundTest, GoesOnByTheClockWithoutAnOutput) {
  Make(false);
  sound->Take(Event::On);
  Pass(10);
  EXPECT_EQ(last.state, State::Ignition);
  EXPECT_EQ(last.now, 480);
  Pass(10);
  EXPECT_EQ(last.state, State::On);
  Pass(1000);
  EXPECT_EQ(last.now, 960 + 48000);
  EXPECT_FALSE(sound->TakeProblem()) << "there never was any sound";
}

TEST_F(StageSoundTest, GoesOnInSilenceWhenTheOutputFailsAndTellsItOnce) {
  Make();
  sound->Take(Event::On);
  output.Pull(480);
  output.Fail("There is no sound service.");
  Pass(10);
  EXPECT_EQ(sound->TakeProblem(), "There is no sound service.");
  Pass(100);
  EXPECT_EQ(last.state, State::On);
  EXPECT_GE(last.now, 480 + 4800);
  EXPECT_FALSE(sound->TakeProblem());
  // Another try with every switching on, which is not told again.
  sound->Take(Event::Off);
  Pass(20);
  sound->Take(Event::On);
  EXPECT_EQ(output.starts, 2);
  Pass(10);
  EXPECT_FALSE(sound->TakeProblem());
  sound->Take(Event::Off);
  Pass(20);
  output.Mend();
  sound->Take(Event::On);
  EXPECT_EQ(output.Pull(10), Same(10, 500));
}

TEST_F(StageSoundTest, DoesNotWaitForAnOutputThatTakesNothing) {
  Make();
  sound->Take(Event::On);
  Pass(690);
  EXPECT_EQ(last.now, 0);
  EXPECT_FALSE(sound->TakeProblem());
  Pass(10);
  EXPECT_EQ(sound->TakeProblem(), "The computer's sound does not answer.");
  EXPECT_EQ(output.stops, 1);
  Pass(100);
  EXPECT_EQ(last.state, State::On);
}

TEST_F(StageSoundTest, IsSilentAtOnceWhenStopped) {
  Make();
  sound->Take(Event::On);
  output.Pull(1000);
  sound->Stop();
  EXPECT_EQ(output.stops, 1);
  EXPECT_FALSE(output.IsPlaying());
  EXPECT_EQ(sound->GetState(), State::Off);
  EXPECT_EQ(sound->Look().now, 0);
}

TEST_F(StageSoundTest, IsSilentAtOnceWhenItGoes) {
  Make();
  sound->Take(Event::On);
  output.Pull(1000);
  sound.reset();
  EXPECT_FALSE(output.IsPlaying());
}

TEST_F(StageSoundTest, AfterAWindowThatWasBusyForLongItCatchesUpWithNoMoreThanASecond) {
  Make(false);
  sound->Take(Event::On);
  clock.Advance(std::chrono::minutes(1));
  EXPECT_EQ(sound->Look().now, 48000);
  Pass(10);
  EXPECT_EQ(last.now, 48480);
}

TEST_F(StageSoundTest, HearsAnotherVolumeAtOnce) {
  Make();
  sound->Take(Event::On);
  output.Pull(1000);
  sound->Exchange({SlotKind::Idle, 1}, std::make_shared<const Samples>(Same(480, 33)));
  // It gets there within 5 ms, so that it does not click.
  output.Pull(240);
  EXPECT_EQ(output.Pull(100), Same(100, 33));
  sound->Stop();
  sound->Take(Event::On);
  output.Pull(960);
  EXPECT_EQ(output.Pull(10), Same(10, 33)) << "also after a stop";
}

}  // namespace
}  // namespace kestrin::ui::stage
