// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace kestrin::core::update {

/// Which update server is asked.
struct UpdateServer {
  /// The environment variable that names one.
  static constexpr const char* kEnvironment = "KESTRIN_UPDATE_SERVER";

  /// The option's server, else the environment variable's, else the one that this build was made for; "" counts as not
  /// given. Neither needs to be valid.
  [[nodiscard]] static std::string Choose(std::string_view option, const char* environment);
  /// Whether this is HOST or HOST:PORT: letters, digits, ".", "-" and "_" (or an IPv6 address in brackets), a port from
  /// 1 to 65535.
  [[nodiscard]] static bool IsValid(std::string_view server);
};

}  // namespace kestrin::core::update
