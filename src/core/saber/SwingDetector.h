// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <optional>

#include "saber/Saber.h"

namespace kestrin::core::saber {

/// Finds swings and hits in how a blade is turned, by the parameters by which a board finds them in what its sensor
/// feels.
///
///   - A swing begins when the blade has turned faster than the threshold over the whole integration time. The next one
///     begins when it has been slower than half the threshold in between, or turns the other way.
///   - A blade that stops dead out of a quick turn has hit something.
///
/// What a board's units are of its sensor nobody can turn a pointer into: here a unit of the threshold stands for a
/// degree a second, and one of the integration time for 10 ms.
class SwingDetector {
 public:
  /// The parameters as the board holds them.
  struct Sensitivity {
    /// `MotionTh`, 1 .. 255.
    int threshold = 180;
    /// `MotionDeb`, 2 .. 25.
    int integrationTime = 2;

    friend bool operator==(const Sensitivity&, const Sensitivity&) = default;
  };

  /// Seconds within which a quick turn must end to be a hit.
  static constexpr double kStop = 0.05;
  /// A turn is quick that is so many times as fast as a swing must be.
  static constexpr double kQuick = 2.5;

  void SetSensitivity(const Sensitivity& sensitivity) { m_sensitivity = sensitivity; }
  /// At that moment (in seconds, never going back) the blade points there (in degrees). To be called also while it
  /// rests: that is what a stop is known by. `Event::Swing`, `Event::Hit` or nothing.
  [[nodiscard]] std::optional<Event> Turn(double seconds, double degrees);
  /// What was before does not count any more: the blade was taken up anew.
  void Forget();

 private:
  struct Moment {
    double seconds;
    double degrees;
  };
  /// Degrees a second, on average since `span` seconds ago; nothing when it is not watched for so long.
  [[nodiscard]] std::optional<double> SpeedOver(double span) const;

  Sensitivity m_sensitivity;
  std::deque<Moment> m_moments;
  /// The way of the swing that is under way, 1 or -1; 0 for none.
  int m_way = 0;
  /// When the blade was quick last.
  std::optional<double> m_quick;
};

}  // namespace kestrin::core::saber
