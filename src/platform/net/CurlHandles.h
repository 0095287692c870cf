// SPDX-License-Identifier: MIT
#pragma once

#include <curl/curl.h>

#include <memory>

namespace kestrin::platform::net {

struct CurlDeleter {
  void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
  void operator()(curl_slist* lines) const { curl_slist_free_all(lines); }
};
/// Apart from the others: libcurl may know both kinds of handle as void.
struct CurlMultiDeleter {
  void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
};

/// What libcurl hands out, given back at the end.
using CurlEasy = std::unique_ptr<CURL, CurlDeleter>;
using CurlLines = std::unique_ptr<curl_slist, CurlDeleter>;
using CurlMulti = std::unique_ptr<CURLM, CurlMultiDeleter>;

}  // namespace kestrin::platform::net
