// SPDX-License-Identifier: MIT
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

namespace kestrin::rig {

/// Takes connections on this computer and says nothing, until it is closed: then every connection is broken off.
class SilentServer {
 public:
  SilentServer() : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    if (m_socket < 0 || bind(m_socket, plain, size) != 0 || listen(m_socket, 8) != 0 ||
        getsockname(m_socket, plain, &size) != 0)
      throw std::runtime_error("no server on this computer");
    m_port = ntohs(address.sin_port);
  }
  ~SilentServer() { Close(); }
  SilentServer(const SilentServer&) = delete;
  SilentServer& operator=(const SilentServer&) = delete;

  /// "127.0.0.1:PORT".
  [[nodiscard]] std::string Address() const { return "127.0.0.1:" + std::to_string(m_port); }
  void Close() {
    if (m_socket >= 0) close(m_socket);
    m_socket = -1;
  }

 private:
  int m_socket;
  int m_port = 0;
};

}  // namespace kestrin::rig
