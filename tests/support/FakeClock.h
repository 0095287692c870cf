// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "core/base/Clock.h"

namespace kestrin::support {

/// A clock that only moves when somebody waits or the test says so.
class FakeClock final : public core::base::Clock {
 public:
  [[nodiscard]] Duration Now() const override { return m_now; }
  void Wait(Duration duration) override {
    m_now += duration;
    if (whileWaiting) whileWaiting();
  }
  void Advance(Duration duration) { m_now += duration; }

  /// What happens whenever somebody waits.
  std::function<void()> whileWaiting;

 private:
  Duration m_now{};
};

}  // namespace kestrin::support
