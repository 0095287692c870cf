// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <thread>
#include <vector>

#include "core/sound/SoundOutput.h"
#include "support/TestFiles.h"

namespace kestrin::rig {

using StreamSamples = std::vector<std::int16_t>;

/// Looks until `condition` holds; false when that takes too long.
inline bool Until(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

/// Whether it is over within a while.
inline bool IsOver(core::sound::SoundOutput& output) {
  return Until([&output] { return !output.Look().isPlaying; });
}

/// Samples of which neither the first nor the last is silent.
inline StreamSamples LoudSamples(std::size_t count) {
  StreamSamples samples = support::SomeSamples(count);
  samples.front() = 1234;
  samples.back() = -4321;
  return samples;
}

/// Gives these samples and ends.
inline core::sound::SoundOutput::Source SourceOf(StreamSamples samples) {
  return [samples = std::move(samples), at = std::size_t{0}](std::span<std::int16_t> out) mutable {
    const std::size_t count = std::min(out.size(), samples.size() - at);
    std::copy_n(samples.begin() + static_cast<std::ptrdiff_t>(at), count, out.begin());
    at += count;
    return count;
  };
}

/// A tone without end, and how much of it was asked for.
class Endless {
 public:
  [[nodiscard]] core::sound::SoundOutput::Source Source() const {
    return [given = m_given](std::span<std::int16_t> out) {
      for (std::int16_t& sample : out) sample = static_cast<std::int16_t>(1000 + (*given)++ % 1000);
      return out.size();
    };
  }
  [[nodiscard]] std::int64_t Given() const { return *m_given; }
  /// Returns once so many more were asked for.
  [[nodiscard]] bool Plays(std::int64_t more = 4800) const {
    const std::int64_t before = Given();
    return Until([&] { return Given() >= before + more; });
  }

 private:
  std::shared_ptr<std::atomic<std::int64_t>> m_given = std::make_shared<std::atomic<std::int64_t>>(0);
};

}  // namespace kestrin::rig
