// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace kestrin::core::base {

/// Time as procedures and the simulated board see it, so that tests need not wait.
class Clock {
 public:
  using Duration = std::chrono::nanoseconds;

  virtual ~Clock() = default;
  /// Time since an arbitrary fixed moment; never goes back.
  [[nodiscard]] virtual Duration Now() const = 0;
  /// Returns after `duration`.
  virtual void Wait(Duration duration) = 0;
};

/// The computer's own clock.
class SystemClock final : public Clock {
 public:
  [[nodiscard]] Duration Now() const override;
  void Wait(Duration duration) override;
};

}  // namespace kestrin::core::base
