// SPDX-License-Identifier: MIT
#include "platform/net/NetLibrary.h"

#include <curl/curl.h>

namespace kestrin::platform::net {

std::string NetLibrary() {
  const curl_version_info_data& about = *curl_version_info(CURLVERSION_NOW);
  const std::string name = std::string("libcurl ") + about.version;
  return about.ssl_version == nullptr ? name : name + " with " + about.ssl_version;
}

}  // namespace kestrin::platform::net
