// SPDX-License-Identifier: MIT
#include "core/saber/LiveSaber.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <thread>

namespace kestrin::core::saber {
namespace {

using sound::SlotKind;
using sound::SoundPlace;
using Samples = std::vector<std::int16_t>;
using News = LiveSaber::News;

constexpr std::int64_t kPwrOnLength = 300;
constexpr std::int64_t kIdleLength = 1000;
constexpr std::int64_t kMotion = 500;
constexpr std::int64_t kImpact = 800;
constexpr std::int64_t kPwrOffLength = 200;

Samples Same(std::int64_t count, int value) {
  return Samples(static_cast<std::size_t>(count), static_cast<std::int16_t>(value));
}

SaberSounds Sounds() {
  SaberSounds sounds;
  sounds.Add(SlotKind::PwrOn, Same(kPwrOnLength, 2000));
  sounds.Add(SlotKind::PwrOff, Same(kPwrOffLength, 3000));
  sounds.Add(SlotKind::Idle, Same(kIdleLength, 100));
  sounds.Add(SlotKind::Motion, Same(kMotion, 1000));
  sounds.Add(SlotKind::Impact, Same(kImpact, 5000));
  sounds.Add(SlotKind::Lockup, Same(50, 8000));
  return sounds;
}

Samples Fill(LiveSaber& saber, std::int64_t count) {
  Samples samples = Same(count, 1);
  EXPECT_EQ(saber.Fill(samples), samples.size());
  return samples;
}

TEST(LiveSaber, IsSilentWithTheBladeInAndGoesOn) {
  LiveSaber saber(Sounds(), 1);
  EXPECT_EQ(Fill(saber, 700), Same(700, 0));
  const LiveSaber::View view = saber.Look();
  EXPECT_EQ(view.state, State::Off);
  EXPECT_EQ(view.now, 700);
  EXPECT_TRUE(view.sounding.empty());
  EXPECT_TRUE(view.news.empty());
}

TEST(LiveSaber, WhatHappensIsHeardFromTheNextSample) {
  LiveSaber saber(Sounds(), 1);
  static_cast<void>(Fill(saber, 10));
  saber.Take(Event::On);
  EXPECT_EQ(saber.GetState(), State::Ignition);
  EXPECT_EQ(Fill(saber, kPwrOnLength), Same(kPwrOnLength, 2000));
  EXPECT_EQ(saber.GetState(), State::On);
  saber.Take(Event::Swing);
  EXPECT_EQ(Fill(saber, kMotion), Same(kMotion, 1100));
  EXPECT_EQ(Fill(saber, 5), Same(5, 100));
  EXPECT_EQ(saber.Now(), 10 + kPwrOnLength + kMotion + 5);
}

TEST(LiveSaber, TellsOnceWhatBeganAndWhatIsOver) {
  LiveSaber saber(Sounds(), 1);
  saber.Take(Event::On);
  static_cast<void>(Fill(saber, 400));
  saber.Take(Event::Swing);
  static_cast<void>(Fill(saber, 100));
  saber.Take(Event::Hit);
  static_cast<void>(Fill(saber, 1));
  const SoundPlace on{SlotKind::PwrOn, 1};
  const SoundPlace hum{SlotKind::Idle, 1};
  const SoundPlace swing{SlotKind::Motion, 1};
  const SoundPlace hit{SlotKind::Impact, 1};
  const SoundPlace off{SlotKind::PwrOff, 1};
  LiveSaber::View view = saber.Look();
  EXPECT_EQ(view.news, (std::vector<News>{{News::What::Began, 0, on},
                                          {News::What::Ended, kPwrOnLength, on},
                                          {News::What::Began, kPwrOnLength, hum},
                                          {News::What::Began, 400, swing},
                                          {News::What::Interrupted, 500, swing},
                                          {News::What::Began, 500, hit}}));
  EXPECT_EQ(view.sounding, (std::vector<SoundPlace>{hum, hit}));
  EXPECT_EQ(view.now, 501);

  static_cast<void>(Fill(saber, kImpact));
  saber.Take(Event::Off);
  static_cast<void>(Fill(saber, 300));
  view = saber.Look();
  EXPECT_EQ(view.news, (std::vector<News>{{News::What::Ended, 500 + kImpact, hit},
                                          {News::What::Interrupted, 501 + kImpact, hum},
                                          {News::What::Began, 501 + kImpact, off},
                                          {News::What::Ended, 501 + kImpact + kPwrOffLength, off}}));
  EXPECT_EQ(view.state, State::Off);
  EXPECT_TRUE(view.sounding.empty());
  EXPECT_TRUE(saber.Look().news.empty());
}

TEST(LiveSaber, ALockUpThatIsLetGoIsInterrupted) {
  LiveSaber saber(Sounds(), 1);
  saber.Take(Event::On);
  static_cast<void>(Fill(saber, kPwrOnLength));
  saber.Take(Event::LockupBegin);
  static_cast<void>(Fill(saber, 130));
  static_cast<void>(saber.Look());
  saber.Take(Event::LockupEnd);
  EXPECT_EQ(saber.Look().news,
            (std::vector<News>{{News::What::Interrupted, kPwrOnLength + 130, SoundPlace{SlotKind::Lockup, 1}}}));
}

TEST(LiveSaber, KeepsTheNewestNewsWhenNobodyLooks) {
  LiveSaber saber(Sounds(), 1);
  saber.Take(Event::On);
  static_cast<void>(Fill(saber, kPwrOnLength));
  // Each of them interrupts the one before.
  for (std::size_t i = 0; i < LiveSaber::kMostNews; ++i) {
    saber.Take(Event::Hit);
    static_cast<void>(Fill(saber, 1));
  }
  const std::vector<News> news = saber.Look().news;
  ASSERT_EQ(news.size(), LiveSaber::kMostNews);
  EXPECT_EQ(news.back(), (News{News::What::Began, kPwrOnLength + static_cast<std::int64_t>(LiveSaber::kMostNews) - 1,
                               SoundPlace{SlotKind::Impact, 1}}));
}

TEST(LiveSaber, ASoundGoesOnWithOtherSamplesWhereItStands) {
  SaberSounds sounds = Sounds();
  Samples ramp(1000);
  for (std::size_t i = 0; i < ramp.size(); ++i) ramp[i] = static_cast<std::int16_t>(2 * i);
  sounds.Add(SlotKind::Boot, ramp);
  LiveSaber saber(std::move(sounds), 1);
  saber.Take(Event::Boot);
  static_cast<void>(Fill(saber, 400));
  Samples loud(1000);
  for (std::size_t i = 0; i < loud.size(); ++i) loud[i] = static_cast<std::int16_t>(10 * i);
  saber.Exchange({SlotKind::Boot, 1}, std::make_shared<const Samples>(loud));
  const Samples after = Fill(saber, 700);
  for (std::size_t i = 0; i < after.size(); ++i) {
    // The first goes over into the second within 5 ms, which are 240 samples.
    const auto at = static_cast<double>(400 + i);
    const double ofFirst = i < 240 ? (240 - static_cast<double>(i)) / 240 : 0;
    const double expected = at < 1000 ? 2 * at * ofFirst + 10 * at * (1 - ofFirst) : 0;
    EXPECT_NEAR(after[i], expected, 0.5 + 1e-6) << i;
  }
  // The next time it is heard like that from its beginning.
  saber.Take(Event::Boot);
  EXPECT_EQ(Fill(saber, 1000), loud);
}

TEST(LiveSaber, AHumGoesOnWithALoopOfAnotherLength) {
  LiveSaber saber(Sounds(), 1);
  saber.Take(Event::On);
  static_cast<void>(Fill(saber, kPwrOnLength + 900));
  saber.Exchange({SlotKind::Idle, 1}, std::make_shared<const Samples>(Same(10, 70)));
  static_cast<void>(Fill(saber, 240));
  EXPECT_EQ(Fill(saber, 500), Same(500, 70));
  EXPECT_EQ(saber.Length({SlotKind::Idle, 1}), 10);
}

TEST(LiveSaber, ASoundThatHasBecomeShorterThanItWasHeardEnds) {
  LiveSaber saber(Sounds(), 1);
  saber.Take(Event::On);
  static_cast<void>(Fill(saber, 100));
  saber.Exchange({SlotKind::PwrOn, 1}, std::make_shared<const Samples>(Same(50, 2000)));
  EXPECT_EQ(Fill(saber, 1).size(), 1U);
  EXPECT_EQ(saber.GetState(), State::On);
}

TEST(LiveSaber, ExchangesNothingThatIsNotThere) {
  LiveSaber saber(Sounds(), 1);
  saber.Exchange({SlotKind::Boot, 1}, std::make_shared<const Samples>(Same(50, 2000)));
  EXPECT_EQ(saber.Length({SlotKind::Boot, 1}), 0);
  saber.Take(Event::Boot);
  EXPECT_EQ(Fill(saber, 10), Same(10, 0));
}

TEST(LiveSaber, CountsWhatIsCutOff) {
  SaberSounds sounds;
  sounds.Add(SlotKind::Idle, Same(10, 30000));
  sounds.Add(SlotKind::Impact, Same(7, 30000));
  LiveSaber saber(std::move(sounds), 1);
  saber.Take(Event::On);
  saber.Take(Event::Hit);
  static_cast<void>(Fill(saber, 20));
  EXPECT_EQ(saber.Clipped(), 7);
  EXPECT_EQ(saber.Look().clipped, 7);
}

// The sanitizers look whether the threads get into each other's way.
TEST(LiveSaber, ThreadsMakeThingsHappenWhileOthersListen) {
  LiveSaber saber(Sounds(), 1);
  std::atomic<bool> isOver = false;
  std::thread ear([&] {
    Samples samples(240);
    while (!isOver) static_cast<void>(saber.Fill(samples));
  });
  std::int64_t began = 0;
  std::int64_t over = 0;
  const auto count = [&](const std::vector<News>& news) {
    for (const News& one : news) ++(one.what == News::What::Began ? began : over);
  };
  for (int i = 0; i < 300; ++i) {
    saber.Take(Event::On);
    saber.Take(i % 2 == 0 ? Event::Swing : Event::Hit);
    saber.Exchange({SlotKind::Idle, 1}, std::make_shared<const Samples>(Same(kIdleLength, i)));
    if (i % 7 == 0) saber.Take(Event::Off);
    count(saber.Look().news);
    std::this_thread::yield();
  }
  isOver = true;
  ear.join();
  saber.Take(Event::Off);
  static_cast<void>(Fill(saber, kPwrOnLength + kPwrOffLength));
  saber.Take(Event::Off);
  static_cast<void>(Fill(saber, kPwrOffLength));
  count(saber.Look().news);
  EXPECT_GT(began, 0);
  EXPECT_EQ(began, over) << "everything that began is over, and was told once";
}

}  // namespace
}  // namespace kestrin::core::saber
