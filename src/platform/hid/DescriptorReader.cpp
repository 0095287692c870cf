// SPDX-License-Identifier: MIT
#include "platform/hid/DescriptorReader.h"

#include <algorithm>
#include <limits>

namespace kestrin::platform::hid {

namespace {

constexpr std::uint8_t kLongItem = 0xFE;
constexpr std::uint32_t kButtonPage = 9;

enum ItemType { kMain = 0, kGlobal = 1, kLocal = 2 };
enum MainTag { kInput = 0x8, kOutput = 0x9, kCollection = 0xA, kFeature = 0xB, kEndCollection = 0xC };
enum GlobalTag {
  kUsagePage = 0x0,
  kLogicalMinimum = 0x1,
  kLogicalMaximum = 0x2,
  kPhysicalMinimum = 0x3,
  kPhysicalMaximum = 0x4,
  kReportSize = 0x7,
  kReportId = 0x8,
  kReportCount = 0x9,
  kPush = 0xA,
  kPop = 0xB
};
enum LocalTag {
  kUsage = 0x0,
  kUsageMinimum = 0x1,
  kUsageMaximum = 0x2,
  kStringIndex = 0x7,
  kStringMinimum = 0x8,
  kStringMaximum = 0x9,
  kDelimiter = 0xA
};

/// The bits of an input, output or feature item. Each names the state that a 1 stands for.
enum FieldFlag : std::uint32_t {
  kConstant = 1U << 0,
  kVariable = 1U << 1,
  kRelative = 1U << 2,
  kWrap = 1U << 3,
  kNonlinear = 1U << 4,
  kNoPreferredState = 1U << 5,
  kNullState = 1U << 6,
  kVolatileFlag = 1U << 7,
  kBufferedBytes = 1U << 8
};

/// The data bytes behind a short item's prefix, by the prefix's lowest two bits.
constexpr int kDataBytes[4] = {0, 1, 2, 4};

}  // namespace

std::int32_t DescriptorReader::Data::Signed() const {
  if (bytes == 1) return static_cast<std::int8_t>(value);
  if (bytes == 2) return static_cast<std::int16_t>(value);
  return static_cast<std::int32_t>(value);
}

std::int32_t DescriptorReader::Data::Unsigned() const {
  constexpr auto kMost = static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max());
  return static_cast<std::int32_t>(std::min(value, kMost));
}

std::string DescriptorReader::Read(std::span<const std::uint8_t> bytes) {
  if (bytes.empty()) return "the report descriptor is empty";
  std::size_t at = 0;
  while (at < bytes.size()) {
    const std::string place = "byte " + std::to_string(at) + " of the report descriptor: ";
    const std::uint8_t prefix = bytes[at];
    const std::size_t left = bytes.size() - at - 1;
    if (prefix == kLongItem) {
      // No long item has ever been defined; they are stepped over.
      if (left < 2 || left - 2 < bytes[at + 1]) return place + "a long item is cut off";
      at += 3 + std::size_t{bytes[at + 1]};
      continue;
    }
    Data data;
    data.bytes = kDataBytes[prefix & 3];
    if (left < static_cast<std::size_t>(data.bytes)) return place + "an item is cut off";
    for (int i = 0; i < data.bytes; ++i) {
      data.value |= static_cast<std::uint32_t>(bytes[at + 1 + static_cast<std::size_t>(i)]) << (8 * i);
    }
    if (std::string error = ShortItem(prefix, data); !error.empty()) return place + error;
    at += 1 + static_cast<std::size_t>(data.bytes);
  }
  if (m_openCollections > 0) return "the report descriptor ends inside a collection";
  return "";
}

std::string DescriptorReader::ShortItem(std::uint8_t prefix, Data data) {
  const int tag = prefix >> 4;
  switch ((prefix >> 2) & 3) {
    case kMain: {
      std::string error = MainItem(tag, data);
      m_locals = Locals();
      return error;
    }
    case kGlobal:
      return GlobalItem(tag, data);
    case kLocal:
      return LocalItem(tag, data);
    default:
      return "";  // A reserved type says nothing about fields.
  }
}

std::string DescriptorReader::MainItem(int tag, Data data) {
  if (m_locals.inDelimiter) return "a delimited set of usages is not closed";
  if (m_locals.usageMinimum) return "a usage minimum has no maximum";
  switch (tag) {
    case kInput:
      return AddField(core::device::ReportType::Input, data.value);
    case kOutput:
      return AddField(core::device::ReportType::Output, data.value);
    case kFeature:
      return AddField(core::device::ReportType::Feature, data.value);
    case kCollection:
      if (m_openCollections == ReportDescriptor::kMaxNesting) return "collections are nested too deeply";
      ++m_openCollections;
      return "";
    case kEndCollection:
      if (m_openCollections == 0) return "a collection ends that did not begin";
      --m_openCollections;
      return "";
    default:
      return "";
  }
}

std::string DescriptorReader::GlobalItem(int tag, Data data) {
  switch (tag) {
    case kUsagePage:
      if (data.value > 0xFFFF) return "a usage page is larger than 16 bits";
      m_globals.usagePage = data.value;
      return "";
    case kLogicalMinimum:
      m_globals.logicalMinimum = data;
      return "";
    case kLogicalMaximum:
      m_globals.logicalMaximum = data;
      return "";
    case kPhysicalMinimum:
      m_globals.physicalMinimum = data;
      return "";
    case kPhysicalMaximum:
      m_globals.physicalMaximum = data;
      return "";
    case kReportSize:
      if (data.value > ReportDescriptor::kMaxElementBits) return "an element is wider than 256 bits";
      m_globals.reportSize = data.value;
      return "";
    case kReportCount:
      m_globals.reportCount = data.value;
      return "";
    case kReportId:
      if (data.value == 0 || data.value > 255) return "a report id is not in 1 .. 255";
      if (!m_idSeen && !m_descriptor.m_reports.empty()) return "a report id comes behind fields without one";
      m_globals.reportId = static_cast<std::uint8_t>(data.value);
      m_idSeen = true;
      return "";
    case kPush:
      if (m_pushed.size() == ReportDescriptor::kMaxNesting) return "states are pushed too deeply";
      m_pushed.push_back(m_globals);
      return "";
    case kPop:
      if (m_pushed.empty()) return "a state is popped that was not pushed";
      m_globals = m_pushed.back();
      m_pushed.pop_back();
      return "";
    default:
      return "";  // Units do not matter here.
  }
}

std::string DescriptorReader::LocalItem(int tag, Data data) {
  const Usage usage{data.value, data.bytes == 4};
  switch (tag) {
    case kUsage:
      return AddUsages({usage, usage});
    case kUsageMinimum:
      m_locals.usageMinimum = usage;
      return "";
    case kUsageMaximum: {
      if (!m_locals.usageMinimum) return "a usage maximum has no minimum";
      const UsageRange range{*m_locals.usageMinimum, usage};
      m_locals.usageMinimum.reset();
      if (range.first.hasPage != range.last.hasPage ||
          (usage.hasPage && range.first.value >> 16 != usage.value >> 16)) {
        return "a usage range spans two usage pages";
      }
      if (range.first.value > range.last.value) return "a usage minimum is above its maximum";
      return AddUsages(range);
    }
    case kStringIndex:
      if (m_locals.strings.size() < ReportDescriptor::kMaxUsagesPerItem) m_locals.strings.push_back(data.value);
      return "";
    case kDelimiter:
      if ((data.value == 1) == m_locals.inDelimiter) return "delimiters do not match";
      m_locals.inDelimiter = data.value == 1;
      m_locals.delimiterHasUsage = false;
      return "";
    default:
      return "";  // Designators name body parts; string ranges name nothing that the boards have.
  }
}

std::string DescriptorReader::AddUsages(UsageRange range) {
  if (m_locals.inDelimiter) {
    if (m_locals.delimiterHasUsage) return "";
    m_locals.delimiterHasUsage = true;
  }
  if (m_locals.usages.size() == ReportDescriptor::kMaxUsagesPerItem) return "a field has too many usages";
  m_locals.usages.push_back(range);
  return "";
}

std::string DescriptorReader::AddField(core::device::ReportType type, std::uint32_t flags) {
  const std::uint64_t bits = std::uint64_t{m_globals.reportSize} * m_globals.reportCount;
  const std::size_t report = ReportIndex(type);
  if (m_descriptor.m_reports[report].bits + bits > ReportDescriptor::kMaxReportBytes * 8) {
    return "a report is longer than " + std::to_string(ReportDescriptor::kMaxReportBytes) + " bytes";
  }
  if (bits > 0 && (flags & kConstant) == 0) {
    if (std::string error = AddVariables(report, flags); !error.empty()) return error;
  }
  m_descriptor.m_reports[report].bits += static_cast<std::size_t>(bits);
  return "";
}

std::string DescriptorReader::AddVariables(std::size_t report, std::uint32_t flags) {
  const std::size_t count = m_globals.reportCount;
  std::size_t element = 0;
  std::size_t position = 0;
  for (std::size_t i = 0; i < m_locals.usages.size() && element < count; ++i) {
    const UsageRange& range = m_locals.usages[i];
    if ((flags & kVariable) == 0) {
      if (std::string error = AddVariable(report, flags, range, 0, count, position++); !error.empty()) return error;
      continue;
    }
    const bool lastRange = i + 1 == m_locals.usages.size();
    for (std::uint32_t value = range.first.value; element < count; ++value) {
      const bool last = value == range.last.value;
      const Usage usage{value, range.first.hasPage};
      const std::size_t elements = last && lastRange ? count - element : 1;
      if (std::string error = AddVariable(report, flags, {usage, usage}, element, elements, position++);
          !error.empty()) {
        return error;
      }
      element += elements;
      if (last) break;
    }
  }
  return "";
}

std::string DescriptorReader::AddVariable(std::size_t report, std::uint32_t flags, UsageRange usage,
                                          std::size_t firstElement, std::size_t count, std::size_t position) {
  if (m_descriptor.m_variables.size() == ReportDescriptor::kMaxVariables) return "there are too many fields";
  const DescriptorReport& layout = m_descriptor.m_reports[report];
  DescriptorVariable variable;
  variable.report = report;
  variable.usagePage = static_cast<std::int32_t>(usage.first.hasPage ? usage.first.value >> 16 : m_globals.usagePage);
  variable.usageMinimum = static_cast<std::int32_t>(usage.first.value & 0xFFFF);
  variable.usageMaximum = static_cast<std::int32_t>(usage.last.value & 0xFFFF);
  variable.bitOffset = layout.bits + firstElement * m_globals.reportSize;
  variable.count = count;
  if (!m_locals.strings.empty()) {
    variable.stringIndex = m_locals.strings[std::min(position, m_locals.strings.size() - 1)];
  }
  variable.attributes = Attributes(layout.type, flags, variable.usagePage);
  m_descriptor.m_variables.push_back(variable);
  return "";
}

std::size_t DescriptorReader::ReportIndex(core::device::ReportType type) {
  auto& reports = m_descriptor.m_reports;
  const auto found = std::find_if(reports.begin(), reports.end(), [&](const DescriptorReport& report) {
    return report.type == type && report.id == m_globals.reportId;
  });
  if (found != reports.end()) return static_cast<std::size_t>(found - reports.begin());
  reports.push_back({type, m_globals.reportId, 0});
  return reports.size() - 1;
}

core::device::VariableAttributes DescriptorReader::Attributes(core::device::ReportType type, std::uint32_t flags,
                                                              std::int32_t usagePage) const {
  const auto is = [flags](FieldFlag flag) { return (flags & flag) != 0; };
  core::device::VariableAttributes a;
  a.IsButton = m_globals.reportSize == 1 || usagePage == static_cast<std::int32_t>(kButtonPage);
  a.Volatile = is(kVolatileFlag) && type != core::device::ReportType::Input;  // The bit is reserved in input items.
  a.NoWrap = !is(kWrap);
  a.NoPrefState = is(kNoPreferredState);
  a.Linear = !is(kNonlinear);
  a.HasNullState = is(kNullState);
  a.BitsNotBuffer = !is(kBufferedBytes);
  a.ArrayNotVariable = !is(kVariable);
  a.AbsoluteNotRelative = !is(kRelative);

  const auto maximum = [](const Data& low, const Data& high) {
    return low.Signed() < 0 ? high.Signed() : high.Unsigned();
  };
  a.LogicalMinimum = m_globals.logicalMinimum.Signed();
  a.LogicalMaximum = maximum(m_globals.logicalMinimum, m_globals.logicalMaximum);
  a.PhysicalMinimum = m_globals.physicalMinimum.Signed();
  a.PhysicalMaximum = maximum(m_globals.physicalMinimum, m_globals.physicalMaximum);
  if (a.PhysicalMinimum == 0 && a.PhysicalMaximum == 0) {
    a.PhysicalMinimum = a.LogicalMinimum;
    a.PhysicalMaximum = a.LogicalMaximum;
  }
  a.SizeInBits = static_cast<std::int32_t>(m_globals.reportSize);
  return a;
}

}  // namespace kestrin::platform::hid
