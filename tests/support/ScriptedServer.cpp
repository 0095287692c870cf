// SPDX-License-Identifier: MIT
#include "support/ScriptedServer.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace kestrin::support {

namespace {

constexpr int kPatience = 10000;

sockaddr_in Loopback(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

/// A socket that listens at a free port.
std::pair<int, std::uint16_t> Listen(int queue) {
  const int listening = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = Loopback(0);
  socklen_t size = sizeof(address);
  if (listening < 0 || bind(listening, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
      listen(listening, queue) != 0 || getsockname(listening, reinterpret_cast<sockaddr*>(&address), &size) != 0)
    throw std::runtime_error("the test cannot listen at a port");
  return {listening, ntohs(address.sin_port)};
}

/// Whether that can be done with a socket; not after `stop`, nor later than `patience` milliseconds from now.
bool Ready(int socket, short what, int stop, int patience = kPatience) {
  std::array<pollfd, 2> waiting{{{socket, what, 0}, {stop, POLLIN, 0}}};
  return poll(waiting.data(), waiting.size(), patience) > 0 && waiting[1].revents == 0;
}

}  // namespace

ScriptedServer::Connection::~Connection() {
  if (m_socket >= 0) close(m_socket);
}

std::string ScriptedServer::Connection::ReadRequest() {
  constexpr std::string_view kLength = "Content-Length: ";
  std::string request;
  std::size_t whole = std::string::npos;
  while (request.size() < whole && Ready(m_socket, POLLIN, m_stop)) {
    std::array<char, 4096> bytes{};
    const ssize_t count = recv(m_socket, bytes.data(), bytes.size(), 0);
    if (count <= 0) break;
    request.append(bytes.data(), static_cast<std::size_t>(count));
    const std::size_t body = request.find("\r\n\r\n");
    const std::size_t length = request.find(kLength);
    if (body != request.npos)
      whole = body + 4 + (length < body ? std::strtoul(request.c_str() + length + kLength.size(), nullptr, 10) : 0);
  }
  return request;
}

bool ScriptedServer::Connection::Send(std::string_view bytes) {
  while (!bytes.empty()) {
    if (!Ready(m_socket, POLLOUT, m_stop)) return false;
    const ssize_t count = send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

std::size_t ScriptedServer::Connection::SendUntilFull(std::string_view piece) {
  constexpr int kFull = 300;
  std::size_t total = 0;
  while (Ready(m_socket, POLLOUT, m_stop, kFull)) {
    const ssize_t count = send(m_socket, piece.data(), piece.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count <= 0) break;
    total += static_cast<std::size_t>(count);
  }
  return total;
}

bool ScriptedServer::Connection::AwaitClose(int patience) {
  while (Ready(m_socket, POLLIN, m_stop, patience)) {
    char byte = 0;
    if (recv(m_socket, &byte, 1, 0) <= 0) return true;
  }
  return false;
}

void ScriptedServer::Connection::Reset() {
  const linger atOnce{1, 0};
  setsockopt(m_socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof(atOnce));
  close(std::exchange(m_socket, -1));
}

ScriptedServer::ScriptedServer(Script script) : m_script(std::move(script)), m_stop(eventfd(0, EFD_CLOEXEC)) {
  std::tie(m_listening, m_port) = Listen(SOMAXCONN);
  m_thread = std::thread([this] { Serve(); });
}

ScriptedServer::~ScriptedServer() {
  eventfd_write(m_stop, 1);
  m_thread.join();
  close(m_listening);
  close(m_stop);
}

std::vector<std::string> ScriptedServer::Requests() const {
  const std::lock_guard lock(m_guard);
  return m_requests;
}

void ScriptedServer::Serve() {
  while (Ready(m_listening, POLLIN, m_stop, -1)) {
    const int socket = accept4(m_listening, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) return;
    const int yes = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof(yes));
    Connection connection(socket, m_stop);
    std::string request = connection.ReadRequest();
    {
      const std::lock_guard lock(m_guard);
      m_requests.push_back(std::move(request));
    }
    m_script(connection);
  }
}

FullQueue::FullQueue() {
  std::tie(m_listening, m_port) = Listen(0);
  const sockaddr_in address = Loopback(m_port);
  // The system lets in one or two more than asked for.
  constexpr int kMoreThanFit = 4;
  for (int i = 0; i < kMoreThanFit; ++i) {
    const int client = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    static_cast<void>(connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof(address)));
    m_waiting.push_back(client);
  }
}

FullQueue::~FullQueue() {
  for (const int client : m_waiting) close(client);
  close(m_listening);
}

}  // namespace kestrin::support
