// SPDX-License-Identifier: MIT
#include "platform/hid/PollingMonitor.h"

#include <gmock/gmock.h>

#include "support/BoardDescriptors.h"
#include "support/FakeHidStack.h"

namespace kestrin::platform::hid {
namespace {

using namespace std::chrono_literals;
using Kind = DeviceNotice::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

class PollingMonitorLook : public testing::Test {
 protected:
  std::vector<DeviceNotice> Look() { return monitor.Collect(0x04D8, 0xFA37); }

  support::FakeHidBus bus;
  support::FakeHidStack stack{bus};
  PollingMonitor monitor{stack, bus.clock};
};

TEST_F(PollingMonitorLook, TellsWhatCameAndWhatWent) {
  bus.Plug("a", {});
  EXPECT_THAT(Look(), ElementsAre(DeviceNotice{Kind::Arrived, "a"}));
  bus.clock.Advance(1s);
  EXPECT_THAT(Look(), IsEmpty());
  bus.Unplug("a");
  bus.Plug("b", {});
  bus.clock.Advance(1s);
  EXPECT_THAT(Look(), ElementsAre(DeviceNotice{Kind::Removed, "a"}, DeviceNotice{Kind::Arrived, "b"}));
}

TEST_F(PollingMonitorLook, AsksAtMostOnceASecondAndForTheIdsOnly) {
  EXPECT_THAT(Look(), IsEmpty());
  bus.clock.Advance(999ms);
  EXPECT_THAT(Look(), IsEmpty());
  EXPECT_EQ(bus.asked.size(), 1U);
  bus.clock.Advance(1ms);
  EXPECT_THAT(Look(), IsEmpty());
  EXPECT_THAT(bus.asked, ElementsAre(std::pair(0x04D8, 0xFA37), std::pair(0x04D8, 0xFA37)));
}

}  // namespace
}  // namespace kestrin::platform::hid
