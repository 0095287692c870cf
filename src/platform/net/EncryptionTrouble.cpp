// SPDX-License-Identifier: MIT
#include "platform/net/EncryptionTrouble.h"

#include <algorithm>

#include "core/base/Text.h"
#include "core/update/UpdateServer.h"

namespace kestrin::platform::net {

namespace {

/// As a remark in brackets; the other side may have had a hand in it.
std::string InBrackets(std::string_view words) {
  std::string remark(words);
  std::replace_if(
      remark.begin(), remark.end(), [](char c) { return c >= 0 && c < ' '; }, ' ');
  return remark.empty() ? "" : " (" + remark + ")";
}

}  // namespace

std::string EncryptionTrouble(CURLcode result, std::string_view words, const std::string& certificates) {
  switch (result) {
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_ISSUER_ERROR:
      return "Nothing was fetched: the server's certificate does not prove who it is" + InBrackets(words) +
             ". Check the server's address and this computer's date. If both are right, tell whoever runs the server.";
    case CURLE_SSL_CACERT_BADFILE:
      if (certificates.empty())
        return "Nothing was fetched: this computer's list of certificates cannot be read. Install it "
               "(\"ca-certificates\").";
      return "Nothing was fetched: " + core::base::Quoted(certificates) +
             " holds no certificates. Correct the variable " + core::update::UpdateServer::kCertificates + ".";
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CIPHER:
      return "Nothing was fetched: no encrypted connection to the server comes about" + InBrackets(words) +
             ". Check its address and port: a server without encryption is named without https://.";
    default:
      return "";
  }
}

}  // namespace kestrin::platform::net
