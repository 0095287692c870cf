// SPDX-License-Identifier: MIT
#include "platform/speaker/PulseOutput.h"

#include <gtest/gtest.h>

#include "core/saber/LiveSaber.h"
#include "platform/speaker/SystemSoundOutput.h"
#include "rig/sound/StreamFixture.h"
#include "support/PrivateSoundService.h"

namespace kestrin::rig {
namespace {

using core::saber::Event;
using core::saber::LiveSaber;
using core::sound::SlotKind;
using platform::speaker::kLiveBuffer;
using platform::speaker::PulseOutput;
using support::PrivateSoundService;

/// A computer that is busy with other things for longer than the service's buffer lasts has gaps, whoever plays.
constexpr int kAttempts = 20;

TEST(PulseOutput, PlaysEverySampleToTheLastAndThenSaysSo) {
  const PrivateSoundService service;
  // The first is shorter than any buffer; of the others, some are a whole number of them and some are not.
  for (const std::size_t count : {49U, 960U, 2400U, 5001U, 12000U}) {
    const StreamSamples samples = LoudSamples(count);
    StreamSamples heard;
    for (int attempt = 0; attempt < kAttempts && heard != samples; ++attempt) {
      PrivateSoundService::Recorder recorder;
      PulseOutput output(kLiveBuffer);
      output.Start(SourceOf(samples));
      heard = recorder.Hear(count);
      EXPECT_TRUE(IsOver(output));
      EXPECT_EQ(output.Look().ended.Text(), "");
    }
    EXPECT_EQ(heard, samples) << count;
  }
}

// The last sample was handed over to the service long before it was heard: an end that is told then comes too early.
TEST(PulseOutput, TheEndIsToldWhenTheLastSampleIsOut) {
  const PrivateSoundService service;
  const StreamSamples samples = LoudSamples(9600);
  StreamSamples heard;
  for (int attempt = 0; attempt < kAttempts && heard != samples; ++attempt) {
    PrivateSoundService::Recorder recorder;
    {
      PulseOutput output(kLiveBuffer);
      output.Start(SourceOf(samples));
      EXPECT_TRUE(IsOver(output));
      // What is not out yet is cut off here.
    }
    heard = recorder.Hear(samples.size(), 48000);
  }
  EXPECT_EQ(heard, samples);
}

TEST(PulseOutput, ASourceWithoutSamplesIsOver) {
  const PrivateSoundService service;
  PulseOutput output(kLiveBuffer);
  output.Start(SourceOf({}));
  EXPECT_TRUE(IsOver(output));
  EXPECT_EQ(output.Look().ended.Text(), "");
}

TEST(PulseOutput, StopsAtOnceAndAsksForNothingMore) {
  const PrivateSoundService service;
  const Endless endless;
  PulseOutput output(kLiveBuffer);
  output.Start(endless.Source());
  EXPECT_TRUE(output.Look().isPlaying);
  EXPECT_TRUE(endless.Plays());
  PrivateSoundService::Recorder recorder;
  output.Stop();
  const std::int64_t given = endless.Given();
  EXPECT_FALSE(output.Look().isPlaying);
  EXPECT_EQ(output.Look().ended.Text(), "");
  // Within half a second there is silence, and stays: of what is recorded now, nothing is loud.
  EXPECT_TRUE(Until([&] { return recorder.Hear(1, 4800).empty(); }));
  EXPECT_EQ(endless.Given(), given);
}

TEST(PulseOutput, ANewStreamTakesThePlaceOfTheOneBefore) {
  const PrivateSoundService service;
  const Endless first;
  const Endless second;
  PulseOutput output(kLiveBuffer);
  output.Start(first.Source());
  EXPECT_TRUE(first.Plays());
  output.Start(second.Source());
  const std::int64_t given = first.Given();
  EXPECT_TRUE(second.Plays());
  EXPECT_EQ(first.Given(), given);
  // Quicker than any connection.
  for (int i = 0; i < 50; ++i) output.Start(second.Source());
  EXPECT_TRUE(second.Plays());
  output.Start(SourceOf(LoudSamples(100)));
  EXPECT_TRUE(IsOver(output));
  EXPECT_EQ(output.Look().ended.Text(), "");
}

TEST(PulseOutput, OutputsSoundSideBySide) {
  const PrivateSoundService service;
  const Endless endless;
  PulseOutput one(kLiveBuffer);
  one.Start(endless.Source());
  EXPECT_TRUE(endless.Plays());
  PulseOutput other(kLiveBuffer);
  other.Start(SourceOf(LoudSamples(100)));
  EXPECT_TRUE(IsOver(other));
  EXPECT_EQ(other.Look().ended.Text(), "");
  EXPECT_TRUE(endless.Plays());
  EXPECT_TRUE(one.Look().isPlaying);
}

TEST(PulseOutput, FollowsTheDefaultSink) {
  const PrivateSoundService service;
  service.AddSink("other");
  service.SetDefaultSink("null");
  const Endless endless;
  PulseOutput output(kLiveBuffer);
  output.Start(endless.Source());
  EXPECT_TRUE(endless.Plays());
  PrivateSoundService::Recorder recorder("other");
  EXPECT_TRUE(recorder.Hear(1, 4800).empty());
  service.SetDefaultSink("other");
  EXPECT_FALSE(recorder.Hear(1).empty());
  EXPECT_TRUE(endless.Plays());
  EXPECT_TRUE(output.Look().isPlaying);
}

TEST(PulseOutput, HasNothingToSayBeforeAnything) {
  PulseOutput output(kLiveBuffer);
  output.Stop();
  EXPECT_FALSE(output.Look().isPlaying);
  EXPECT_EQ(output.Look().ended.Text(), "");
}

// What a saber gives is what is heard: the hum without a gap, then a swing on it.
TEST(PulseOutput, ASaberIsHeardAsItIsMixed) {
  constexpr std::int64_t kHum = 441;
  constexpr std::size_t kSwing = 2000;
  constexpr std::size_t kHeard = 10000;
  const PrivateSoundService service;
  bool isExact = false;
  for (int attempt = 0; attempt < kAttempts && !isExact; ++attempt) {
    core::saber::SaberSounds sounds;
    StreamSamples hum(kHum);
    for (std::size_t i = 0; i < hum.size(); ++i) hum[i] = static_cast<std::int16_t>(100 + i);
    sounds.Add(SlotKind::Idle, hum);
    sounds.Add(SlotKind::Motion, StreamSamples(kSwing, 5000));
    LiveSaber saber(std::move(sounds), 1);
    PrivateSoundService::Recorder recorder;
    PulseOutput output(kLiveBuffer);
    // There is no power-on sound: the hum begins with the first sample.
    saber.Take(Event::On);
    output.Start([&saber](std::span<std::int16_t> out) { return saber.Fill(out); });
    EXPECT_TRUE(Until([&saber] { return saber.Now() > 4800; }));
    saber.Take(Event::Swing);
    const StreamSamples heard = recorder.Hear(kHeard);
    output.Stop();
    std::int64_t swing = -1;
    for (const LiveSaber::News& news : saber.Look().news)
      if (news.what == LiveSaber::News::What::Began && news.place.kind == SlotKind::Motion) swing = news.sample;
    ASSERT_GT(swing, 0);
    isExact = heard.size() == kHeard;
    for (std::size_t i = 0; i < heard.size() && isExact; ++i) {
      const auto at = static_cast<std::int64_t>(i);
      const bool isSwung = at >= swing && at < swing + static_cast<std::int64_t>(kSwing);
      isExact = heard[i] == 100 + at % kHum + (isSwung ? 5000 : 0);
    }
  }
  EXPECT_TRUE(isExact);
}

}  // namespace
}  // namespace kestrin::rig
