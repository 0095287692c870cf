// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kestrin::platform::net {

/// Name and version of the library that is used for the network, and of the one that it encrypts with:
/// "libcurl 7.88.1 with OpenSSL/3.0.15".
[[nodiscard]] std::string NetLibrary();

}  // namespace kestrin::platform::net
