// SPDX-License-Identifier: MIT
#include "platform/archive/ZipLibrary.h"

#include <zip.h>

#include "platform/archive/ZipCalls.h"

namespace kestrin::platform::archive {

std::string ZipLibrary() { return IsZipLibraryThere() ? std::string("libzip ") + zip_libzip_version() : ""; }

}  // namespace kestrin::platform::archive
