// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

namespace kestrin::support {

/// What a board without report ids describes: 1,028 bytes out, two bytes in.
inline std::vector<std::uint8_t> BoardDescriptor() {
  return {
      0x06, 0x00, 0xFF,  // Usage Page (vendor-defined FF00)
      0x09, 0x01,        // Usage (1)
      0xA1, 0x01,        // Collection (Application)
      0x15, 0x00,        //   Logical Minimum (0)
      0x26, 0xFF, 0x00,  //   Logical Maximum (255)
      0x75, 0x08,        //   Report Size (8)
      0x09, 0x01,        //   Usage (1)
      0x96, 0x04, 0x04,  //   Report Count (1028)
      0x91, 0x02,        //   Output (Data, Variable, Absolute)
      0x09, 0x02,        //   Usage (2)
      0x95, 0x02,        //   Report Count (2)
      0x81, 0x02,        //   Input (Data, Variable, Absolute)
      0xC0,              // End Collection
  };
}

/// The same fields behind report ids: output 1, input 2, and beside them an input report 3 that is not the board's
/// answer.
inline std::vector<std::uint8_t> NumberedBoardDescriptor() {
  return {
      0x06, 0x00, 0xFF,  // Usage Page (vendor-defined FF00)
      0x09, 0x01,        // Usage (1)
      0xA1, 0x01,        // Collection (Application)
      0x15, 0x00,        //   Logical Minimum (0)
      0x26, 0xFF, 0x00,  //   Logical Maximum (255)
      0x75, 0x08,        //   Report Size (8)
      0x85, 0x01,        //   Report ID (1)
      0x09, 0x01,        //   Usage (1)
      0x96, 0x04, 0x04,  //   Report Count (1028)
      0x91, 0x02,        //   Output (Data, Variable, Absolute)
      0x85, 0x02,        //   Report ID (2)
      0x09, 0x02,        //   Usage (2)
      0x95, 0x02,        //   Report Count (2)
      0x81, 0x02,        //   Input (Data, Variable, Absolute)
      0x85, 0x03,        //   Report ID (3)
      0x09, 0x03,        //   Usage (3)
      0x95, 0x04,        //   Report Count (4)
      0x81, 0x02,        //   Input (Data, Variable, Absolute)
      0xC0,              // End Collection
  };
}

}  // namespace kestrin::support
