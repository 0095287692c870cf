// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <optional>

#include "base/Clock.h"
#include "base/Result.h"
#include "device/TLS.h"
#include "motion/SensorReading.h"

namespace kestrin::core::motion {

/// Asks one board what its sensor feels, at most 25 times a second. Not all boards know the question.
class SensorWatch {
 public:
  using Duration = base::Clock::Duration;

  /// From one question to the next, at least.
  static constexpr std::chrono::milliseconds kInterval{40};
  /// What is said of a board that has not answered the first question.
  static constexpr const char* kUnknown =
      "This board does not tell what its sensor feels. All else works with it as before.";
  /// What is said of one that answers no longer.
  static constexpr const char* kFallenSilent =
      "The board no longer tells what its sensor feels. Check its plug and try again.";

  /// Both must outlive the watch. Nothing is asked yet.
  SensorWatch(device::TLS& board, const base::Clock& clock) : m_board(board), m_clock(clock) {}

  /// How long it is until the next question may be asked; zero when it may be asked now.
  [[nodiscard]] Duration UntilNext() const;
  /// Asks the board, whatever the time. The first reading is of 0 ms. Fails with NoAnswer: the text is kUnknown or
  /// kFallenSilent.
  base::Result<SensorReading> Read();

 private:
  device::TLS& m_board;
  const base::Clock& m_clock;
  std::optional<Duration> m_first;
  std::optional<Duration> m_last;
  bool m_hasAnswered = false;
};

}  // namespace kestrin::core::motion
