// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "support/StackAgentFixture.h"

namespace kestrin::platform::hid {
namespace {

using core::device::ReportType;
using testing::ElementsAre;

/// An output report of fields that do not stand at byte borders.
class StackAgentValues : public support::StackAgentFixture {
 protected:
  support::FakeHidDevice& OpenOdd() {
    return OpenDevice({
        0x06, 0x00, 0xFF, 0x15, 0x00,                                            // page FF00, from 0
        0x25, 0x07, 0x75, 0x03, 0x95, 0x04, 0x09, 0x01, 0x91, 0x02,              // usage 1: 4 x 3 bits
        0x25, 0x0F, 0x75, 0x04, 0x95, 0x01, 0x09, 0x02, 0x79, 0x05, 0x91, 0x02,  // usage 2: 4 bits, string 5
        0x15, 0x9C, 0x25, 0x64, 0x36, 0x18, 0xFC, 0x46, 0xE8, 0x03,              // -100 .. 100 for -1000 .. 1000
        0x75, 0x08, 0x95, 0x02, 0x09, 0x03, 0x91, 0x02,                          // usage 3: 2 x 8 bits
        0x15, 0x00, 0x26, 0xFF, 0x0F, 0x35, 0x00, 0x45, 0x00,                    // 0 .. 4095
        0x75, 0x0C, 0x95, 0x02, 0x09, 0x04, 0x91, 0x02,                          // usage 4: 2 x 12 bits
    });
  }
  support::FakeHidDevice& OpenDevice(const Bytes& descriptor) {
    support::FakeHidDevice& device = bus.Plug("/dev/hidraw0", descriptor);
    Create();
    EXPECT_TRUE(agent->SearchAndOpen()) << agent->AccessProblem();
    agent->SelectInterface(0);
    return device;
  }
};

TEST_F(StackAgentValues, PacksElementsOfAnyWidth) {
  support::FakeHidDevice& device = OpenOdd();
  Select(ReportType::Output, 1);
  agent->SetElements(Bytes{1, 2, 3, 4});
  Select(ReportType::Output, 2);
  agent->SetElements(Bytes{0x0A});
  Select(ReportType::Output, 3);
  agent->SetElements(Bytes{0x11, 0x22});
  Select(ReportType::Output, 4);
  agent->SetElements(Bytes{0x33, 0x44});
  ASSERT_TRUE(agent->WriteReport());
  // 1 + 2*8 + 3*64 + 4*512 = 0x8D1, and 0xA in the upper four bits; 0x033 and 0x044 share three bytes.
  EXPECT_THAT(device.written, ElementsAre(Bytes{0x00, 0xD1, 0xA8, 0x11, 0x22, 0x33, 0x40, 0x04}));

  Bytes values(4);
  Select(ReportType::Output, 1);
  agent->GetElements(values);
  EXPECT_THAT(values, ElementsAre(1, 2, 3, 4));
}

TEST_F(StackAgentValues, ElementsBeyondTheFieldAreLeftOutAndReadZero) {
  OpenOdd();
  Select(ReportType::Output, 3);
  agent->SetElements(Bytes{1, 2, 3, 4});
  Bytes values(4, 0xEE);
  agent->GetElements(values);
  EXPECT_THAT(values, ElementsAre(1, 2, 0, 0));
  Select(ReportType::Output, 4);
  agent->GetElements(values);
  EXPECT_THAT(values, ElementsAre(0, 0, 0, 0));
}

TEST_F(StackAgentValues, FewerElementsLeaveTheRestAlone) {
  OpenOdd();
  Select(ReportType::Output, 3);
  agent->SetElements(Bytes{1, 2});
  agent->SetElements(Bytes{9});
  Bytes values(2);
  agent->GetElements(values);
  EXPECT_THAT(values, ElementsAre(9, 2));
}

TEST_F(StackAgentValues, UnscaledValuesAreSignedWhereTheRangeIs) {
  OpenOdd();
  Select(ReportType::Output, 3);
  agent->SetUnScaledValue(-100);
  EXPECT_EQ(agent->UnScaledValue(), -100);
  Select(ReportType::Output, 4);
  agent->SetUnScaledValue(4095);
  EXPECT_EQ(agent->UnScaledValue(), 4095);
}

TEST_F(StackAgentValues, ScaledValuesGoFromTheLogicalToThePhysicalRangeAndBack) {
  OpenOdd();
  Select(ReportType::Output, 3);
  for (const std::int32_t logical : {-100, -7, 0, 1, 100}) {
    agent->SetUnScaledValue(logical);
    EXPECT_EQ(agent->ScaledValue(), 10 * logical);
    agent->SetUnScaledValue(0);
    agent->SetScaledValue(10 * logical);
    EXPECT_EQ(agent->UnScaledValue(), logical);
  }
  agent->SetScaledValue(25);  // 2.5, and ties go to even
  EXPECT_EQ(agent->UnScaledValue(), 2);
  agent->SetScaledValue(35);
  EXPECT_EQ(agent->UnScaledValue(), 4);
}

TEST_F(StackAgentValues, AnEmptyRangeIsNotScaled) {
  OpenDevice({0x06, 0x00, 0xFF, 0x75, 0x08, 0x95, 0x01, 0x09, 0x01, 0x91, 0x02});
  Select(ReportType::Output, 1);
  agent->SetScaledValue(77);
  EXPECT_EQ(agent->UnScaledValue(), 77);
  EXPECT_EQ(agent->ScaledValue(), 77);
}

TEST_F(StackAgentValues, AttributesComeWithTheTextOfTheStringDescriptor) {
  OpenOdd();
  Select(ReportType::Output, 2);
  EXPECT_EQ(agent->Attributes().StringDescriptor, "string 5");
  EXPECT_EQ(agent->Attributes().SizeInBits, 4);
  Select(ReportType::Output, 3);
  EXPECT_EQ(agent->Attributes().StringDescriptor, "");
  EXPECT_EQ(agent->Attributes().LogicalMinimum, -100);
  EXPECT_EQ(agent->Attributes().PhysicalMaximum, 1000);
}

TEST_F(StackAgentValues, WithoutASelectionEverythingThrows) {
  Create();
  EXPECT_THROW(static_cast<void>(agent->VendorId()), core::device::AgentError);
  EXPECT_THROW(static_cast<void>(agent->ProductId()), core::device::AgentError);
  EXPECT_THROW(static_cast<void>(agent->InterfaceHandle()), core::device::AgentError);
  EXPECT_THROW(static_cast<void>(agent->FindVariable(ReportType::Output, 1, kPage)), core::device::AgentError);
  EXPECT_THROW(agent->SelectInterface(0), core::device::AgentError);
  EXPECT_THROW(agent->SelectInterface(-1), core::device::AgentError);
  EXPECT_THROW(agent->SelectVariable(0), core::device::AgentError);
  OpenOdd();
  EXPECT_THROW(agent->SelectVariable(4), core::device::AgentError);
  EXPECT_THROW(agent->SelectVariable(-1), core::device::AgentError);
  EXPECT_THROW(static_cast<void>(agent->VariableReportNumber()), core::device::AgentError);
  EXPECT_THROW(static_cast<void>(agent->Attributes()), core::device::AgentError);
  EXPECT_THROW(agent->SetVariableName("x"), core::device::AgentError);
  EXPECT_THROW(agent->SetVariableOption(1), core::device::AgentError);
  EXPECT_THROW(static_cast<void>(agent->UnScaledValue()), core::device::AgentError);
  EXPECT_THROW(agent->SetScaledValue(1), core::device::AgentError);
  EXPECT_THROW(agent->SetElements(Bytes{1}), core::device::AgentError);
}

}  // namespace
}  // namespace kestrin::platform::hid
