// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace kestrin::core::update {

/// Which update server is asked: [http://|https://]HOST[:PORT]. Without the first it is plain HTTP.
struct UpdateServer {
  /// The environment variable that names one.
  static constexpr const char* kEnvironment = "KESTRIN_UPDATE_SERVER";
  /// The environment variable that names a file of certificates (PEM) which are trusted in place of the computer's own.
  static constexpr const char* kCertificates = "KESTRIN_CA_FILE";
  /// How a server is named, for texts.
  static constexpr const char* kForm = "HOST or HOST:PORT, with https:// in front where the connection is encrypted";

  /// The option's server, else the environment variable's, else the one that this build was made for; "" counts as not
  /// given. Neither needs to be valid.
  [[nodiscard]] static std::string Choose(std::string_view option, const char* environment);
  /// Whether this is HOST or HOST:PORT: letters, digits, ".", "-" and "_" (or an IPv6 address in brackets), a port from
  /// 1 to 65535; "http://" or "https://" in any case of letters may stand in front, nothing behind.
  [[nodiscard]] static bool IsValid(std::string_view server);
  /// HOST or HOST:PORT of a valid server.
  [[nodiscard]] static std::string_view Host(std::string_view server);
  /// Whether a valid server is asked over an encrypted connection.
  [[nodiscard]] static bool IsEncrypted(std::string_view server);
};

}  // namespace kestrin::core::update
