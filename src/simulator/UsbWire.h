// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "core/base/Clock.h"

namespace kestrin::simulator {

/// The time that reports take on full-speed USB: one packet of up to 64 bytes a millisecond.
///
/// It keeps an absolute schedule, "the bus is busy until", instead of adding up waits: the computer wakes a little late
/// from every wait, and that lateness must not make thousands of reports slower than the wire. A report that comes at
/// most kLateness after the bus became free therefore counts as having come at once; after a longer pause the schedule
/// starts anew.
class UsbWire {
 public:
  static constexpr std::size_t kPacketSize = 64;
  static constexpr core::base::Clock::Duration kFrame = std::chrono::milliseconds(1);
  static constexpr core::base::Clock::Duration kLateness = std::chrono::milliseconds(20);

  /// The clock must outlive the wire.
  explicit UsbWire(core::base::Clock& clock) : m_clock(clock), m_busyUntil(clock.Now()) {}

  /// Returns when a report of that many bytes has passed.
  void Transfer(std::size_t bytes);

 private:
  core::base::Clock& m_clock;
  core::base::Clock::Duration m_busyUntil;
};

}  // namespace kestrin::simulator
