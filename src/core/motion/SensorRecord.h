// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <deque>

#include "motion/MovementFinder.h"
#include "motion/SensorReading.h"
#include "motion/SensorRest.h"
#include "motion/SwingTapTrial.h"

namespace kestrin::core::motion {

/// What a board's sensor has told, as people look at it: the last ten seconds, the swings and taps that were found in
/// them, and how far the trial of five each has come.
class SensorRecord {
 public:
  static constexpr std::chrono::milliseconds kKept{10000};
  /// After a longer pause the saber may be held otherwise, and nothing is known of what happened meanwhile.
  static constexpr std::chrono::milliseconds kLongestPause{500};

  struct Sample {
    SensorReading reading;
    SensorChange change;
    /// Whether the one before it is too long ago for anything to be known of the time between them.
    bool isAfterPause = false;
  };
  /// A movement that counted: the `number`-th of its kind, from 1.
  struct Mark {
    Movement movement;
    std::size_t number = 0;
  };

  /// Takes the next reading; readings come in the order of their times.
  void Add(const SensorReading& reading);
  /// The trial begins once more. What was told stays; its marks go.
  void RestartTrial();
  /// Whether the saber was held still since the last pause: before, no swings and taps are looked for.
  [[nodiscard]] bool KnowsRest() const { return m_rest.IsKnown(); }

  /// In order, none older than kKept before the last one.
  [[nodiscard]] const std::deque<Sample>& Samples() const { return m_samples; }
  [[nodiscard]] const std::deque<Mark>& Marks() const { return m_marks; }
  [[nodiscard]] const SwingTapTrial& Trial() const { return m_trial; }

 private:
  std::deque<Sample> m_samples;
  std::deque<Mark> m_marks;
  SensorRest m_rest;
  MovementFinder m_finder;
  SwingTapTrial m_trial;
};

}  // namespace kestrin::core::motion
