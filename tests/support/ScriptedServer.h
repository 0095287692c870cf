// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace kestrin::support {

/// A server at 127.0.0.1 whose every byte the test decides. It takes one connection after the other, reads the whole
/// request and leaves the answer to a script, then closes. Nothing waits longer than ten seconds.
class ScriptedServer {
 public:
  /// The server's end of a connection, for scripts.
  class Connection {
   public:
    Connection(int socket, int stop) : m_socket(socket), m_stop(stop) {}
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// False when the client is gone.
    bool Send(std::string_view bytes);
    /// Sends `piece` again and again until the client takes no more. Returns how many bytes it took.
    [[nodiscard]] std::size_t SendUntilFull(std::string_view piece);
    /// Waits until the client ends the connection; false when it has not within `patience` milliseconds.
    bool AwaitClose(int patience = 10000);
    /// Ends the connection so that the client gets an error.
    void Reset();
    /// The request, as its bytes came.
    [[nodiscard]] std::string ReadRequest();

   private:
    int m_socket;
    int m_stop;
  };
  using Script = std::function<void(Connection&)>;

  explicit ScriptedServer(Script script);
  ~ScriptedServer();
  ScriptedServer(const ScriptedServer&) = delete;
  ScriptedServer& operator=(const ScriptedServer&) = delete;

  /// "127.0.0.1:PORT".
  [[nodiscard]] std::string Host() const { return "127.0.0.1:" + std::to_string(m_port); }
  /// All requests so far, one for each connection.
  [[nodiscard]] std::vector<std::string> Requests() const;

 private:
  void Serve();

  Script m_script;
  int m_listening = -1;
  int m_stop = -1;
  std::uint16_t m_port = 0;
  mutable std::mutex m_guard;
  std::vector<std::string> m_requests;
  std::thread m_thread;
};

/// A port of 127.0.0.1 at which nobody answers: it is taken, but its queue of connections is full, so that the next
/// client waits.
class FullQueue {
 public:
  FullQueue();
  ~FullQueue();
  FullQueue(const FullQueue&) = delete;
  FullQueue& operator=(const FullQueue&) = delete;

  [[nodiscard]] std::string Host() const { return "127.0.0.1:" + std::to_string(m_port); }

 private:
  int m_listening = -1;
  std::uint16_t m_port = 0;
  std::vector<int> m_waiting;
};

}  // namespace kestrin::support
