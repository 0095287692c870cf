// SPDX-License-Identifier: MIT
#include "rig/kernel/board/Descriptors.h"

#include "support/BoardDescriptors.h"

namespace kestrin::rig {

namespace {

/// A mouse with three buttons.
std::vector<std::uint8_t> MouseDescriptor() {
  return {
      0x05, 0x01,  // Usage Page (Generic Desktop)
      0x09, 0x02,  // Usage (Mouse)
      0xA1, 0x01,  // Collection (Application)
      0x09, 0x01,  //   Usage (Pointer)
      0xA1, 0x00,  //   Collection (Physical)
      0x05, 0x09,  //     Usage Page (Button)
      0x19, 0x01,  //     Usage Minimum (1)
      0x29, 0x03,  //     Usage Maximum (3)
      0x15, 0x00,  //     Logical Minimum (0)
      0x25, 0x01,  //     Logical Maximum (1)
      0x95, 0x03,  //     Report Count (3)
      0x75, 0x01,  //     Report Size (1)
      0x81, 0x02,  //     Input (Data, Variable, Absolute)
      0x95, 0x01,  //     Report Count (1)
      0x75, 0x05,  //     Report Size (5)
      0x81, 0x03,  //     Input (Constant)
      0x05, 0x01,  //     Usage Page (Generic Desktop)
      0x09, 0x30,  //     Usage (X)
      0x09, 0x31,  //     Usage (Y)
      0x15, 0x81,  //     Logical Minimum (-127)
      0x25, 0x7F,  //     Logical Maximum (127)
      0x75, 0x08,  //     Report Size (8)
      0x95, 0x02,  //     Report Count (2)
      0x81, 0x06,  //     Input (Data, Variable, Relative)
      0xC0,        //   End Collection
      0xC0,        // End Collection
  };
}

/// A device of a maker that has given a board's ids to something else: eight bytes in, nothing out, another usage page.
std::vector<std::uint8_t> OtherDescriptor() {
  return {
      0x06, 0x01, 0xFF,  // Usage Page (vendor-defined FF01)
      0x09, 0x10,        // Usage (16)
      0xA1, 0x01,        // Collection (Application)
      0x15, 0x00,        //   Logical Minimum (0)
      0x26, 0xFF, 0x00,  //   Logical Maximum (255)
      0x75, 0x08,        //   Report Size (8)
      0x95, 0x08,        //   Report Count (8)
      0x09, 0x11,        //   Usage (17)
      0x81, 0x02,        //   Input (Data, Variable, Absolute)
      0xC0,              // End Collection
  };
}

}  // namespace

std::vector<std::uint8_t> ReportDescriptor(BoardPlan::Kind kind) {
  switch (kind) {
    case BoardPlan::Kind::Numbered:
      return support::NumberedBoardDescriptor();
    case BoardPlan::Kind::Mouse:
      return MouseDescriptor();
    case BoardPlan::Kind::OtherReports:
      return OtherDescriptor();
    case BoardPlan::Kind::Plain:
      break;
  }
  return support::BoardDescriptor();
}

}  // namespace kestrin::rig
