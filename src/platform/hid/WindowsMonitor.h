// SPDX-License-Identifier: MIT
#pragma once

// windows.h before what needs it.
#include <windows.h>

#include <cfgmgr32.h>

#include "platform/hid/NoticeMonitor.h"

namespace kestrin::platform::hid {

/// Notices of Windows' configuration manager, which tells on a thread of its own.
class WindowsMonitor final : public DeviceMonitor {
 public:
  /// What the configuration manager offers; a test has its own.
  struct Functions {
    CONFIGRET(WINAPI* start)(PCM_NOTIFY_FILTER, PVOID, PCM_NOTIFY_CALLBACK, PHCMNOTIFICATION) = nullptr;
    /// Waits for a notice that is just being told.
    CONFIGRET(WINAPI* end)(HCMNOTIFICATION) = nullptr;

    /// The system's; empty where it has none.
    [[nodiscard]] static Functions OfSystem();
  };

  /// `stack` and `clock` must outlive the monitor.
  WindowsMonitor(HidStack& stack, const core::base::Clock& clock, Functions functions = Functions::OfSystem());
  ~WindowsMonitor() override;
  WindowsMonitor(const WindowsMonitor&) = delete;
  WindowsMonitor& operator=(const WindowsMonitor&) = delete;

  /// False when the system tells nothing; Collect() then returns nothing.
  [[nodiscard]] bool IsListening() const { return m_registration != nullptr; }

  [[nodiscard]] std::vector<DeviceNotice> Collect(std::int32_t vendorId, std::int32_t productId) override;

 private:
  static DWORD CALLBACK OnEvent(HCMNOTIFICATION, PVOID monitor, CM_NOTIFY_ACTION action, PCM_NOTIFY_EVENT_DATA event,
                                DWORD size);

  Functions m_functions;
  NoticeMonitor m_notices;
  HCMNOTIFICATION m_registration = nullptr;
};

}  // namespace kestrin::platform::hid
