// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/base/Result.h"

namespace kestrin::platform::hid {

/// One HID interface that the system knows. Texts are UTF-8.
struct HidNode {
  std::string path;
  std::int32_t vendorId = 0;
  std::int32_t productId = 0;
  std::string manufacturer;
  std::string product;
  /// The serial number text of the USB descriptor; the board's own number is another.
  std::string serialNumber;
};

/// One opened HID interface; closes it at its end, and keeps other programs off it until then. Reports begin with a
/// byte for the report id when they are written (0 when the interface uses none), and when they are read only if the
/// interface uses ids.
class HidConnection {
 public:
  virtual ~HidConnection() = default;

  /// The bytes of the report descriptor; empty when they cannot be had.
  [[nodiscard]] virtual std::vector<std::uint8_t> ReportDescriptor() = 0;
  /// The USB string of that number as UTF-8; "" when it cannot be had.
  [[nodiscard]] virtual std::string IndexedString(std::uint32_t index) = 0;

  /// Begins to write an output report: a device that takes nothing holds it up for seconds. False when that cannot be,
  /// and at once while the device holds up an earlier one.
  [[nodiscard]] virtual bool StartWrite(std::span<const std::uint8_t> report) = 0;
  /// Waits at most `timeout` for the end of the write that was begun last. Returns the bytes taken, negative on
  /// failure; nothing while it goes on. It need not have ended when the connection does.
  [[nodiscard]] virtual std::optional<int> WriteOutcome(std::chrono::milliseconds timeout) = 0;
  /// Waits at most `timeout` for an input report and copies as much of it as fits. Returns the bytes copied, 0 when
  /// none came, -1 on failure.
  [[nodiscard]] virtual int Read(std::span<std::uint8_t> report, std::chrono::milliseconds timeout) = 0;
  /// Writes a feature report. Returns the bytes taken, -1 on failure.
  [[nodiscard]] virtual int WriteFeature(std::span<const std::uint8_t> report) = 0;
  /// Asks for the feature report whose id is in byte 0. Returns the bytes with the id, -1 on failure.
  [[nodiscard]] virtual int ReadFeature(std::span<std::uint8_t> report) = 0;

  /// Whether the device that was opened is no longer there. Another one may by now have its path.
  [[nodiscard]] virtual bool IsGone() = 0;
};

/// The system's HID library as far as an agent needs it. The kind of a failure is NotPermitted where the system knows
/// an interface but does not let this user open it, InUse where another program has it; the text is in the system's
/// words.
class HidStack {
 public:
  virtual ~HidStack() = default;

  /// The interfaces with exactly these ids, each path once. Nothing else is asked for: on some systems mice and
  /// keyboards stall while they are asked for their names.
  [[nodiscard]] virtual std::vector<HidNode> Enumerate(std::int32_t vendorId, std::int32_t productId) = 0;
  /// The bytes of an interface's report descriptor as far as they can be had without opening it; empty otherwise.
  [[nodiscard]] virtual std::vector<std::uint8_t> Descriptor(const HidNode& node) = 0;
  /// Whether an interface that Enumerate() has named can be opened. Disturbs no program that uses it or wants to.
  virtual core::base::Result<> Look(const HidNode& node) = 0;
  /// Opens an interface that Enumerate() has named, for this program alone.
  virtual core::base::Result<std::unique_ptr<HidConnection>> Open(const HidNode& node) = 0;
};

}  // namespace kestrin::platform::hid
