// SPDX-License-Identifier: MIT
#include "support/RawClient.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <stdexcept>
#include <utility>

namespace kestrin::support {

RawClient::RawClient(const std::string& server) : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(server.substr(server.rfind(':') + 1))));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  // What is not read soon fills the server's side, not this one.
  const int small = 65536;
  setsockopt(m_socket, SOL_SOCKET, SO_RCVBUF, &small, sizeof(small));
  if (m_socket < 0 || connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0)
    throw std::runtime_error("the test cannot connect to " + server);
  const int yes = 1;
  setsockopt(m_socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof(yes));
}

RawClient::~RawClient() {
  if (m_socket >= 0) close(m_socket);
}

RawClient::RawClient(RawClient&& other) noexcept : m_socket(std::exchange(other.m_socket, -1)) {}

std::string RawClient::Request(const std::string& path, const std::string& body, const std::string& lines) {
  return "POST " + path + " HTTP/1.1\r\nHost:fonts.example\r\n" + lines +
         "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

bool RawClient::Send(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = Wait(POLLOUT) ? send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT) : 0;
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

std::size_t RawClient::Flood(std::string_view piece, std::size_t bytes) {
  std::size_t total = 0;
  while (total < bytes && Wait(POLLOUT)) {
    const ssize_t count = send(m_socket, piece.data(), piece.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count <= 0) break;
    total += static_cast<std::size_t>(count);
  }
  return total;
}

std::string RawClient::ReadAll() {
  std::string all;
  do {
    if (!Wait(POLLIN)) throw std::runtime_error("the server neither answers nor ends the connection");
  } while (ReadSome(all));
  return all;
}

bool RawClient::ReadSome(std::string& taken) {
  std::array<char, 65536> bytes{};
  const ssize_t count = recv(m_socket, bytes.data(), bytes.size(), MSG_DONTWAIT);
  if (count > 0) taken.append(bytes.data(), static_cast<std::size_t>(count));
  return count > 0 || (count < 0 && errno == EAGAIN);
}

bool RawClient::Wait(short what) const {
  constexpr int kPatience = 10000;
  pollfd waiting{m_socket, what, 0};
  return poll(&waiting, 1, kPatience) > 0;
}

}  // namespace kestrin::support
