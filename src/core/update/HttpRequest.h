// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "base/EventPump.h"
#include "base/Result.h"
#include "update/FileSink.h"

namespace kestrin::core::update {

class TransferControl;

/// A small HTTP client: form-encoded POST requests to the update server, whose answer comes as text or goes into a file
/// sink. While
/// it waits, the person's interface has its turn. No exception leaves it: `requestStatus` tells how a request ended.
class HttpRequest {
 public:
  /// How a request ended; the numbers that requestStatus() gives.
  enum Status : std::int16_t {
    kFine = 0,
    /// The connection was closed, the answer has no body or ends early, or the request was cancelled.
    kDisconnected = 1,
    /// The transfer failed: no connection, a status outside 200 to 299, an answer too large or longer than it says.
    kFailed = 2,
    /// The request could not be started, or a file not be written.
    kRaised = 3,
  };
  using Progress = std::function<void(std::int16_t percentage)>;

  static constexpr const char* kUserAgent = "VMTUpdateModule";
  /// Behind the host, where files are asked for.
  static constexpr const char* kDataPath = "/tst/gct/";
  /// The largest chunk read at once, in bytes.
  static constexpr std::size_t kChunk = 8192;
  /// The longest text answer and the longest file that are taken, in bytes.
  static constexpr std::size_t kLongestText = std::size_t{16} * 1024 * 1024;
  static constexpr std::int64_t kLongestFile = std::int64_t{64} * 1024 * 1024;
  /// What a file has to bring in every minute, in bytes; a text has to be over within one.
  static constexpr std::int64_t kSlowestFile = std::int64_t{64} * 1024;

  /// `server` is a valid UpdateServer. Files go to what `sinkFor` gives.
  HttpRequest(const std::string& server, SinkFor sinkFor, base::EventPump pump = {});

  /// Takes the control through which requests go; it must outlive this object.
  void Initialize(TransferControl& transferControl);
  /// Who is told the progress of a file's download, from 0 to 100.
  void OnProgress(Progress callback) { m_onProgress = std::move(callback); }

  /// Posts `body` to the server's root address. Returns the whole answer; what came so far when the request failed.
  std::string requestText(const std::string& body);
  /// Posts `body` and gives the answer to the sink for the file `fileName` in `folder`. What is not whole in every
  /// respect is dropped. Returns "" always.
  std::string requestData(const std::string& body, const std::filesystem::path& folder, const std::string& fileName);

  /// How the last request ended: 0 fine, see Status for all others.
  [[nodiscard]] std::int16_t requestStatus() const { return m_status; }
  /// What kept the last request from an encrypted connection, for the person, with what to do; "" when nothing did.
  [[nodiscard]] std::string trouble() const;
  /// Whether the sink took what came of the last file that was asked for; a failure is the sink's own.
  [[nodiscard]] const base::Result<>& fileResult() const { return m_fileResult; }
  /// Ends the request that runs now, with status 1; without one it does nothing. Meant to be called from an event.
  void cancel();

 private:
  [[nodiscard]] bool Start(const std::string& url, const std::string& body, std::int64_t bytesAMinute);
  [[nodiscard]] std::string ReadText();
  void ReadData(FileSink& sink);
  /// False when the sink failed; everything else that goes wrong is left in the status.
  [[nodiscard]] bool ReadInto(FileSink& sink, std::int64_t length);
  /// Whether a step of the sink worked; ends the request when not.
  [[nodiscard]] bool Worked(base::Result<> step);
  void Fail(Status status);
  void Notice(int state);

  std::string m_url;
  std::string m_headers;
  SinkFor m_sinkFor;
  base::EventPump m_pump;
  TransferControl* m_inetConnector = nullptr;
  Progress m_onProgress;
  std::int16_t m_status = kFine;
  base::Result<> m_fileResult;
  bool m_running = false;
  bool m_cancelled = false;
};

}  // namespace kestrin::core::update
