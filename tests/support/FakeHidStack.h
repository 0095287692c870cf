// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/hid/DeviceMonitor.h"
#include "platform/hid/HidStack.h"
#include "support/FakeClock.h"

namespace kestrin::support {

/// A HID device as a test scripts it. Waiting for its reports moves the fake clock instead of taking time.
struct FakeHidDevice {
  using Bytes = std::vector<std::uint8_t>;

  platform::hid::HidNode node;
  Bytes descriptor;
  bool notPermitted = false;
  /// Another program has it.
  bool inUse = false;
  /// It is unplugged in the moment in which it is opened.
  bool goesWhenOpened = false;
  /// "" to let it be opened.
  std::string openError;
  /// Read by the host in this order.
  std::deque<Bytes> input;
  /// All that the host wrote.
  std::vector<Bytes> written;
  /// Called for every written report before write returns.
  std::function<void(const Bytes&)> onWrite;
  /// Called when the host begins to wait with nothing queued.
  std::function<void()> onWait;
  /// What writing returns instead of the length.
  std::optional<int> writeResult;
  /// How many of the host's waits for the end of a write are in vain. Counted down.
  int slowWrites = 0;
  /// How long the host asked to wait for the end of a write that went on, each time.
  std::vector<std::chrono::milliseconds> writeWaits;
  bool readFails = false;
  bool gone = false;
  Bytes feature;
  /// How many connections are open, and how many ever were.
  int opened = 0;
  int timesOpened = 0;
  /// How long the host asked to wait, each time.
  std::vector<std::chrono::milliseconds> waits;
};

class FakeHidConnection final : public platform::hid::HidConnection {
 public:
  FakeHidConnection(std::shared_ptr<FakeHidDevice> device, FakeClock& clock)
      : m_device(std::move(device)), m_clock(clock) {
    ++m_device->opened;
    ++m_device->timesOpened;
  }
  ~FakeHidConnection() override { --m_device->opened; }

  std::vector<std::uint8_t> ReportDescriptor() override { return m_device->descriptor; }
  std::string IndexedString(std::uint32_t index) override { return "string " + std::to_string(index); }

  bool StartWrite(std::span<const std::uint8_t> report) override {
    if (m_writing && m_device->slowWrites > 0) return false;
    m_writing = true;
    m_outcome = Write(report);
    return true;
  }

  std::optional<int> WriteOutcome(std::chrono::milliseconds timeout) override {
    if (!m_writing) throw std::logic_error("the end of a write was waited for that was never begun");
    if (m_device->slowWrites > 0) {
      --m_device->slowWrites;
      m_device->writeWaits.push_back(timeout);
      m_clock.Advance(timeout);
      return std::nullopt;
    }
    m_writing = false;
    return m_outcome;
  }

  int Read(std::span<std::uint8_t> report, std::chrono::milliseconds timeout) override {
    if (timeout.count() > 0) {
      m_device->waits.push_back(timeout);
      if (m_device->input.empty() && m_device->onWait) m_device->onWait();
    }
    if (m_device->gone || m_device->readFails) return -1;
    if (m_device->input.empty()) {
      m_clock.Advance(timeout);
      return 0;
    }
    const FakeHidDevice::Bytes next = std::move(m_device->input.front());
    m_device->input.pop_front();
    const std::size_t length = std::min(report.size(), next.size());
    std::copy_n(next.begin(), length, report.begin());
    return static_cast<int>(length);
  }

  int WriteFeature(std::span<const std::uint8_t> report) override { return Write(report); }

  int ReadFeature(std::span<std::uint8_t> report) override {
    if (m_device->gone) return -1;
    if (report.empty() || m_device->feature.empty() || report[0] != m_device->feature[0]) {
      throw std::logic_error("a feature report was asked for that the test did not set up");
    }
    const std::size_t length = std::min(report.size(), m_device->feature.size());
    std::copy_n(m_device->feature.begin(), length, report.begin());
    return static_cast<int>(length);
  }

  bool IsGone() override { return m_device->gone; }

 private:
  int Write(std::span<const std::uint8_t> report) {
    if (m_device->gone) return -1;
    m_device->written.emplace_back(report.begin(), report.end());
    if (m_device->onWrite) m_device->onWrite(m_device->written.back());
    return m_device->writeResult.value_or(static_cast<int>(report.size()));
  }

  std::shared_ptr<FakeHidDevice> m_device;
  FakeClock& m_clock;
  bool m_writing = false;
  int m_outcome = 0;
};

/// What the system knows; shared between a test and the stack that it gives to an agent.
struct FakeHidBus {
  FakeClock clock;
  std::vector<std::shared_ptr<FakeHidDevice>> devices;
  /// The ids that were asked for.
  std::vector<std::pair<std::int32_t, std::int32_t>> asked;
  /// What a monitor reports at the next look.
  std::vector<platform::hid::DeviceNotice> notices;

  FakeHidDevice& Plug(const std::string& path, std::vector<std::uint8_t> descriptor, std::int32_t vendorId = 0x04D8,
                      std::int32_t productId = 0xFA37) {
    auto device = std::make_shared<FakeHidDevice>();
    device->node = {path, vendorId, productId, "Kestrin", "Board", "SN1"};
    device->descriptor = std::move(descriptor);
    devices.push_back(device);
    return *device;
  }
  /// The device stays alive for those who have it open.
  void Unplug(const std::string& path) {
    for (const auto& device : devices) {
      if (device->node.path == path) device->gone = true;
    }
    devices.erase(std::remove_if(devices.begin(), devices.end(), [](const auto& device) { return device->gone; }),
                  devices.end());
  }
};

class FakeHidStack final : public platform::hid::HidStack {
 public:
  explicit FakeHidStack(FakeHidBus& bus) : m_bus(bus) {}

  std::vector<platform::hid::HidNode> Enumerate(std::int32_t vendorId, std::int32_t productId) override {
    m_bus.asked.emplace_back(vendorId, productId);
    std::vector<platform::hid::HidNode> nodes;
    for (const auto& device : m_bus.devices) {
      if (device->node.vendorId == vendorId && device->node.productId == productId) nodes.push_back(device->node);
    }
    return nodes;
  }

  std::vector<std::uint8_t> Descriptor(const platform::hid::HidNode& node) override {
    const auto device = Find(node);
    return device ? device->descriptor : std::vector<std::uint8_t>();
  }

  core::base::Result<> Look(const platform::hid::HidNode& node) override {
    using core::base::Failure;
    using core::base::FailureKind;
    const auto device = Find(node);
    if (!device) return Failure{FailureKind::NotFound, "No such device"};
    if (device->notPermitted) return Failure{FailureKind::NotPermitted, "Permission denied"};
    if (device->inUse) return Failure{FailureKind::InUse, ""};
    if (!device->openError.empty()) return Failure{FailureKind::Failed, device->openError};
    return {};
  }

  core::base::Result<std::unique_ptr<platform::hid::HidConnection>> Open(const platform::hid::HidNode& node) override {
    const auto device = Find(node);
    if (!device) throw std::logic_error("a path was opened that was not enumerated: " + node.path);
    if (const auto access = Look(node); !access) return access.Why();
    if (device->goesWhenOpened) {
      m_bus.Unplug(node.path);
      return core::base::Failure{core::base::FailureKind::Failed, "it was gone again"};
    }
    std::unique_ptr<platform::hid::HidConnection> connection = std::make_unique<FakeHidConnection>(device, m_bus.clock);
    return connection;
  }

 private:
  [[nodiscard]] std::shared_ptr<FakeHidDevice> Find(const platform::hid::HidNode& node) const {
    for (const auto& device : m_bus.devices)
      if (device->node.path == node.path) return device;
    return nullptr;
  }

  FakeHidBus& m_bus;
};

class FakeDeviceMonitor final : public platform::hid::DeviceMonitor {
 public:
  explicit FakeDeviceMonitor(FakeHidBus& bus) : m_bus(bus) {}

  std::vector<platform::hid::DeviceNotice> Collect(std::int32_t, std::int32_t) override {
    return std::exchange(m_bus.notices, {});
  }

 private:
  FakeHidBus& m_bus;
};

}  // namespace kestrin::support
