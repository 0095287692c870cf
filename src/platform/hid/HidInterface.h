// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/base/Clock.h"
#include "core/device/THIDagent.h"
#include "platform/hid/HidStack.h"
#include "platform/hid/ReportDescriptor.h"

namespace kestrin::platform::hid {

/// How a transfer ended: it passed whole, it took too long, it failed or was ended from outside.
enum class TransferOutcome { Done, TimedOut, Failed };

/// One open interface: its reports with their values, its variables, its transfers.
/// Variable and report numbers are those of its descriptor and must be in range.
class HidInterface {
 public:
  /// The longest stretch of a wait during which nobody else gets a turn.
  static constexpr std::chrono::milliseconds kSlice{20};

  HidInterface(std::int32_t handle, HidNode node, std::unique_ptr<HidConnection> connection,
               ReportDescriptor descriptor);

  [[nodiscard]] std::int32_t Handle() const { return m_handle; }
  [[nodiscard]] const HidNode& Node() const { return m_node; }
  [[nodiscard]] const ReportDescriptor& Descriptor() const { return m_descriptor; }
  /// Whether the device behind it is no longer there.
  [[nodiscard]] bool IsGone() { return m_connection->IsGone(); }
  /// Whether a transfer has failed in a way that an unplugged device would explain, since the last call.
  [[nodiscard]] bool TakeSuspicion();

  // --- Values ---

  /// What the descriptor says of a variable, with the text of its string descriptor.
  [[nodiscard]] core::device::VariableAttributes Attributes(std::size_t variable) const;
  /// Element 0 as it is in the report, signed when the logical minimum is negative.
  [[nodiscard]] std::int32_t UnScaledValue(std::size_t variable) const;
  void SetUnScaledValue(std::size_t variable, std::int32_t value);
  /// Element 0, taken from the logical to the physical range, rounded half to even.
  [[nodiscard]] std::int32_t ScaledValue(std::size_t variable) const;
  void SetScaledValue(std::size_t variable, std::int32_t value);
  /// Elements 0 .. values.size() - 1, of each the lowest eight bits; what the field does not have is left out or reads
  /// 0.
  void SetElements(std::size_t variable, std::span<const std::uint8_t> values);
  void GetElements(std::size_t variable, std::span<std::uint8_t> values) const;

  // --- Transfers ---

  /// How a transfer waits.
  struct Wait {
    core::base::Clock::Duration timeout;
    const core::base::Clock& clock;
    /// Called after each slice in vain; returns false to end the wait as failed.
    const std::function<bool()>& between;
  };

  /// Throws away input reports that wait, then writes an output report and waits until the device has taken it. A write
  /// that is waited for no longer is left to itself; until it has ended, every other one fails at once.
  [[nodiscard]] TransferOutcome WriteOutput(std::size_t report, const Wait& wait);
  /// Waits for that input report; reports of another id are passed over. A report of a wrong length is a failure. The
  /// value changes only when the report arrived.
  [[nodiscard]] TransferOutcome ReadInput(std::size_t report, const Wait& wait);
  /// Writes or asks for a feature report. False when it did not pass whole.
  [[nodiscard]] bool WriteFeature(std::size_t report);
  [[nodiscard]] bool ReadFeature(std::size_t report);

 private:
  /// A variable whose elements fill whole bytes, so that they can be copied as they are.
  [[nodiscard]] static bool IsByteField(const DescriptorVariable& variable);
  [[nodiscard]] std::vector<std::uint8_t> WithId(std::size_t report) const;
  /// Waits until `tryFor`, given a slice of the time, returns an outcome.
  [[nodiscard]] static TransferOutcome WaitFor(
      const Wait& wait, const std::function<std::optional<TransferOutcome>(std::chrono::milliseconds)>& tryFor);
  /// The outcome when a report of that number is awaited and one came, or none, or a failure.
  [[nodiscard]] std::optional<TransferOutcome> TakeInput(std::size_t report, int length);
  /// Throws away the input reports that wait. False when the device failed.
  [[nodiscard]] bool Drain();
  [[nodiscard]] bool Succeeded(int result, std::size_t expected);

  std::int32_t m_handle;
  HidNode m_node;
  std::unique_ptr<HidConnection> m_connection;
  ReportDescriptor m_descriptor;
  /// The value of each report, without its id.
  std::vector<std::vector<std::uint8_t>> m_values;
  /// Where input reports are read to: longer by one byte than the longest, so that one that is too long shows.
  std::vector<std::uint8_t> m_inputBuffer;
  bool m_suspicious = false;
};

}  // namespace kestrin::platform::hid
