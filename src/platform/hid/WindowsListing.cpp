// SPDX-License-Identifier: MIT
#include "platform/hid/WindowsListing.h"

#include <cfgmgr32.h>
#include <hidapi_winapi.h>
// Not every compiler's own says that this is C.
extern "C" {
#include <hidsdi.h>
}

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

#include "core/base/PathText.h"
#include "platform/hid/HidapiConnection.h"

namespace kestrin::platform::hid {

namespace {

struct HandleCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const {
    if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
  }
};
using Handle = std::unique_ptr<void, HandleCloser>;

/// Every program may ask a device what it is; reading and writing are rights of their own.
constexpr DWORD kAskOnly = 0;

Handle OpenInterface(const std::wstring& path, DWORD rights) {
  return Handle(
      CreateFileW(path.c_str(), rights, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
}

bool IsOpen(const Handle& handle) { return handle.get() != INVALID_HANDLE_VALUE; }

/// The paths of all HID interfaces, one behind the other as the system gives them, each ended by a null.
std::wstring AllInterfaces() {
  GUID hid = kHidInterfaces;
  std::wstring paths;
  CONFIGRET result = CR_BUFFER_SMALL;
  // Asked again while the list grows meanwhile.
  while (result == CR_BUFFER_SMALL) {
    ULONG size = 0;
    if (CM_Get_Device_Interface_List_SizeW(&size, &hid, nullptr, CM_GET_DEVICE_INTERFACE_LIST_PRESENT) != CR_SUCCESS)
      return {};
    paths.assign(size, L'\0');
    result = CM_Get_Device_Interface_ListW(&hid, nullptr, paths.data(), size, CM_GET_DEVICE_INTERFACE_LIST_PRESENT);
  }
  return result == CR_SUCCESS ? paths : std::wstring();
}

using Ask = BOOLEAN(NTAPI*)(HANDLE, PVOID, ULONG);

/// A text of the USB descriptor; "" when it cannot be had.
std::string TextFrom(const Handle& device, Ask ask) {
  // As much as such a text can hold, and its end.
  std::array<wchar_t, 127> text{};
  const auto bytes = static_cast<ULONG>((text.size() - 1) * sizeof(wchar_t));
  return ask(device.get(), text.data(), bytes) != 0 ? Utf8(text.data()) : "";
}

std::wstring WidePath(const std::string& path) { return core::base::PathOf(path).native(); }

}  // namespace

std::vector<HidNode> ListInterfaces(std::int32_t vendorId, std::int32_t productId) {
  std::vector<HidNode> nodes;
  const std::wstring paths = AllInterfaces();
  for (std::size_t at = 0; at < paths.size() && paths[at] != L'\0';) {
    const std::wstring path = paths.c_str() + at;
    at += path.size() + 1;
    const Handle device = OpenInterface(path, kAskOnly);
    HIDD_ATTRIBUTES ids{};
    ids.Size = sizeof(ids);
    if (!IsOpen(device) || HidD_GetAttributes(device.get(), &ids) == 0) continue;
    if (ids.VendorID != vendorId || ids.ProductID != productId) continue;
    nodes.push_back({Utf8(path.c_str()), vendorId, productId, TextFrom(device, HidD_GetManufacturerString),
                     TextFrom(device, HidD_GetProductString), TextFrom(device, HidD_GetSerialNumberString)});
  }
  return nodes;
}

std::vector<std::uint8_t> InterfaceDescriptor(const std::string& path) {
  const Handle device = OpenInterface(WidePath(path), kAskOnly);
  PHIDP_PREPARSED_DATA data = nullptr;
  if (!IsOpen(device) || HidD_GetPreparsedData(device.get(), &data) == 0) return {};
  std::vector<std::uint8_t> bytes(HID_API_MAX_REPORT_DESCRIPTOR_SIZE);
  const int size = hid_winapi_descriptor_reconstruct_pp_data(data, bytes.data(), bytes.size());
  HidD_FreePreparsedData(data);
  bytes.resize(static_cast<std::size_t>(std::max(size, 0)));
  return bytes;
}

core::base::Result<> TryInterface(const std::string& path) {
  if (IsOpen(OpenInterface(WidePath(path), GENERIC_READ | GENERIC_WRITE))) return {};
  return core::base::FailureOf({static_cast<int>(GetLastError()), std::system_category()});
}

}  // namespace kestrin::platform::hid
