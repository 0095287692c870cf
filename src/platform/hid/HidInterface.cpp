// SPDX-License-Identifier: MIT
#include "platform/hid/HidInterface.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "core/base/Numbers.h"
#include "platform/hid/ReportBits.h"

namespace kestrin::platform::hid {

namespace {

/// More reports than any system queues for one reader. A device that never stops sending must not keep a write waiting.
constexpr int kMostLateReports = 256;

/// Takes `value` from one range to another, rounded half to even and bounded to 32 bits; as it is when either is empty.
std::int32_t MapRange(std::int32_t value, std::int32_t fromLow, std::int32_t fromHigh, std::int32_t toLow,
                      std::int32_t toHigh) {
  if (fromLow >= fromHigh || toLow >= toHigh) return value;
  // Multiplied first, so that a half stays a half.
  const double product = (static_cast<double>(value) - fromLow) * (static_cast<double>(toHigh) - toLow);
  const double mapped = core::base::RoundHalfEven(toLow + product / (static_cast<double>(fromHigh) - fromLow));
  return static_cast<std::int32_t>(
      std::clamp<double>(mapped, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

HidInterface::HidInterface(std::int32_t handle, HidNode node, std::unique_ptr<HidConnection> connection,
                           ReportDescriptor descriptor)
    : m_handle(handle),
      m_node(std::move(node)),
      m_connection(std::move(connection)),
      m_descriptor(std::move(descriptor)) {
  for (const DescriptorReport& report : m_descriptor.Reports()) m_values.emplace_back(report.Bytes());
  m_inputBuffer.resize(m_descriptor.LongestReport(core::device::ReportType::Input) + 2);
}

bool HidInterface::TakeSuspicion() { return std::exchange(m_suspicious, false); }

core::device::VariableAttributes HidInterface::Attributes(std::size_t variable) const {
  const DescriptorVariable& field = m_descriptor.Variables()[variable];
  core::device::VariableAttributes attributes = field.attributes;
  if (field.stringIndex != 0) attributes.StringDescriptor = m_connection->IndexedString(field.stringIndex);
  return attributes;
}

std::int32_t HidInterface::UnScaledValue(std::size_t variable) const {
  const DescriptorVariable& field = m_descriptor.Variables()[variable];
  const auto bits = static_cast<std::size_t>(field.attributes.SizeInBits);
  const std::uint32_t value = GetBits(m_values[field.report], field.bitOffset, bits);
  return field.attributes.LogicalMinimum < 0 ? SignExtend(value, bits) : static_cast<std::int32_t>(value);
}

void HidInterface::SetUnScaledValue(std::size_t variable, std::int32_t value) {
  const DescriptorVariable& field = m_descriptor.Variables()[variable];
  SetBits(m_values[field.report], field.bitOffset, static_cast<std::size_t>(field.attributes.SizeInBits),
          static_cast<std::uint32_t>(value));
}

std::int32_t HidInterface::ScaledValue(std::size_t variable) const {
  const core::device::VariableAttributes& a = m_descriptor.Variables()[variable].attributes;
  return MapRange(UnScaledValue(variable), a.LogicalMinimum, a.LogicalMaximum, a.PhysicalMinimum, a.PhysicalMaximum);
}

void HidInterface::SetScaledValue(std::size_t variable, std::int32_t value) {
  const core::device::VariableAttributes& a = m_descriptor.Variables()[variable].attributes;
  SetUnScaledValue(variable, MapRange(value, a.PhysicalMinimum, a.PhysicalMaximum, a.LogicalMinimum, a.LogicalMaximum));
}

bool HidInterface::IsByteField(const DescriptorVariable& variable) {
  return variable.attributes.SizeInBits == 8 && variable.bitOffset % 8 == 0;
}

void HidInterface::SetElements(std::size_t variable, std::span<const std::uint8_t> values) {
  const DescriptorVariable& field = m_descriptor.Variables()[variable];
  std::vector<std::uint8_t>& report = m_values[field.report];
  const std::size_t count = std::min(values.size(), field.count);
  if (IsByteField(field)) {
    std::copy_n(values.begin(), count, report.begin() + static_cast<std::ptrdiff_t>(field.bitOffset / 8));
    return;
  }
  const auto bits = static_cast<std::size_t>(field.attributes.SizeInBits);
  for (std::size_t i = 0; i < count; ++i) SetBits(report, field.bitOffset + i * bits, bits, values[i]);
}

void HidInterface::GetElements(std::size_t variable, std::span<std::uint8_t> values) const {
  const DescriptorVariable& field = m_descriptor.Variables()[variable];
  const std::vector<std::uint8_t>& report = m_values[field.report];
  const std::size_t count = std::min(values.size(), field.count);
  if (IsByteField(field)) {
    std::copy_n(report.begin() + static_cast<std::ptrdiff_t>(field.bitOffset / 8), count, values.begin());
  } else {
    const auto bits = static_cast<std::size_t>(field.attributes.SizeInBits);
    for (std::size_t i = 0; i < count; ++i) {
      values[i] = static_cast<std::uint8_t>(GetBits(report, field.bitOffset + i * bits, bits));
    }
  }
  std::fill(values.begin() + static_cast<std::ptrdiff_t>(count), values.end(), std::uint8_t{0});
}

std::vector<std::uint8_t> HidInterface::WithId(std::size_t report) const {
  const std::vector<std::uint8_t>& value = m_values[report];
  std::vector<std::uint8_t> bytes(value.size() + 1, m_descriptor.Reports()[report].id);
  std::copy(value.begin(), value.end(), bytes.begin() + 1);
  return bytes;
}

bool HidInterface::Succeeded(int result, std::size_t expected) {
  if (result < 0) m_suspicious = true;
  return result == static_cast<int>(expected);
}

bool HidInterface::Drain() {
  for (int i = 0; i < kMostLateReports; ++i) {
    const int late = m_connection->Read(m_inputBuffer, std::chrono::milliseconds(0));
    if (late < 0) m_suspicious = true;
    if (late <= 0) return late == 0;
  }
  return true;
}

TransferOutcome HidInterface::WaitFor(
    const Wait& wait, const std::function<std::optional<TransferOutcome>(std::chrono::milliseconds)>& tryFor) {
  const auto end = wait.clock.Now() + wait.timeout;
  while (true) {
    // Whoever gets a turn in between may take longer than the time that is left: what has come to its end meanwhile
    // counts.
    const auto left = std::max(core::base::Clock::Duration::zero(), end - wait.clock.Now());
    if (const auto outcome = tryFor(std::min(kSlice, std::chrono::ceil<std::chrono::milliseconds>(left))))
      return *outcome;
    if (left == core::base::Clock::Duration::zero()) return TransferOutcome::TimedOut;
    if (!wait.between()) return TransferOutcome::Failed;
  }
}

TransferOutcome HidInterface::WriteOutput(std::size_t report, const Wait& wait) {
  if (!Drain()) return TransferOutcome::Failed;
  const std::vector<std::uint8_t> bytes = WithId(report);
  if (!m_connection->StartWrite(bytes)) return TransferOutcome::Failed;
  return WaitFor(wait, [&](std::chrono::milliseconds slice) -> std::optional<TransferOutcome> {
    const std::optional<int> taken = m_connection->WriteOutcome(slice);
    if (!taken) return std::nullopt;
    return Succeeded(*taken, bytes.size()) ? TransferOutcome::Done : TransferOutcome::Failed;
  });
}

TransferOutcome HidInterface::ReadInput(std::size_t report, const Wait& wait) {
  return WaitFor(wait, [&](std::chrono::milliseconds slice) {
    return TakeInput(report, m_connection->Read(m_inputBuffer, slice));
  });
}

std::optional<TransferOutcome> HidInterface::TakeInput(std::size_t report, int length) {
  const DescriptorReport& layout = m_descriptor.Reports()[report];
  const std::size_t idBytes = m_descriptor.UsesReportIds() ? 1 : 0;
  if (length < 0) {
    m_suspicious = true;
    return TransferOutcome::Failed;
  }
  if (length == 0 || (idBytes != 0 && m_inputBuffer[0] != layout.id)) return std::nullopt;
  if (static_cast<std::size_t>(length) != layout.Bytes() + idBytes) return TransferOutcome::Failed;
  std::copy_n(m_inputBuffer.begin() + static_cast<std::ptrdiff_t>(idBytes), layout.Bytes(), m_values[report].begin());
  return TransferOutcome::Done;
}

bool HidInterface::WriteFeature(std::size_t report) {
  const std::vector<std::uint8_t> bytes = WithId(report);
  return Succeeded(m_connection->WriteFeature(bytes), bytes.size());
}

bool HidInterface::ReadFeature(std::size_t report) {
  std::vector<std::uint8_t> bytes = WithId(report);
  const std::size_t expected = bytes.size();
  bytes.push_back(0);  // So that a report that is too long shows.
  if (!Succeeded(m_connection->ReadFeature(bytes), expected)) return false;
  std::copy_n(bytes.begin() + 1, m_values[report].size(), m_values[report].begin());
  return true;
}

}  // namespace kestrin::platform::hid
