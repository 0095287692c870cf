// SPDX-License-Identifier: MIT
#include "platform/hid/NodeListing.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>

namespace kestrin::platform::hid {

namespace fs = std::filesystem;

namespace {

constexpr const char* kNodes = "sys/class/hidraw";
/// Neither a descriptor nor a page of /sys is longer.
constexpr std::size_t kLongestFile = 4096;

/// The content of a file of the kernel's; nothing when it cannot be read to its end. (The standard library's streams
/// throw when a device goes while they read.)
std::optional<std::string> ReadKernelFile(const fs::path& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return std::nullopt;
  std::string content;
  std::array<char, kLongestFile> block{};
  ssize_t count = 0;
  do {
    count = ::read(file, block.data(), block.size());
    if (count > 0) content.append(block.data(), static_cast<std::size_t>(count));
  } while ((count > 0 && content.size() <= kLongestFile) || (count < 0 && errno == EINTR));
  ::close(file);
  if (count != 0) return std::nullopt;
  return content;
}

/// The bytes of the UTF-8 character at the front of `text`, 0 when there is none.
std::size_t CharacterLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(0);
  if (first < 0x80) return 1;
  const std::size_t length = first >= 0xC2 && first <= 0xDF   ? 2
                             : (first & 0xF0) == 0xE0         ? 3
                             : first >= 0xF0 && first <= 0xF4 ? 4
                                                              : 0;
  if (length == 0 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i)
    if ((byte(i) & 0xC0) != 0x80) return 0;
  // Too long for what they say, halves of pairs, and beyond the last character.
  const bool isNone = (first == 0xE0 && byte(1) < 0xA0) || (first == 0xED && byte(1) > 0x9F) ||
                      (first == 0xF0 && byte(1) < 0x90) || (first == 0xF4 && byte(1) > 0x8F);
  return isNone ? 0 : length;
}

/// A device may call itself anything: what is no UTF-8 becomes the character that stands for such.
std::string Utf8Of(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    result += length == 0 ? "\xEF\xBF\xBD" : text.substr(0, length);
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return result;
}

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

/// A text of a USB device; "" when it has none.
std::string UsbText(const fs::path& device, const char* name) {
  std::string text = ReadKernelFile(device / name).value_or("");
  if (text.ends_with('\n')) text.pop_back();
  return Utf8Of(text);
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

std::optional<HidNode> ReadNode(const fs::path& entry, std::int32_t vendorId, std::int32_t productId) {
  const fs::path device = entry / "device";
  const std::optional<std::string> properties = ReadKernelFile(device / "uevent");
  if (!properties) return std::nullopt;
  const std::optional<HidIds> ids = ReadHidIds(ValueOf(*properties, "HID_ID").value_or(""));
  if (!ids || ids->vendor != static_cast<unsigned>(vendorId) || ids->product != static_cast<unsigned>(productId))
    return std::nullopt;

  HidNode node{"/dev/" + entry.filename().string(),          vendorId, productId, "", "",
               ValueOf(*properties, "HID_UNIQ").value_or("")};
  // The USB device above one on Bluetooth is only its radio.
  const fs::path usb = ids->bus == HidIds::kUsb ? UsbDeviceOf(device) : fs::path();
  if (!usb.empty()) {
    node.manufacturer = UsbText(usb, "manufacturer");
    node.product = UsbText(usb, "product");
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

std::vector<std::uint8_t> ReadNodeDescriptor(const std::string& path, const fs::path& root) {
  const fs::path file = root / kNodes / fs::path(path).filename() / "device/report_descriptor";
  const std::string bytes = ReadKernelFile(file).value_or("");
  return {bytes.begin(), bytes.end()};
}

}  // namespace kestrin::platform::hid
