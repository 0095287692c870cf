// SPDX-License-Identifier: MIT
#include "platform/hid/HidLibrary.h"

#include <hidapi.h>

namespace kestrin::platform::hid {

std::string HidLibrary() { return std::string("hidapi ") + hid_version_str(); }

std::string MonitorLibrary() {
#ifdef KESTRIN_HAVE_UDEV
  return "libudev";
#else
  return "";
#endif
}

}  // namespace kestrin::platform::hid
