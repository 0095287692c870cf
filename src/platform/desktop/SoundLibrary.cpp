// SPDX-License-Identifier: MIT
#include "platform/desktop/SoundLibrary.h"

#ifdef KESTRIN_HAVE_PULSE
#include <pulse/version.h>
#endif

namespace kestrin::platform::desktop {

std::string SoundLibrary() {
#ifdef KESTRIN_HAVE_PULSE
  return std::string("libpulse ") + pa_get_library_version();
#else
  return "";
#endif
}

}  // namespace kestrin::platform::desktop
