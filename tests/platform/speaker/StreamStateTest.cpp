// SPDX-License-Identifier: MIT
#include "platform/speaker/StreamState.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <memory>
#include <thread>

namespace kestrin::platform::speaker {
namespace {

core::base::Failure Because(const char* text) { return {core::base::FailureKind::Failed, text}; }

TEST(StreamState, PlaysUntilItIsOverAndKeepsTheFirstWord) {
  StreamState state([](std::span<std::int16_t> out) { return out.size(); });
  EXPECT_TRUE(state.Look().isPlaying);
  EXPECT_FALSE(state.WaitUntilOver(std::chrono::milliseconds(0)));
  state.End(Because("first"));
  state.End(Because("second"));
  state.End({});
  EXPECT_FALSE(state.Look().isPlaying);
  EXPECT_EQ(state.Look().ended.Text(), "first");
  EXPECT_TRUE(state.WaitUntilOver(std::chrono::milliseconds(0)));
}

TEST(StreamState, AfterAStopThereIsNothingToSay) {
  StreamState state([](std::span<std::int16_t> out) { return out.size(); });
  EXPECT_FALSE(state.IsStopped());
  state.Stop();
  state.End(Because("too late"));
  EXPECT_TRUE(state.IsStopped());
  EXPECT_FALSE(state.Look().isPlaying);
  EXPECT_EQ(state.Look().ended.Text(), "");
  EXPECT_TRUE(state.WaitUntilOver(std::chrono::milliseconds(0)));
  std::array<std::int16_t, 4> samples{};
  EXPECT_EQ(state.Fill(samples), 0U);
}

TEST(StreamState, WhatTheSourceHoldsGoesWithTheEnd) {
  for (const bool isStopped : {false, true}) {
    auto held = std::make_shared<int>(0);
    StreamState state([held](std::span<std::int16_t>) { return std::size_t{0}; });
    EXPECT_EQ(held.use_count(), 2);
    if (isStopped)
      state.Stop();
    else
      state.End({});
    EXPECT_EQ(held.use_count(), 1);
  }
}

TEST(StreamState, TheSourceIsNotCalledAnyMoreOnceItWasStopped) {
  for (int i = 0; i < 100; ++i) {
    // The source lives shorter than the stream: the sanitizers see who calls it too late.
    auto calls = std::make_unique<std::int64_t>(0);
    std::atomic<bool> isCalled = false;
    std::atomic<bool> isEnough = false;
    StreamState state([&, counted = calls.get()](std::span<std::int16_t> out) {
      ++*counted;
      isCalled = true;
      return out.size();
    });
    std::thread player([&] {
      std::array<std::int16_t, 4> samples{};
      while (!isEnough) static_cast<void>(state.Fill(samples));
    });
    while (!isCalled) std::this_thread::yield();
    state.Stop();
    const std::int64_t before = *calls;
    std::this_thread::yield();
    EXPECT_EQ(*calls, before);
    calls.reset();
    isEnough = true;
    player.join();
  }
}

TEST(StreamState, TellsWhenItsThreadHasGone) {
  StreamState state([](std::span<std::int16_t> out) { return out.size(); });
  EXPECT_FALSE(state.WaitUntilGone(std::chrono::milliseconds(0)));
  std::thread player([&state] { state.TellGone(); });
  EXPECT_TRUE(state.WaitUntilGone(std::chrono::minutes(10)));
  player.join();
}

}  // namespace
}  // namespace kestrin::platform::speaker
