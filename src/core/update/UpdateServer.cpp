// SPDX-License-Identifier: MIT
#include "update/UpdateServer.h"

#include <algorithm>
#include <cstdlib>

#include "base/Text.h"

namespace kestrin::core::update {

namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kHexDigits = "0123456789abcdefABCDEF";

constexpr std::string_view kPlain = "http://";
constexpr std::string_view kEncrypted = "https://";

bool BeginsWith(std::string_view server, std::string_view scheme) {
  return base::EqualsIgnoringCase(server.substr(0, scheme.size()), scheme);
}

bool IsPort(std::string_view text) {
  constexpr std::size_t kMostDigits = 5;
  constexpr int kHighest = 65535;
  if (text.empty() || text.size() > kMostDigits || text.find_first_not_of(kDigits) != text.npos) return false;
  const int port = std::stoi(std::string(text));
  return port >= 1 && port <= kHighest;
}

bool IsHostLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '_';
}

}  // namespace

std::string UpdateServer::Choose(std::string_view option, const char* environment) {
  if (!option.empty()) return std::string(option);
  return environment != nullptr && *environment != '\0' ? environment : KESTRIN_UPDATE_SERVER;
}

std::string_view UpdateServer::Host(std::string_view server) {
  for (const std::string_view scheme : {kPlain, kEncrypted})
    if (BeginsWith(server, scheme)) return server.substr(scheme.size());
  return server;
}

bool UpdateServer::IsEncrypted(std::string_view server) { return BeginsWith(server, kEncrypted); }

bool UpdateServer::IsValid(std::string_view server) {
  server = Host(server);
  std::size_t end = std::min(server.find(':'), server.size());
  if (!server.empty() && server.front() == '[') {
    // The address of the sixth version of the Internet protocol: colons stand inside brackets.
    end = server.find(']');
    if (end == server.npos) return false;
    const std::string_view address = server.substr(1, end - 1);
    if (address.find(':') == address.npos) return false;
    if (address.find_first_not_of(std::string(kHexDigits) + ":.") != address.npos) return false;
    ++end;
  } else if (end == 0 ||
             !std::all_of(server.begin(), server.begin() + static_cast<std::ptrdiff_t>(end), IsHostLetter)) {
    return false;
  }
  const std::string_view rest = server.substr(end);
  return rest.empty() || (rest.front() == ':' && IsPort(rest.substr(1)));
}

}  // namespace kestrin::core::update
