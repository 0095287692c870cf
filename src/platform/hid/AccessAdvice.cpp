// SPDX-License-Identifier: MIT
#include "platform/hid/AccessAdvice.h"

#include "core/device/THIDagent.h"

namespace kestrin::platform::hid {

namespace {

std::string HowToPermit() {
#ifdef __linux__
  return "To permit it, type \"kestrinctl doctor --install-rule\", or install the rule that comes with this program: "
         "sudo cp 70-kestrin.rules /etc/udev/rules.d/ && sudo udevadm control --reload && sudo udevadm trigger, "
         "then plug the board in again.";
#else
  return "Close other programs that use it, or ask the administrator of this computer.";
#endif
}

}  // namespace

std::string AccessAdvice(const std::string& path, const core::base::Failure& failure) {
  if (failure.kind == core::base::FailureKind::InUse) return core::device::kBoardInUse;
  const std::string connected = "A board is connected at " + path + ", but ";
  if (failure.kind == core::base::FailureKind::NotPermitted)
    return connected + "you are not permitted to open it. " + HowToPermit();
  return connected + "it could not be opened: " + failure.text +
         ". Plug the board in again; close other programs that use it.";
}

}  // namespace kestrin::platform::hid
