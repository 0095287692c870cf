// SPDX-License-Identifier: MIT
#include "platform/hid/ThreadWriter.h"

#include <gmock/gmock.h>

#include <array>
#include <future>
#include <memory>
#include <vector>

namespace kestrin::platform::hid {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

using Bytes = std::vector<std::uint8_t>;

/// A device whose two writes end when the test lets them.
struct HeldDevice {
  explicit HeldDevice(std::promise<void>& whenClosed) : closed(whenClosed) {}
  ~HeldDevice() { closed.set_value(); }
  HeldDevice(const HeldDevice&) = delete;
  HeldDevice& operator=(const HeldDevice&) = delete;

  [[nodiscard]] int Write(std::span<const std::uint8_t> report) {
    const std::size_t number = written.size();
    written.emplace_back(report.begin(), report.end());
    begun.at(number).set_value();
    return outcomes.at(number).get_future().get();
  }

  std::promise<void>& closed;
  std::array<std::promise<void>, 2> begun;
  std::array<std::promise<int>, 2> outcomes;
  /// Of whoever writes, until the outcome has come back.
  std::vector<Bytes> written;
};

class ThreadWriterTest : public testing::Test {
 protected:
  ThreadWriterTest()
      : m_device(std::make_shared<HeldDevice>(m_closed)),
        m_writer(std::make_unique<ThreadWriter>(
            [device = m_device](std::span<const std::uint8_t> report) { return device->Write(report); })) {}

  /// Waits for the end however long it takes.
  [[nodiscard]] int Outcome() {
    for (;;)
      if (const auto outcome = m_writer->Outcome(1s)) return *outcome;
  }

  std::promise<void> m_closed;
  std::shared_ptr<HeldDevice> m_device;
  std::unique_ptr<ThreadWriter> m_writer;
};

TEST_F(ThreadWriterTest, AReportIsWrittenAndItsOutcomeComesBackOnce) {
  m_device->outcomes[0].set_value(3);
  EXPECT_LT(m_writer->Outcome(0ms), 0) << "nothing was begun";
  ASSERT_TRUE(m_writer->Start(Bytes{0, 5, 6}));
  EXPECT_EQ(Outcome(), 3);
  EXPECT_LT(m_writer->Outcome(0ms), 0);
  EXPECT_THAT(m_device->written, ElementsAre(Bytes{0, 5, 6}));
}

TEST_F(ThreadWriterTest, AWriteThatTheDeviceHoldsUpIsWaitedForInSlices) {
  ASSERT_TRUE(m_writer->Start(Bytes{0, 5}));
  EXPECT_EQ(m_writer->Outcome(1ms), std::nullopt);
  EXPECT_FALSE(m_writer->Start(Bytes{0, 7})) << "on top of the first one";
  m_device->outcomes[0].set_value(-1);
  EXPECT_EQ(Outcome(), -1);
  EXPECT_THAT(m_device->written, ElementsAre(Bytes{0, 5}));
}

TEST_F(ThreadWriterTest, TheOutcomeThatNobodyAskedForIsForgotten) {
  m_device->outcomes[0].set_value(2);
  m_device->outcomes[1].set_value(7);
  ASSERT_TRUE(m_writer->Start(Bytes{0, 5}));
  while (!m_writer->Start(Bytes{0, 6})) std::this_thread::yield();
  EXPECT_EQ(Outcome(), 7);
  EXPECT_THAT(m_device->written, ElementsAre(Bytes{0, 5}, Bytes{0, 6}));
}

TEST_F(ThreadWriterTest, ItEndsWhenItIsLetGo) {
  m_device.reset();
  m_writer.reset();
  m_closed.get_future().wait();
}

TEST_F(ThreadWriterTest, LetGoInAWriteItDoesNotWaitAndKeepsTheDeviceUntilThatIsOver) {
  HeldDevice& device = *m_device;
  ASSERT_TRUE(m_writer->Start(Bytes{0, 5}));
  device.begun[0].get_future().wait();
  m_writer.reset();
  std::future<void> closed = m_closed.get_future();
  m_device.reset();
  EXPECT_EQ(closed.wait_for(0s), std::future_status::timeout);
  device.outcomes[0].set_value(2);
  closed.wait();
}

}  // namespace
}  // namespace kestrin::platform::hid
