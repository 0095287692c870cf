// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/hid/ReportDescriptor.h"
#include "support/BoardDescriptors.h"

namespace kestrin::platform::hid {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct DamageCase {
  Bytes bytes;
  const char* error;
};

Bytes Repeat(const Bytes& bytes, std::size_t times) {
  Bytes all;
  for (std::size_t i = 0; i < times; ++i) all.insert(all.end(), bytes.begin(), bytes.end());
  return all;
}

Bytes Join(Bytes first, const Bytes& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

TEST(DamagedReportDescriptor, IsRefusedWithThePlaceAndTheReason) {
  const std::vector<DamageCase> cases = {
      {{}, "the report descriptor is empty"},
      {{0x06, 0x00}, "byte 0 of the report descriptor: an item is cut off"},
      {{0x75, 0x08, 0x09}, "byte 2 of the report descriptor: an item is cut off"},
      {{0x27, 0x00, 0x00, 0x00}, "byte 0 of the report descriptor: an item is cut off"},
      {{0xFE}, "byte 0 of the report descriptor: a long item is cut off"},
      {{0xFE, 0x00}, "byte 0 of the report descriptor: a long item is cut off"},
      {{0xFE, 0x02, 0x10, 0x00}, "byte 0 of the report descriptor: a long item is cut off"},
      {{0xA1, 0x01}, "the report descriptor ends inside a collection"},
      {{0xC0}, "byte 0 of the report descriptor: a collection ends that did not begin"},
      {{0xA1, 0x01, 0xC0, 0xC0}, "byte 3 of the report descriptor: a collection ends that did not begin"},
      {{0xB4}, "byte 0 of the report descriptor: a state is popped that was not pushed"},
      {{0x85, 0x00}, "byte 0 of the report descriptor: a report id is not in 1 .. 255"},
      {{0x86, 0x00, 0x01}, "byte 0 of the report descriptor: a report id is not in 1 .. 255"},
      {{0x75, 0x08, 0x95, 0x01, 0x81, 0x01, 0x85, 0x01},
       "byte 6 of the report descriptor: a report id comes behind fields without one"},
      {{0x07, 0x00, 0x00, 0x01, 0x00}, "byte 0 of the report descriptor: a usage page is larger than 16 bits"},
      {{0x76, 0x01, 0x01}, "byte 0 of the report descriptor: an element is wider than 256 bits"},
      {{0x75, 0x08, 0x97, 0x01, 0x40, 0x00, 0x00, 0x81, 0x01},
       "byte 7 of the report descriptor: a report is longer than 16384 bytes"},
      {{0x76, 0x00, 0x01, 0x97, 0xFF, 0xFF, 0xFF, 0xFF, 0x81, 0x01},
       "byte 8 of the report descriptor: a report is longer than 16384 bytes"},
      {{0x29, 0x05}, "byte 0 of the report descriptor: a usage maximum has no minimum"},
      {{0x19, 0x05, 0x29, 0x04}, "byte 2 of the report descriptor: a usage minimum is above its maximum"},
      {{0x19, 0x05, 0x81, 0x02}, "byte 2 of the report descriptor: a usage minimum has no maximum"},
      {{0x1B, 0x01, 0x00, 0x01, 0x00, 0x2B, 0x02, 0x00, 0x02, 0x00},
       "byte 5 of the report descriptor: a usage range spans two usage pages"},
      {{0x1B, 0x01, 0x00, 0x01, 0x00, 0x29, 0x02},
       "byte 5 of the report descriptor: a usage range spans two usage pages"},
      {{0xA9, 0x00}, "byte 0 of the report descriptor: delimiters do not match"},
      {{0xA9, 0x01, 0xA9, 0x01}, "byte 2 of the report descriptor: delimiters do not match"},
      {{0xA9, 0x01, 0x81, 0x02}, "byte 2 of the report descriptor: a delimited set of usages is not closed"},
      {Repeat({0xA1, 0x00}, 65), "byte 128 of the report descriptor: collections are nested too deeply"},
      {Repeat({0xA4}, 65), "byte 64 of the report descriptor: states are pushed too deeply"},
      {Repeat({0x09, 0x01}, 4097), "byte 8192 of the report descriptor: a field has too many usages"},
      {Join({0x75, 0x01, 0x96, 0x01, 0x10, 0x19, 0x00, 0x2A, 0xFF, 0xFF}, {0x81, 0x02}),
       "byte 10 of the report descriptor: there are too many fields"},
  };
  for (const DamageCase& c : cases) {
    const auto read = ReportDescriptor::Read(c.bytes);
    ASSERT_FALSE(read) << c.error;
    EXPECT_EQ(read.Text(), c.error);
    EXPECT_EQ(read.Why().kind, core::base::FailureKind::NotValid) << c.error;
  }
}

TEST(DamagedReportDescriptor, ReportsOfExactlyTheLimitAreRead) {
  const Bytes bytes{0x75, 0x08, 0x96, 0x00, 0x40, 0x81, 0x01};
  const auto read = ReportDescriptor::Read(bytes);
  ASSERT_TRUE(read) << read.Text();
  EXPECT_EQ(read->Reports().at(0).Bytes(), 16384U);
}

TEST(DamagedReportDescriptor, EveryCutOfTheBoardsDescriptorIsRefused) {
  const Bytes whole = support::BoardDescriptor();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    const bool beforeCollection = length == 3 || length == 5;  // whole items, nothing opened yet
    EXPECT_EQ(static_cast<bool>(ReportDescriptor::Read(cut)), beforeCollection) << length << " bytes";
  }
}

}  // namespace
}  // namespace kestrin::platform::hid
