// SPDX-License-Identifier: MIT
#include "platform/hid/UdevMonitor.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <vector>

#include "rig/MockBoard.h"

namespace kestrin::rig {
namespace {

using Kind = platform::hid::DeviceNotice::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

class UdevMonitorNotices : public testing::TestWithParam<platform::hid::UdevMonitor::Source> {
 protected:
  /// What the monitor tells, the same in a row once: newer mocks send a notice of their own beside the board's.
  [[nodiscard]] static std::vector<platform::hid::DeviceNotice> Collect(platform::hid::UdevMonitor& monitor,
                                                                        std::int32_t vendorId, std::int32_t productId) {
    std::vector<platform::hid::DeviceNotice> notices = monitor.Collect(vendorId, productId);
    notices.erase(std::unique(notices.begin(), notices.end()), notices.end());
    return notices;
  }

  MockHost host;
  MockBoard mock{host};
};

TEST_P(UdevMonitorNotices, TellsBoardsThatComeAndNodesThatGo) {
  platform::hid::UdevMonitor monitor(GetParam());
  ASSERT_TRUE(monitor.IsListening());
  EXPECT_THAT(monitor.Collect(0x04D8, 0xFA37), IsEmpty());
  mock.Plug(0);
  EXPECT_THAT(monitor.Collect(0x04D8, 0xFA37), ElementsAre(platform::hid::DeviceNotice{Kind::Arrived, "/dev/hidraw0"}));
  EXPECT_THAT(monitor.Collect(0x04D8, 0xFA37), IsEmpty());
  mock.Unplug();
  mock.Plug(7);
  EXPECT_THAT(Collect(monitor, 0x04D8, 0xFA37),
              ElementsAre(platform::hid::DeviceNotice{Kind::Removed, "/dev/hidraw0"},
                          platform::hid::DeviceNotice{Kind::Arrived, "/dev/hidraw7"}));
}

TEST_P(UdevMonitorNotices, DoesNotTellDevicesOfOtherIds) {
  platform::hid::UdevMonitor monitor(GetParam());
  mock.Plug(0);
  EXPECT_THAT(monitor.Collect(0x04D8, 0xFA38), IsEmpty());
  mock.Unplug();
  mock.Plug(0);
  EXPECT_THAT(Collect(monitor, 0x04D9, 0xFA37),
              ElementsAre(platform::hid::DeviceNotice{Kind::Removed, "/dev/hidraw0"}));
}

INSTANTIATE_TEST_SUITE_P(Sources, UdevMonitorNotices,
                         testing::Values(platform::hid::UdevMonitor::Source::Udevd,
                                         platform::hid::UdevMonitor::Source::Kernel),
                         [](const auto& source) {
                           return source.param == platform::hid::UdevMonitor::Source::Udevd ? "Udevd" : "Kernel";
                         });

}  // namespace
}  // namespace kestrin::rig
