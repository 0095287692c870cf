// SPDX-License-Identifier: MIT
#include "platform/hid/NoticeMonitor.h"

#include <gmock/gmock.h>

#include "support/FakeHidStack.h"

namespace kestrin::platform::hid {
namespace {

using Kind = DeviceNotice::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

class NoticeMonitorTest : public testing::Test {
 protected:
  std::vector<DeviceNotice> Collect() { return monitor.Collect(0x04D8, 0xFA37); }

  support::FakeHidBus bus;
  support::FakeHidStack stack{bus};
  NoticeMonitor monitor{stack};
};

TEST_F(NoticeMonitorTest, AsksNobodyWhileNothingIsTold) {
  EXPECT_THAT(Collect(), IsEmpty());
  EXPECT_THAT(Collect(), IsEmpty());
  EXPECT_THAT(Collect(), IsEmpty());
  EXPECT_EQ(bus.asked.size(), 1U) << "once, to know what is there";
}

TEST_F(NoticeMonitorTest, TellsOfBoardsInTheSpellingOfTheStack) {
  bus.Plug("\\\\?\\HID#board", {});
  monitor.Add({Kind::Arrived, "\\\\?\\hid#BOARD"});
  EXPECT_THAT(Collect(), ElementsAre(DeviceNotice{Kind::Arrived, "\\\\?\\HID#board"}));
  bus.Unplug("\\\\?\\HID#board");
  monitor.Add({Kind::Removed, "\\\\?\\hid#BOARD"});
  EXPECT_THAT(Collect(), ElementsAre(DeviceNotice{Kind::Removed, "\\\\?\\HID#board"}));
  EXPECT_THAT(Collect(), IsEmpty());
}

TEST_F(NoticeMonitorTest, ABoardThatWasThereFromTheBeginningCanGo) {
  bus.Plug("Board", {});
  EXPECT_THAT(Collect(), IsEmpty());
  bus.Unplug("Board");
  monitor.Add({Kind::Removed, "BOARD"});
  EXPECT_THAT(Collect(), ElementsAre(DeviceNotice{Kind::Removed, "Board"}));
}

TEST_F(NoticeMonitorTest, ABoardThatIsPluggedInAgainHasGoneAndCome) {
  bus.Plug("a", {});
  EXPECT_THAT(Collect(), IsEmpty());
  monitor.Add({Kind::Removed, "A"});
  monitor.Add({Kind::Arrived, "A"});
  EXPECT_THAT(Collect(), ElementsAre(DeviceNotice{Kind::Removed, "a"}, DeviceNotice{Kind::Arrived, "a"}));
}

TEST_F(NoticeMonitorTest, MiceAreNobodysBusiness) {
  EXPECT_THAT(Collect(), IsEmpty());
  monitor.Add({Kind::Arrived, "mouse"});
  monitor.Add({Kind::Removed, "mouse"});
  EXPECT_THAT(Collect(), IsEmpty());
}

}  // namespace
}  // namespace kestrin::platform::hid
