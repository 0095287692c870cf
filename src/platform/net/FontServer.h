#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/net/FontAnswers.h"

namespace kestrin::net {

/// A small update server over a collection of fonts, for font makers and for trying things out. It answers a handful of
/// clients at a time, each on a thread of its own.
class FontServer {
 public:
  /// `note` is told what was answered, one call at a time, from any of the threads.
  FontServer(FontAnswers answers, std::function<void(const std::string&)> note);
  ~FontServer();
  FontServer(const FontServer&) = delete;
  FontServer& operator=(const FontServer&) = delete;

  /// Takes a port at an address of this computer, a free one for 0; clients may connect from now on. Returns "" or a
  /// text that says why it cannot be had.
  [[nodiscard]] std::string Open(const std::string& address, std::uint16_t port);
  /// "ADDRESS:PORT" of the open server.
  [[nodiscard]] std::string Address() const;
  /// Answers until `goOn`, which is asked several times a second and whenever somebody connects, says no.
  void Run(const std::function<bool()>& goOn);

 private:
  struct Impl;
  std::unique_ptr<Impl> m_impl;
};

}  // namespace kestrin::net
