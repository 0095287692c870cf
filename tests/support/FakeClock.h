#pragma once

#include "base/Clock.h"

namespace kestrin::support {

/// A clock that only moves when somebody waits or the test says so.
class FakeClock final : public base::Clock {
 public:
  [[nodiscard]] Duration Now() const override { return m_now; }
  void Wait(Duration duration) override { m_now += duration; }
  void Advance(Duration duration) { m_now += duration; }

 private:
  Duration m_now{};
};

}  // namespace kestrin::support
