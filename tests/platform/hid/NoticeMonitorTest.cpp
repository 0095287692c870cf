// SPDX-License-Identifier: MIT
#include "platform/hid/NoticeMonitor.h"

#include <gmock/gmock.h>

#include "support/FakeHidStack.h"

namespace kestrin::platform::hid {
namespace {

using namespace std::chrono_literals;
using Kind = DeviceNotice::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

class NoticeMonitorTest : public testing::Test {
 protected:
  /// An hour, in which the agent asks ten times a second.
  std::vector<DeviceNotice> CollectForAnHour() {
    std::vector<DeviceNotice> all;
    for (int i = 0; i < 36000; ++i) {
      bus.clock.Advance(100ms);
      for (DeviceNotice& notice : Collect()) all.push_back(std::move(notice));
    }
    return all;
  }
  std::vector<DeviceNotice> Collect() { return monitor.Collect(0x04D8, 0xFA37); }

  support::FakeHidBus bus;
  support::FakeHidStack stack{bus};
  NoticeMonitor monitor{stack, bus.clock};
};

TEST_F(NoticeMonitorTest, AsksNobodyWhileNothingIsTold) {
  EXPECT_THAT(Collect(), IsEmpty());
  EXPECT_THAT(CollectForAnHour(), IsEmpty());
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

TEST_F(NoticeMonitorTest, ABoardThatIsListedLaterThanItIsToldIsNotMissed) {
  EXPECT_THAT(Collect(), IsEmpty());
  monitor.Add({Kind::Arrived, "BOARD"});
  EXPECT_THAT(Collect(), IsEmpty()) << "the list does not know it yet";
  bus.Plug("board", {});
  EXPECT_THAT(CollectForAnHour(), ElementsAre(DeviceNotice{Kind::Arrived, "board"}));
}

TEST_F(NoticeMonitorTest, ABoardThatIsListedAfterItHasGoneIsToldToHaveGoneByThen) {
  bus.Plug("board", {});
  EXPECT_THAT(Collect(), IsEmpty());
  monitor.Add({Kind::Removed, "BOARD"});
  EXPECT_THAT(Collect(), ElementsAre(DeviceNotice{Kind::Removed, "board"})) << "the list still has it";
  bus.Unplug("board");
  EXPECT_THAT(CollectForAnHour(), ElementsAre(DeviceNotice{Kind::Removed, "board"}));
}

TEST_F(NoticeMonitorTest, ABoardThatComesBackLaterThanItIsToldHasGoneAndCome) {
  bus.Plug("board", {});
  EXPECT_THAT(Collect(), IsEmpty());
  bus.Unplug("board");
  monitor.Add({Kind::Removed, "BOARD"});
  monitor.Add({Kind::Arrived, "BOARD"});
  EXPECT_THAT(Collect(), ElementsAre(DeviceNotice{Kind::Removed, "board"}));
  bus.Plug("board", {});
  EXPECT_THAT(CollectForAnHour(), ElementsAre(DeviceNotice{Kind::Arrived, "board"}));
}

TEST_F(NoticeMonitorTest, ANoticeBeforeTheFirstLookIsNotMissedEither) {
  monitor.Add({Kind::Arrived, "BOARD"});
  EXPECT_THAT(Collect(), IsEmpty());
  bus.Plug("board", {});
  EXPECT_THAT(CollectForAnHour(), ElementsAre(DeviceNotice{Kind::Arrived, "board"}));
}

TEST_F(NoticeMonitorTest, LooksAFewTimesMoreAfterANoticeASecondApart) {
  EXPECT_THAT(Collect(), IsEmpty());
  monitor.Add({Kind::Arrived, "mouse"});
  EXPECT_THAT(Collect(), IsEmpty());
  ASSERT_EQ(bus.asked.size(), 2U);
  bus.clock.Advance(999ms);
  EXPECT_THAT(Collect(), IsEmpty());
  EXPECT_EQ(bus.asked.size(), 2U);
  bus.clock.Advance(1ms);
  EXPECT_THAT(Collect(), IsEmpty());
  EXPECT_EQ(bus.asked.size(), 3U);
  EXPECT_THAT(CollectForAnHour(), IsEmpty());
  EXPECT_EQ(bus.asked.size(), 7U) << "five times more in all";
}

}  // namespace
}  // namespace kestrin::platform::hid
