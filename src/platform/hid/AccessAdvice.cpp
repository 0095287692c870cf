#include "platform/hid/AccessAdvice.h"

namespace kestrin::hid {

std::string AccessAdvice(const std::string& path) {
  std::string text = "A board is connected at " + path + ", but you are not permitted to open it. ";
#ifdef __linux__
  text +=
      "To permit it, install the rule that comes with this program: "
      "sudo cp 70-kestrin.rules /etc/udev/rules.d/ && sudo udevadm control --reload && sudo udevadm trigger, "
      "then plug the board in again.";
#else
  text += "Close other programs that use it, or ask the administrator of this computer.";
#endif
  return text;
}

std::string OpenAdvice(const std::string& path, const std::string& reason) {
  return "A board is connected at " + path + ", but it could not be opened: " + reason +
         ". Plug the board in again; close other programs that use it.";
}

}  // namespace kestrin::hid
