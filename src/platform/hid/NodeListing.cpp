// SPDX-License-Identifier: MIT
#include "platform/hid/NodeListing.h"

#include <cstdio>
#include <system_error>

#include "platform/hid/KernelFile.h"

namespace kestrin::platform::hid {

namespace fs = std::filesystem;

namespace {

constexpr const char* kNodes = "sys/class/hidraw";

/// The value behind "KEY=" in a line of its own; nothing without one that ends.
std::optional<std::string> ValueOf(std::string_view properties, std::string_view key) {
  for (std::size_t at = 0; at < properties.size();) {
    const std::size_t end = properties.find('\n', at);
    if (end == std::string_view::npos) break;
    const std::string_view line = properties.substr(at, end - at);
    if (line.starts_with(key) && line.substr(key.size()).starts_with('=')) return Utf8Of(line.substr(key.size() + 1));
    at = end + 1;
  }
  return std::nullopt;
}

/// The folder of the USB device that a HID device belongs to; empty when it belongs to none.
fs::path UsbDeviceOf(const fs::path& hidDevice) {
  std::error_code error;
  fs::path folder = fs::canonical(hidDevice, error);
  if (error) return {};
  for (; folder.has_relative_path(); folder = folder.parent_path())
    if (fs::exists(folder / "idVendor", error)) return folder;
  return {};
}

/// The ids in a HID device's properties, if they are these.
std::optional<HidIds> IdsIn(const std::optional<std::string>& properties, std::int32_t vendorId,
                            std::int32_t productId) {
  if (!properties) return std::nullopt;
  const std::optional<HidIds> ids = ReadHidIds(ValueOf(*properties, "HID_ID").value_or(""));
  if (!ids || ids->vendor != static_cast<unsigned>(vendorId) || ids->product != static_cast<unsigned>(productId))
    return std::nullopt;
  return ids;
}

std::optional<HidNode> ReadNode(const fs::path& entry, std::int32_t vendorId, std::int32_t productId) {
  const fs::path device = entry / "device";
  const std::optional<std::string> properties = ReadKernelFile(device / "uevent");
  const std::optional<HidIds> ids = IdsIn(properties, vendorId, productId);
  if (!ids) return std::nullopt;

  HidNode node{"/dev/" + entry.filename().string(),          vendorId, productId, "", "",
               ValueOf(*properties, "HID_UNIQ").value_or("")};
  // The USB device above one on Bluetooth is only its radio.
  const fs::path usb = ids->bus == HidIds::kUsb ? UsbDeviceOf(device) : fs::path();
  if (!usb.empty()) {
    node.manufacturer = ReadKernelLine(usb / "manufacturer");
    node.product = ReadKernelLine(usb / "product");
  } else {
    node.product = ValueOf(*properties, "HID_NAME").value_or("");
  }
  return node;
}

}  // namespace

std::optional<HidIds> ReadHidIds(std::string_view text) {
  HidIds ids;
  int length = 0;
  const std::string whole(text);
  if (std::sscanf(whole.c_str(), "%4x:%8x:%8x%n", &ids.bus, &ids.vendor, &ids.product, &length) != 3)
    return std::nullopt;
  if (static_cast<std::size_t>(length) != whole.size()) return std::nullopt;
  return ids;
}

std::vector<HidNode> ListNodes(std::int32_t vendorId, std::int32_t productId, const fs::path& root) {
  std::vector<HidNode> nodes;
  std::error_code error;
  for (fs::directory_iterator entry(root / kNodes, error), end; !error && entry != end; entry.increment(error))
    if (std::optional<HidNode> node = ReadNode(entry->path(), vendorId, productId)) nodes.push_back(*std::move(node));
  return nodes;
}

bool IsNodeOf(const std::string& path, std::int32_t vendorId, std::int32_t productId, const fs::path& root) {
  const fs::path properties = root / kNodes / fs::path(path).filename() / "device/uevent";
  return IdsIn(ReadKernelFile(properties), vendorId, productId).has_value();
}

std::vector<std::uint8_t> ReadNodeDescriptor(const std::string& path, const fs::path& root) {
  const fs::path file = root / kNodes / fs::path(path).filename() / "device/report_descriptor";
  const std::string bytes = ReadKernelFile(file).value_or("");
  return {bytes.begin(), bytes.end()};
}

}  // namespace kestrin::platform::hid
