// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "core/base/Clock.h"
#include "core/base/EventPump.h"
#include "core/update/TransferControl.h"

namespace kestrin::platform::net {

/// The transfer control over libcurl: HTTP, plain or encrypted, POST only, one connection for each request, no proxy
/// whatever the environment says. It works only while it is called and keeps no more of an answer than a chunk and what
/// came with it: a server that is faster than the reader waits.
///
/// The request has failed (state kError) when nothing is connected or comes within the times below, when less comes
/// than is demanded (the head and what frames the pieces of a body count as nothing), when the answer's status is not
/// 200 to 299, and when its body is longer than it says. It was disconnected (state kDisconnected) when the connection
/// ends before the answer is whole. An encrypted connection is one of TLS 1.2 or later to a server whose certificate is
/// valid for the name in the address, and signed by whom this computer trusts; else the request has failed. Whoever
/// reads on after a failure is told of it again.
class CurlTransfer final : public core::update::TransferControl {
 public:
  struct Patience {
    /// For finding the server and connecting.
    std::chrono::milliseconds connecting{15000};
    /// For the next byte.
    std::chrono::milliseconds silence{30000};
  };

  /// `pump` gives the person's interface its turn while the next bytes are awaited. `clock` tells the minutes in which
  /// something is demanded; it must outlive this object. Null: the computer's own.
  explicit CurlTransfer(core::base::EventPump pump, Patience patience, const core::base::Clock* clock = nullptr);
  explicit CurlTransfer(core::base::EventPump pump) : CurlTransfer(std::move(pump), Patience{}) {}
  ~CurlTransfer() override;
  CurlTransfer(const CurlTransfer&) = delete;
  CurlTransfer& operator=(const CurlTransfer&) = delete;

  /// Trusts nobody but whom the certificates (PEM) in this file belong to, from the next request on. "": the
  /// computer's own list.
  void Trust(const std::string& certificates) { m_certificates = certificates; }

  void OnStateChanged(StateChanged callback) override;
  void Demand(std::int64_t bytesAMinute) override { m_demand = bytesAMinute; }
  /// False for another method than POST, too.
  [[nodiscard]] bool Execute(const std::string& url, const std::string& method, const std::string& body,
                             const std::string& headers) override;
  [[nodiscard]] bool StillExecuting() override;
  void Cancel() override;
  [[nodiscard]] std::string Trouble() const override { return m_trouble; }
  [[nodiscard]] int HttpStatus() const override;
  [[nodiscard]] std::string GetHeader(const std::string& name) const override;
  [[nodiscard]] std::string NextChunk(std::size_t most) override;

 private:
  struct Transfer;
  /// libcurl, made ready as long as this object lives.
  struct Library {
    Library();
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
  };

  /// Takes over what has arrived; waits up to `wait` for something when nothing has.
  void Drive(std::chrono::milliseconds wait);
  /// The whole length has arrived: is that all?
  void AwaitNothingMore();
  void Tell();

  /// Ends the request when a minute is over that has brought too little.
  void CheckDemand();

  core::base::EventPump m_pump;
  Patience m_patience;
  core::base::SystemClock m_systemClock;
  const core::base::Clock& m_clock;
  std::string m_certificates;
  std::string m_trouble;
  std::int64_t m_demand = 0;
  StateChanged m_onStateChanged;
  /// From the first request on: most runs of a program ask for nothing.
  std::optional<Library> m_library;
  std::unique_ptr<Transfer> m_transfer;
};

}  // namespace kestrin::platform::net
