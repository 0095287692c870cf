// SPDX-License-Identifier: MIT
#include "core/sound/import/FitAdvice.h"

#include <gmock/gmock.h>

#include <numeric>

namespace kestrin::core::sound {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t kSecond = 48000;

std::vector<ComingSound> Swings(int count, std::int64_t samplesEach) {
  std::vector<ComingSound> sounds;
  for (int number = 1; number <= count; ++number)
    sounds.push_back({"swing" + std::to_string(number) + ".wav", SlotKind::Motion, samplesEach});
  return sounds;
}

TEST(FitAdviceTest, NothingIsSaidOfWhatFits) {
  const FitAdvice advice = FitAdvice::For(Swings(3, kSecond), kSecond, 4 * kSecond);
  EXPECT_EQ(advice.excess, 0);
  EXPECT_THAT(advice.leaveOut, IsEmpty());
  EXPECT_EQ(advice.text, "");
  EXPECT_EQ(FitAdvice::For({}, 0, 0).text, "");
}

TEST(FitAdviceTest, OneSampleTooManyIsTooMany) {
  const FitAdvice advice = FitAdvice::For(Swings(3, kSecond), 1, 3 * kSecond);
  EXPECT_EQ(advice.excess, 1);
  EXPECT_THAT(advice.leaveOut, ElementsAre(2));
  EXPECT_EQ(advice.text, "0.1 s too much: leave out swing3.");
}

TEST(FitAdviceTest, TheLastOnesOfAListGoAndAreNamedInOne) {
  // Nine of 1.5 s are 13.5 s, 3.5 s more than there is: three must go.
  const FitAdvice advice = FitAdvice::For(Swings(9, 72000), 0, 10 * kSecond);
  EXPECT_EQ(advice.excess, 168000);
  EXPECT_THAT(advice.leaveOut, ElementsAre(6, 7, 8));
  EXPECT_EQ(advice.text, "3.5 s too much: leave out swing7 to 9.");
}

TEST(FitAdviceTest, ALongSoundMayBecomeShorterInstead) {
  std::vector<ComingSound> sounds = Swings(9, kSecond);
  sounds.push_back({"hello.wav", SlotKind::Boot, 6 * kSecond});
  sounds.push_back({"on.wav", SlotKind::PwrOn, 5 * kSecond});
  // 20 s for 15 s: five swings, or five of the boot's six seconds, of which one stays.
  EXPECT_EQ(FitAdvice::For(sounds, 0, 15 * kSecond).text,
            "5.0 s too much: leave out swing5 to 9, or shorten the boot sound by 5.0 s.");
  // 5.1 s more would leave less than a second.
  EXPECT_EQ(FitAdvice::For(sounds, 4800, 15 * kSecond).text, "5.1 s too much: leave out swing4 to 9.");
}

TEST(FitAdviceTest, TheListThatTakesMostGivesFirst) {
  std::vector<ComingSound> sounds = Swings(3, kSecond);
  for (const char* const name : {"clash a.mp3", "clash b.mp3"}) sounds.push_back({name, SlotKind::Impact, 96000});
  // 7 s for 4 s. Impact takes 4 s and gives 2; then Motion takes 3 s against 2 and gives one.
  const FitAdvice advice = FitAdvice::For(sounds, 0, 4 * kSecond);
  EXPECT_THAT(advice.leaveOut, ElementsAre(2, 4));
  EXPECT_EQ(advice.text, "3.0 s too much: leave out swing3 and clash b.");
}

TEST(FitAdviceTest, NoneIsLeftOutThatNeedNotBe) {
  std::vector<ComingSound> sounds{{"a.wav", SlotKind::Motion, 5 * kSecond},
                                  {"b.wav", SlotKind::Motion, 5 * kSecond},
                                  {"c.wav", SlotKind::Motion, kSecond}};
  // From the end it would be c and b; without b alone there is room for c.
  const FitAdvice advice = FitAdvice::For(sounds, 0, 7 * kSecond);
  EXPECT_THAT(advice.leaveOut, ElementsAre(1));
  EXPECT_EQ(advice.text, "4.0 s too much: leave out b.");
}

TEST(FitAdviceTest, WhereNothingCanBeLeftOutASoundBecomesShorter) {
  const std::vector<ComingSound> sounds{{"hum.flac", SlotKind::Idle, 8 * kSecond},
                                        {"s.wav", SlotKind::Motion, kSecond}};
  const FitAdvice advice = FitAdvice::For(sounds, 0, 5 * kSecond);
  EXPECT_EQ(advice.text, "4.0 s too much: shorten the idle sound by 4.0 s.");
  EXPECT_THAT(advice.leaveOut, IsEmpty());
}

TEST(FitAdviceTest, BothMayBeNeeded) {
  std::vector<ComingSound> sounds = Swings(2, kSecond);
  sounds.push_back({"off.wav", SlotKind::PwrOff, 4 * kSecond});
  // 6 s for 2.5 s: a swing, and 2.5 s of the other; 3.5 s of it alone would leave half a second.
  const FitAdvice advice = FitAdvice::For(sounds, 0, 120000);
  EXPECT_EQ(advice.text, "3.5 s too much: leave out swing2 and shorten the power off sound by 2.5 s.");
  EXPECT_THAT(advice.leaveOut, ElementsAre(1));
}

TEST(FitAdviceTest, WhereNoneOfThatHelpsItIsSaid) {
  EXPECT_EQ(FitAdvice::For({{"on.wav", SlotKind::PwrOn, 2 * kSecond}}, 0, kSecond / 2).text,
            "1.5 s too much: choose shorter sounds.");
  EXPECT_EQ(FitAdvice::For({{"on.wav", SlotKind::PwrOn, 2 * kSecond}}, 9 * kSecond, 8 * kSecond).text,
            "3.0 s too much: leave out more sounds, or take some out of the set.");
}

TEST(FitAdviceTest, NumbersAreJoinedOnlyWhereTheyFollow) {
  const std::vector<ComingSound> sounds{{"x.wav", SlotKind::Motion, 1},        {"swing 07.wav", SlotKind::Motion, 1},
                                        {"swing 08.wav", SlotKind::Motion, 1}, {"swing 10.wav", SlotKind::Motion, 1},
                                        {"hit11.wav", SlotKind::Motion, 1},    {"a\nb.wav", SlotKind::Motion, 1}};
  EXPECT_EQ(FitAdvice::For(sounds, 0, 1).text, "0.1 s too much: leave out swing 07 to 08, swing 10, hit11 and a?b.");
}

TEST(FitAdviceTest, TheRestAlwaysFitsAndNoOneOfThemCouldStay) {
  for (std::int64_t capacity = 10; capacity <= 120; ++capacity) {
    std::vector<ComingSound> sounds;
    for (int i = 0; i < 12; ++i)
      sounds.push_back({"s" + std::to_string(i), i % 3 == 0 ? SlotKind::Impact : SlotKind::Motion, 3 + (7 * i) % 11});
    const FitAdvice advice = FitAdvice::For(sounds, 0, capacity);
    std::int64_t rest = 0;
    for (std::size_t i = 0; i < sounds.size(); ++i)
      if (std::find(advice.leaveOut.begin(), advice.leaveOut.end(), i) == advice.leaveOut.end())
        rest += sounds[i].samples;
    if (rest > capacity) continue;
    for (const std::size_t out : advice.leaveOut) EXPECT_GT(rest + sounds[out].samples, capacity) << capacity;
  }
}

}  // namespace
}  // namespace kestrin::core::sound
