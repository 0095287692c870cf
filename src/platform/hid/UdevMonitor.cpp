// SPDX-License-Identifier: MIT
#include "platform/hid/UdevMonitor.h"

#include <libudev.h>
#include <poll.h>

#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/hid/NodeListing.h"

namespace kestrin::platform::hid {

namespace {

struct DeviceDeleter {
  void operator()(udev_device* device) const { udev_device_unref(device); }
};
using Device = std::unique_ptr<udev_device, DeviceDeleter>;

bool HasNews(udev_monitor* monitor) {
  pollfd file{udev_monitor_get_fd(monitor), POLLIN, 0};
  return ::poll(&file, 1, 0) > 0;
}

/// Whether the HID device that a node belongs to has these ids.
bool HasIds(udev_device* node, std::int32_t vendorId, std::int32_t productId) {
  udev_device* const parent = udev_device_get_parent_with_subsystem_devtype(node, "hid", nullptr);
  const char* const id = parent == nullptr ? nullptr : udev_device_get_property_value(parent, "HID_ID");
  const std::optional<HidIds> ids = ReadHidIds(id == nullptr ? "" : id);
  return ids && ids->vendor == static_cast<unsigned>(vendorId) && ids->product == static_cast<unsigned>(productId);
}

}  // namespace

void UdevMonitor::UdevDeleter::operator()(udev* context) const { udev_unref(context); }

void UdevMonitor::MonitorDeleter::operator()(udev_monitor* monitor) const { udev_monitor_unref(monitor); }

UdevMonitor::Source UdevMonitor::PreferredSource() {
  std::error_code ignored;
  return std::filesystem::exists("/run/udev/control", ignored) ? Source::Udevd : Source::Kernel;
}

UdevMonitor::UdevMonitor(Source source) : m_udev(udev_new()) {
  if (!m_udev) return;
  m_monitor.reset(udev_monitor_new_from_netlink(m_udev.get(), source == Source::Udevd ? "udev" : "kernel"));
  if (!m_monitor) return;
  if (udev_monitor_filter_add_match_subsystem_devtype(m_monitor.get(), "hidraw", nullptr) < 0 ||
      udev_monitor_enable_receiving(m_monitor.get()) < 0) {
    m_monitor.reset();
  }
}

UdevMonitor::~UdevMonitor() = default;

std::vector<DeviceNotice> UdevMonitor::Collect(std::int32_t vendorId, std::int32_t productId) {
  std::vector<DeviceNotice> notices;
  while (m_monitor && HasNews(m_monitor.get())) {
    const Device device(udev_monitor_receive_device(m_monitor.get()));
    if (!device) break;
    const char* const action = udev_device_get_action(device.get());
    const char* const path = udev_device_get_devnode(device.get());
    if (action == nullptr || path == nullptr) continue;
    if (std::string_view(action) == "remove") {
      notices.push_back({DeviceNotice::Kind::Removed, path});
    } else if (std::string_view(action) == "add" && HasIds(device.get(), vendorId, productId)) {
      notices.push_back({DeviceNotice::Kind::Arrived, path});
    }
  }
  return notices;
}

}  // namespace kestrin::platform::hid
