// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/hid/ReportDescriptor.h"

namespace kestrin::platform::hid {

/// The state machine behind ReportDescriptor::Read(): walks through the items and fills a descriptor.
class DescriptorReader {
 public:
  explicit DescriptorReader(ReportDescriptor& descriptor) : m_descriptor(descriptor) {}

  /// Reads all items. Returns what is wrong, "" when all is well.
  [[nodiscard]] std::string Read(std::span<const std::uint8_t> bytes);

 private:
  /// An item's data: 0, 1, 2 or 4 bytes, least significant first. Whether they are signed only the item knows.
  struct Data {
    std::uint32_t value = 0;
    int bytes = 0;

    [[nodiscard]] std::int32_t Signed() const;
    /// Bounded to 2^31-1.
    [[nodiscard]] std::int32_t Unsigned() const;
  };
  /// A usage; `hasPage` when it carries its usage page in its upper half.
  struct Usage {
    std::uint32_t value = 0;
    bool hasPage = false;
  };
  /// Usages first .. last.
  struct UsageRange {
    Usage first;
    Usage last;
  };
  /// What holds until it is changed, and what push and pop keep and bring back.
  struct Globals {
    std::uint32_t usagePage = 0;
    Data logicalMinimum;
    Data logicalMaximum;
    Data physicalMinimum;
    Data physicalMaximum;
    std::uint32_t reportSize = 0;
    std::uint32_t reportCount = 0;
    std::uint8_t reportId = 0;
  };
  /// What holds for the next main item only.
  struct Locals {
    std::vector<UsageRange> usages;
    std::optional<Usage> usageMinimum;
    std::vector<std::uint32_t> strings;
    bool inDelimiter = false;
    bool delimiterHasUsage = false;
  };

  // Each of these returns what is wrong, "" when all is well.
  [[nodiscard]] std::string ShortItem(std::uint8_t prefix, Data data);
  [[nodiscard]] std::string MainItem(int tag, Data data);
  [[nodiscard]] std::string GlobalItem(int tag, Data data);
  [[nodiscard]] std::string LocalItem(int tag, Data data);
  [[nodiscard]] std::string AddUsages(UsageRange range);
  [[nodiscard]] std::string AddField(core::device::ReportType type, std::uint32_t flags);
  [[nodiscard]] std::string AddVariables(std::size_t report, std::uint32_t flags);
  [[nodiscard]] std::string AddVariable(std::size_t report, std::uint32_t flags, UsageRange usage,
                                        std::size_t firstElement, std::size_t count, std::size_t position);

  [[nodiscard]] std::size_t ReportIndex(core::device::ReportType type);
  [[nodiscard]] core::device::VariableAttributes Attributes(core::device::ReportType type, std::uint32_t flags,
                                                            std::int32_t usagePage) const;

  ReportDescriptor& m_descriptor;
  Globals m_globals;
  std::vector<Globals> m_pushed;
  Locals m_locals;
  std::size_t m_openCollections = 0;
  bool m_idSeen = false;
};

}  // namespace kestrin::platform::hid
