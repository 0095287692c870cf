// SPDX-License-Identifier: MIT
#pragma once

#include <curl/curl.h>

#include <string>
#include <string_view>

namespace kestrin::platform::net {

/// What kept a request from an encrypted connection, for the person, with what to do; "" when the result of libcurl
/// tells of something else. `words` is what libcurl says of it, `certificates` the file that is trusted, or "".
[[nodiscard]] std::string EncryptionTrouble(CURLcode result, std::string_view words, const std::string& certificates);

}  // namespace kestrin::platform::net
