// SPDX-License-Identifier: MIT
#include "platform/speaker/SoundLibrary.h"

#ifdef KESTRIN_HAVE_PULSE
#include "platform/speaker/PulseLibrary.h"
#endif

namespace kestrin::platform::speaker {

std::string SoundLibrary() {
#ifdef KESTRIN_HAVE_PULSE
  if (const PulseLibrary* const pulse = PulseLibrary::Find()) return std::string("libpulse ") + pulse->getVersion();
#endif
  return "";
}

}  // namespace kestrin::platform::speaker
