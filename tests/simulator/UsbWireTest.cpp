// SPDX-License-Identifier: MIT
#include "simulator/UsbWire.h"

#include <gtest/gtest.h>

#include "SimulatorSupport.h"
#include "support/FakeClock.h"

namespace kestrin::simulator {
namespace {

using namespace std::chrono_literals;

/// A clock whose waits take longer than asked for, as those of real computers do.
class SleepyClock final : public core::base::Clock {
 public:
  explicit SleepyClock(Duration oversleep) : m_oversleep(oversleep) {}
  [[nodiscard]] Duration Now() const override { return m_now; }
  void Wait(Duration duration) override { m_now += duration + m_oversleep; }
  void Advance(Duration duration) { m_now += duration; }

 private:
  Duration m_oversleep;
  Duration m_now = 5s;
};

TEST(UsbWire, AMillisecondForEveryPacketOf64Bytes) {
  struct Row {
    std::size_t bytes;
    core::base::Clock::Duration time;
  };
  for (const Row row : {Row{0, 0ms}, Row{1, 1ms}, Row{2, 1ms}, Row{64, 1ms}, Row{65, 2ms}, Row{1024, 16ms},
                        Row{1025, 17ms}, Row{1028, 17ms}}) {
    support::FakeClock clock;
    UsbWire wire(clock);
    wire.Transfer(row.bytes);
    EXPECT_EQ(clock.Now(), row.time) << row.bytes;
  }
}

TEST(UsbWire, OversleepingDoesNotAddUp) {
  SleepyClock clock(300us);
  UsbWire wire(clock);
  const core::base::Clock::Duration start = clock.Now();
  // A whole flash of 4 MiB: 4,096 blocks of a command and an answer, with a little work of the host before each.
  for (int block = 0; block < 4096; ++block) {
    clock.Advance(20us);
    wire.Transfer(1028);
    wire.Transfer(2);
  }
  const core::base::Clock::Duration pure = 4096 * 18ms;
  EXPECT_GE(clock.Now() - start, pure);
  EXPECT_LE(clock.Now() - start, pure + 1ms);
}

TEST(UsbWire, APauseIsNotMadeUpFor) {
  support::FakeClock clock;
  UsbWire wire(clock);
  wire.Transfer(1028);
  clock.Advance(1s);
  wire.Transfer(2);
  EXPECT_EQ(clock.Now(), 1018ms);
}

}  // namespace
}  // namespace kestrin::simulator
