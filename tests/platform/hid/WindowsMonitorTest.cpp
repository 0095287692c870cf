// SPDX-License-Identifier: MIT
#include "platform/hid/WindowsMonitor.h"

#include <gmock/gmock.h>

#include <cwchar>
#include <vector>

#include "support/FakeHidStack.h"

namespace kestrin::platform::hid {
namespace {

using Kind = DeviceNotice::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

/// A configuration manager that tells what the test wants.
struct Manager {
  GUID wanted{};
  PVOID context = nullptr;
  PCM_NOTIFY_CALLBACK callback = nullptr;
  int ended = 0;
};
Manager s_manager;

const HCMNOTIFICATION kRegistration = reinterpret_cast<HCMNOTIFICATION>(&s_manager);

CONFIGRET WINAPI Start(PCM_NOTIFY_FILTER filter, PVOID context, PCM_NOTIFY_CALLBACK callback, PHCMNOTIFICATION made) {
  if (filter->cbSize != sizeof(*filter) || filter->FilterType != CM_NOTIFY_FILTER_TYPE_DEVICEINTERFACE)
    return CR_INVALID_DATA;
  s_manager = {filter->u.DeviceInterface.ClassGuid, context, callback, 0};
  *made = kRegistration;
  return CR_SUCCESS;
}

CONFIGRET WINAPI End(HCMNOTIFICATION registration) {
  s_manager.ended += registration == kRegistration ? 1 : 0;
  return CR_SUCCESS;
}

CONFIGRET WINAPI Refuse(PCM_NOTIFY_FILTER, PVOID, PCM_NOTIFY_CALLBACK, PHCMNOTIFICATION) { return CR_FAILURE; }

void Tell(CM_NOTIFY_ACTION action, const std::wstring& path) {
  std::vector<std::byte> bytes(sizeof(CM_NOTIFY_EVENT_DATA) + path.size() * sizeof(wchar_t));
  auto* const event = reinterpret_cast<CM_NOTIFY_EVENT_DATA*>(bytes.data());
  event->FilterType = CM_NOTIFY_FILTER_TYPE_DEVICEINTERFACE;
  std::wmemcpy(event->u.DeviceInterface.SymbolicLink, path.c_str(), path.size() + 1);
  s_manager.callback(kRegistration, s_manager.context, action, event, static_cast<DWORD>(bytes.size()));
}

TEST(WindowsMonitor, TellsWhatTheSystemTells) {
  support::FakeHidBus bus;
  support::FakeHidStack stack(bus);
  {
    WindowsMonitor monitor(stack, bus.clock, {Start, End});
    ASSERT_TRUE(monitor.IsListening());
    EXPECT_TRUE(IsEqualGUID(s_manager.wanted,
                            GUID({0x4D1E55B2, 0xF16F, 0x11CF, {0x88, 0xCB, 0x00, 0x11, 0x11, 0x00, 0x00, 0x30}})));
    bus.Plug("board", {});
    Tell(CM_NOTIFY_ACTION_DEVICEINTERFACEARRIVAL, L"BOARD");
    EXPECT_THAT(monitor.Collect(0x04D8, 0xFA37), ElementsAre(DeviceNotice{Kind::Arrived, "board"}));
    Tell(CM_NOTIFY_ACTION_DEVICEQUERYREMOVE, L"BOARD");
    EXPECT_THAT(monitor.Collect(0x04D8, 0xFA37), IsEmpty());
    bus.Unplug("board");
    Tell(CM_NOTIFY_ACTION_DEVICEINTERFACEREMOVAL, L"BOARD");
    EXPECT_THAT(monitor.Collect(0x04D8, 0xFA37), ElementsAre(DeviceNotice{Kind::Removed, "board"}));
    EXPECT_EQ(s_manager.ended, 0);
  }
  EXPECT_EQ(s_manager.ended, 1);
}

TEST(WindowsMonitor, DoesNotListenWhereTheSystemTellsNothing) {
  support::FakeHidBus bus;
  support::FakeHidStack stack(bus);
  s_manager = {};
  EXPECT_FALSE(WindowsMonitor(stack, bus.clock, {}).IsListening());
  EXPECT_FALSE(WindowsMonitor(stack, bus.clock, {Refuse, End}).IsListening());
  EXPECT_EQ(s_manager.ended, 0);
}

}  // namespace
}  // namespace kestrin::platform::hid
