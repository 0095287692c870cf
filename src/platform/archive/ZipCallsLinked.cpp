// SPDX-License-Identifier: MIT
#include "platform/archive/ZipCalls.h"

namespace kestrin::platform::archive {

// It is part of the program, which would not have started without it.
bool IsZipLibraryThere() { return true; }

}  // namespace kestrin::platform::archive
