// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kestrin::support {

/// A client whose every byte the test decides, connected to a server on this computer. Nothing waits longer than ten
/// seconds; what takes longer throws.
class RawClient {
 public:
  /// `server` is "127.0.0.1:PORT".
  explicit RawClient(const std::string& server);
  ~RawClient();
  RawClient(RawClient&& other) noexcept;
  RawClient(const RawClient&) = delete;
  RawClient& operator=(const RawClient&) = delete;
  RawClient& operator=(RawClient&&) = delete;

  /// A request as the protocol has it, with these lines among its headers (each ended by CR LF).
  [[nodiscard]] static std::string Request(const std::string& path, const std::string& body,
                                           const std::string& lines = "");

  /// Sends all of it; false when the server has ended the connection.
  bool Send(std::string_view bytes);
  /// Sends `piece` again and again, up to that many bytes in all. How many the server's side took before it ended the
  /// connection.
  std::size_t Flood(std::string_view piece, std::size_t bytes);
  /// Everything that comes until the server ends the connection.
  [[nodiscard]] std::string ReadAll();
  /// Takes over what has come without waiting; false once the server has ended the connection.
  bool ReadSome(std::string& taken);

 private:
  [[nodiscard]] bool Wait(short what) const;

  int m_socket;
};

}  // namespace kestrin::support
