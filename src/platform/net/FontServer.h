// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "core/base/Clock.h"
#include "core/base/Result.h"
#include "core/update/FontAnswers.h"
#include "platform/net/ConnectionTable.h"

namespace kestrin::platform::net {

/// A small update server over a collection of fonts, for font makers and for trying things out. It works on the thread
/// that runs it, answers one request on each connection and gives no client more memory or time than a request needs.
class FontServer {
 public:
  /// The longest request that is taken, in bytes: line, headers and body together.
  static constexpr std::size_t kLongestRequest = 8192;

  /// `note` is told what was answered. The clock must outlive the server.
  FontServer(core::update::FontAnswers answers, std::function<void(const std::string&)> note,
             const core::base::Clock& clock, const ConnectionTable::Limits& limits);
  FontServer(core::update::FontAnswers answers, std::function<void(const std::string&)> note,
             const core::base::Clock& clock)
      : FontServer(std::move(answers), std::move(note), clock, ConnectionTable::Limits{}) {}
  ~FontServer();
  FontServer(const FontServer&) = delete;
  FontServer& operator=(const FontServer&) = delete;

  /// Takes a port at an address of this computer, a free one for 0; clients may connect from now on. The text of a
  /// failure says why it cannot be had, and what to do.
  core::base::Result<> Open(const std::string& address, std::uint16_t port);
  /// "ADDRESS:PORT" of the open server.
  [[nodiscard]] std::string Address() const;
  /// Answers until `goOn`, which is asked several times a second and whenever something has come, says no. Fails when
  /// the system lets it answer no longer.
  core::base::Result<> Run(const std::function<bool()>& goOn);

 private:
  struct Impl;
  std::unique_ptr<Impl> m_impl;
};

}  // namespace kestrin::platform::net
