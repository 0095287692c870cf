// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "core/base/Result.h"
#include "core/device/THIDagent.h"

namespace kestrin::platform::hid {

/// One report as the descriptor lays it out.
struct DescriptorReport {
  core::device::ReportType type = core::device::ReportType::Input;
  /// The id that stands in front of the report on the wire; 0 when the interface uses no ids.
  std::uint8_t id = 0;
  /// Its length in bits, padding included, id excluded.
  std::size_t bits = 0;

  /// Its length in bytes without the id.
  [[nodiscard]] std::size_t Bytes() const { return (bits + 7) / 8; }
};

/// One field that somebody can look up: elements of equal width, one behind the other.
struct DescriptorVariable {
  /// Index into ReportDescriptor::Reports().
  std::size_t report = 0;
  std::int32_t usagePage = 0;
  /// The usages the field stands for. A variable item has one (minimum equals maximum); an array item, whose elements
  /// name the usages that are active, has a whole range.
  std::int32_t usageMinimum = 0;
  std::int32_t usageMaximum = 0;
  /// Where element 0 begins, in bits from the start of the report without its id.
  std::size_t bitOffset = 0;
  std::size_t count = 0;
  /// Number of the USB string that names the field; 0 for none.
  std::uint32_t stringIndex = 0;
  /// All but the text of the string descriptor, which is not part of the report descriptor.
  core::device::VariableAttributes attributes;
};

/// The reader of HID report descriptors (HID 1.11, section 6.2.2): from the descriptor's bytes to reports and fields.
///
/// What becomes a variable: every data field that has a usage. Of a variable item each usage is one variable of one
/// element, and the last usage takes all elements that are left, so that "usage 1, 1028 times 8 bits" is one variable
/// of 1,028 elements. Of an array item each usage or usage range is one variable that covers the whole array. Constant
/// fields (padding) and fields without a usage take their space and nothing else. Where usages are alternatives
/// (delimiters), the first is taken.
///
/// Ranges: a minimum is signed; a maximum is signed only when its minimum is negative, as "logical maximum FF" behind
/// "logical minimum 0" means 255. A maximum beyond 2^31-1 is held as 2^31-1. A physical range that is absent or 0 .. 0
/// is the logical one.
///
/// IsButton: the field's elements are one bit wide or its usage page is the Button page (9).
class ReportDescriptor {
 public:
  /// Limits that no honest device comes near, so that a damaged descriptor cannot ask for any amount of memory.
  static constexpr std::size_t kMaxReportBytes = 16384;
  static constexpr std::size_t kMaxVariables = 4096;
  static constexpr std::size_t kMaxUsagesPerItem = 4096;
  static constexpr std::uint32_t kMaxElementBits = 256;
  static constexpr std::size_t kMaxNesting = 64;

  /// Reads a whole descriptor. A failure says what is wrong, beginning with the place ("byte 12 of the report
  /// descriptor: ...").
  static core::base::Result<ReportDescriptor> Read(std::span<const std::uint8_t> bytes);

  /// In the order in which the descriptor first mentions them.
  [[nodiscard]] const std::vector<DescriptorReport>& Reports() const { return m_reports; }
  /// In the order of the descriptor.
  [[nodiscard]] const std::vector<DescriptorVariable>& Variables() const { return m_variables; }
  /// Whether every report begins with its id on the wire.
  [[nodiscard]] bool UsesReportIds() const;
  /// Bytes of the longest report of a type without its id; 0 when there is none.
  [[nodiscard]] std::size_t LongestReport(core::device::ReportType type) const;
  /// The first variable with that report type, usage and usage page; -1 when there is none.
  [[nodiscard]] std::int32_t Find(core::device::ReportType type, std::int32_t usage, std::int32_t usagePage) const;

 private:
  friend class DescriptorReader;

  std::vector<DescriptorReport> m_reports;
  std::vector<DescriptorVariable> m_variables;
};

}  // namespace kestrin::platform::hid
