// SPDX-License-Identifier: MIT
#include "platform/doctor/BusListing.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>
#include <utility>

#include "core/base/PathText.h"
#include "platform/hid/KernelFile.h"

namespace kestrin::platform::doctor {

namespace fs = std::filesystem;

namespace {

using core::doctor::BusDevice;

std::optional<std::int64_t> NumberIn(const fs::path& file, int base) {
  const std::string text = hid::ReadKernelLine(file);
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

/// Whether anything in the folder has a name that `fits`.
template <class Fits>
bool HasEntry(const fs::path& folder, Fits fits) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    if (fits(entry->path())) return true;
  return false;
}

/// A HID device lies in the folder of a USB interface, and what programs open lies in its own.
bool HasHid(const fs::path& device) {
  const auto isHid = [](const fs::path& folder) {
    std::error_code error;
    return fs::is_directory(folder / "hidraw", error);
  };
  return HasEntry(device, [&](const fs::path& interface) {
    return interface.filename().string().find(':') != std::string::npos && HasEntry(interface, isHid);
  });
}

}  // namespace

std::vector<BusDevice> ListBusDevices(std::int32_t vendorId, std::int32_t productId, const fs::path& root) {
  std::vector<BusDevice> devices;
  std::error_code error;
  for (fs::directory_iterator entry(root / "sys/bus/usb/devices", error), end; !error && entry != end;
       entry.increment(error)) {
    const fs::path& folder = entry->path();
    if (NumberIn(folder / "idVendor", 16) != vendorId || NumberIn(folder / "idProduct", 16) != productId) continue;
    BusDevice device;
    device.place = core::base::TextOf(folder.filename());
    device.manufacturer = hid::ReadKernelLine(folder / "manufacturer");
    device.product = hid::ReadKernelLine(folder / "product");
    device.serialNumber = hid::ReadKernelLine(folder / "serial");
    device.hasHid = HasHid(folder);
    const std::optional<std::int64_t> milliseconds = NumberIn(folder / "power/connected_duration", 10);
    if (milliseconds && *milliseconds >= 0) device.pluggedFor = std::chrono::seconds(*milliseconds / 1000);
    devices.push_back(std::move(device));
  }
  std::sort(devices.begin(), devices.end(), [](const BusDevice& a, const BusDevice& b) { return a.place < b.place; });
  return devices;
}

}  // namespace kestrin::platform::doctor
