// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>

namespace kestrin::core::update {

/// The port to the Internet transfer control: one HTTP request at a time, sent exactly as given (no header of its own
/// but the length of the body, no repetition, no redirect, no decompression).
///
/// Everything happens on one thread: the control works, and notifies, while StillExecuting() or NextChunk() is called.
class TransferControl {
 public:
  /// The states that are told of.
  enum State : int {
    /// The connection was closed before the answer was whole.
    kDisconnected = 10,
    /// The request failed: no connection, silence for too long, less than was demanded, an answer that is no HTTP.
    kError = 11,
  };
  /// For Demand(): nothing less than the whole answer.
  static constexpr std::int64_t kAllOfIt = std::numeric_limits<std::int64_t>::max();
  /// Gets the new state's number; numbers other than these two are ignored.
  using StateChanged = std::function<void(int state)>;

  virtual ~TransferControl() = default;

  /// Who is told of state changes; replaces an earlier one. May be called back only while a request runs.
  virtual void OnStateChanged(StateChanged callback) = 0;
  /// How many bytes of body the answers of the following requests have to bring in each minute, counted from the start
  /// of the request. An answer that is not over by then and has brought less has failed, whatever else keeps coming.
  virtual void Demand(std::int64_t bytesAMinute) = 0;
  /// Starts a request without waiting; one that still runs is cancelled first. `headers` are lines separated by CR LF,
  /// without a CR LF at the end; they go out as they stand, with the length of `body` (bytes) added.
  /// False when the request could not even be started.
  [[nodiscard]] virtual bool Execute(const std::string& url, const std::string& method, const std::string& body,
                                     const std::string& headers) = 0;
  /// True until the head of the answer is here or the request has failed. Waits a few milliseconds for something to
  /// happen while that is not so, so that it can be asked in a loop.
  [[nodiscard]] virtual bool StillExecuting() = 0;
  /// Ends the request at once; without one it does nothing. Tells nobody. May be called from inside an event that is
  /// handled while NextChunk() waits: that call then returns empty.
  virtual void Cancel() = 0;
  /// Why the connection of the last request could not be encrypted, or not to whom it should be, for the person, with
  /// what to do; "" when that was no trouble, or none was to be. Kept until the next request.
  [[nodiscard]] virtual std::string Trouble() const = 0;
  /// The HTTP status of the answer (200); 0 while there is no answer.
  [[nodiscard]] virtual int HttpStatus() const = 0;
  /// A header of the answer by its name, letter case ignored; "" when the answer has none of that name.
  [[nodiscard]] virtual std::string GetHeader(const std::string& name) const = 0;
  /// The next bytes of the answer's body: exactly `most` unless the body ends before. Waits for them, letting the
  /// person's interface have its turn meanwhile. Empty: the body has ended, or the request failed (then the state
  /// change was told before this returns) or was cancelled.
  [[nodiscard]] virtual std::string NextChunk(std::size_t most) = 0;
};

}  // namespace kestrin::core::update
