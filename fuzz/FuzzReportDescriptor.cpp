// SPDX-License-Identifier: MIT
// Any bytes as a report descriptor: read, and when they are one, every field is written and read back.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "MemoryFolder.h"
#include "platform/hid/HidInterface.h"
#include "platform/hid/ReportDescriptor.h"
#include "support/FakeHidStack.h"

using kestrin::fuzz::Require;
using kestrin::platform::hid::DescriptorVariable;
using kestrin::platform::hid::HidInterface;
using kestrin::platform::hid::ReportDescriptor;

namespace {

void CheckLayout(const ReportDescriptor& descriptor) {
  Require(descriptor.Variables().size() <= ReportDescriptor::kMaxVariables);
  for (const auto& report : descriptor.Reports()) Require(report.Bytes() <= ReportDescriptor::kMaxReportBytes);
  for (std::size_t i = 0; i < descriptor.Variables().size(); ++i) {
    const DescriptorVariable& variable = descriptor.Variables()[i];
    Require(variable.report < descriptor.Reports().size());
    const auto& report = descriptor.Reports()[variable.report];
    Require(variable.count > 0 && variable.attributes.SizeInBits > 0);
    const auto bits = static_cast<std::size_t>(variable.attributes.SizeInBits);
    Require(variable.bitOffset + variable.count * bits <= report.bits);
    Require(variable.usageMinimum <= variable.usageMaximum);
    const auto found = descriptor.Find(report.type, variable.usageMaximum, variable.usagePage);
    Require(found >= 0 && static_cast<std::size_t>(found) <= i);
  }
}

void CheckValues(HidInterface& interface, std::size_t number) {
  const DescriptorVariable& variable = interface.Descriptor().Variables()[number];
  std::vector<std::uint8_t> written(variable.count + 1);
  for (std::size_t i = 0; i < written.size(); ++i) written[i] = static_cast<std::uint8_t>(i * 37 + number);
  interface.SetElements(number, written);
  std::vector<std::uint8_t> read(written.size(), 0xEE);
  interface.GetElements(number, read);
  const int bits = std::min(variable.attributes.SizeInBits, 8);
  for (std::size_t i = 0; i < variable.count; ++i) Require(read[i] == (written[i] & ((1 << bits) - 1)));
  Require(read.back() == 0);

  const std::int32_t value = interface.UnScaledValue(number);
  interface.SetUnScaledValue(number, value);
  Require(interface.UnScaledValue(number) == value);
  interface.SetScaledValue(number, interface.ScaledValue(number));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto descriptor = ReportDescriptor::Read({data, size});
  if (!descriptor) {
    Require(!descriptor.Text().empty());
    return 0;
  }
  CheckLayout(*descriptor);
  kestrin::support::FakeClock clock;
  HidInterface interface(
      1, {},
      std::make_unique<kestrin::support::FakeHidConnection>(std::make_shared<kestrin::support::FakeHidDevice>(), clock),
      *descriptor);
  // A few of many fields are enough; each may cover the whole report.
  const std::size_t checked = std::min<std::size_t>(descriptor->Variables().size(), 16);
  for (std::size_t i = 0; i < checked; ++i) CheckValues(interface, i);
  return 0;
}
