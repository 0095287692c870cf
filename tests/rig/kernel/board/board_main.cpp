// SPDX-License-Identifier: MIT
// The project's simulated board behind the kernel's own HID stack:
//   board uhid [KEY=VALUE ...]                                 through /dev/uhid
//   board usb FUNCTIONS BINDING CONTROLLER [KEY=VALUE ...]     as a USB gadget, see GadgetDevice::Place
// The keys are those of BoardPlan.
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "rig/kernel/board/BoardPlan.h"
#include "rig/kernel/board/GadgetDevice.h"
#include "rig/kernel/board/Log.h"
#include "rig/kernel/board/ServedBoard.h"
#include "rig/kernel/board/UhidDevice.h"
#include "simulator/store/StoredBoard.h"

using namespace kestrin::rig;

int main(int argc, char** argv) {
  const std::vector<std::string_view> words(argv + 1, argv + argc);
  const bool usb = !words.empty() && words[0] == "usb";
  const std::size_t keys = usb ? 4 : 1;
  if (words.size() < keys || (!usb && words[0] != "uhid")) {
    Log("usage: board uhid [KEY=VALUE ...] | board usb FUNCTIONS BINDING CONTROLLER [KEY=VALUE ...]");
    return 2;
  }
  auto plan = BoardPlan::Parse(std::span(words).subspan(keys));
  if (!plan) {
    Log(plan.Text());
    return 2;
  }
  auto firmware = kestrin::simulator::store::OpenBoard(plan->firmware);
  if (!firmware) {
    Log(firmware.Text());
    return 1;
  }
  ServedBoard board(*std::move(plan), *std::move(firmware));
  if (!usb) return UhidDevice(std::move(board)).Serve();
  return GadgetDevice(std::move(board), {words[1], words[2], std::string(words[3])}).Serve();
}
