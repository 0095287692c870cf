// SPDX-License-Identifier: MIT
#include "platform/hid/WindowsMonitor.h"

#include <exception>
#include <utility>

#include "platform/hid/HidapiConnection.h"
#include "platform/hid/WindowsListing.h"

namespace kestrin::platform::hid {

namespace {

template <typename Function>
void Find(HMODULE library, const char* name, Function& function) {
  // The detour tells the compiler that the types are meant to differ.
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

}  // namespace

WindowsMonitor::Functions WindowsMonitor::Functions::OfSystem() {
  Functions functions;
  // Stays loaded: the HID library has it anyway.
  if (const HMODULE library = LoadLibraryW(L"cfgmgr32.dll"); library != nullptr) {
    Find(library, "CM_Register_Notification", functions.start);
    Find(library, "CM_Unregister_Notification", functions.end);
  }
  return functions;
}

WindowsMonitor::WindowsMonitor(HidStack& stack, const core::base::Clock& clock, Functions functions)
    : m_functions(functions), m_notices(stack, clock) {
  if (m_functions.start == nullptr || m_functions.end == nullptr) return;
  CM_NOTIFY_FILTER filter{};
  filter.cbSize = sizeof(filter);
  filter.FilterType = CM_NOTIFY_FILTER_TYPE_DEVICEINTERFACE;
  filter.u.DeviceInterface.ClassGuid = kHidInterfaces;
  if (m_functions.start(&filter, this, &WindowsMonitor::OnEvent, &m_registration) != CR_SUCCESS)
    m_registration = nullptr;
}

WindowsMonitor::~WindowsMonitor() {
  if (m_registration != nullptr) m_functions.end(m_registration);
}

std::vector<DeviceNotice> WindowsMonitor::Collect(std::int32_t vendorId, std::int32_t productId) {
  return IsListening() ? m_notices.Collect(vendorId, productId) : std::vector<DeviceNotice>();
}

DWORD CALLBACK WindowsMonitor::OnEvent(HCMNOTIFICATION, PVOID monitor, CM_NOTIFY_ACTION action,
                                       PCM_NOTIFY_EVENT_DATA event, DWORD) {
  const bool arrived = action == CM_NOTIFY_ACTION_DEVICEINTERFACEARRIVAL;
  if (!arrived && action != CM_NOTIFY_ACTION_DEVICEINTERFACEREMOVAL) return ERROR_SUCCESS;
  try {
    static_cast<WindowsMonitor*>(monitor)->m_notices.Add(
        {arrived ? DeviceNotice::Kind::Arrived : DeviceNotice::Kind::Removed,
         Utf8(event->u.DeviceInterface.SymbolicLink)});
  } catch (const std::exception&) {
    // Without memory nothing can be told; the system's thread must not see it.
  }
  return ERROR_SUCCESS;
}

}  // namespace kestrin::platform::hid
