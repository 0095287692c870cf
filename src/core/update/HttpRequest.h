#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "base/EventPump.h"

namespace kestrin::core::base {
class Disk;
class NewFile;
}  // namespace kestrin::core::base

namespace kestrin::core::update {

class TransferControl;

/// A small HTTP client: form-encoded POST requests to the update server, whose answer comes as text or as a file. While
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
  /// A download in progress, in the folder that its file is meant for.
  static constexpr const char* kTemporaryName = "tmp";
  /// The largest chunk read at once, in bytes.
  static constexpr std::size_t kChunk = 8192;
  /// The longest text answer and the longest file that are taken, in bytes.
  static constexpr std::size_t kLongestText = std::size_t{16} * 1024 * 1024;
  static constexpr std::int64_t kLongestFile = std::int64_t{64} * 1024 * 1024;
  /// What a file has to bring in every minute, in bytes; a text has to be over within one.
  static constexpr std::int64_t kSlowestFile = std::int64_t{64} * 1024;

  /// `host` is the server, with ":" and the port where that is not 80. Files go to `disk`, which must outlive this
  /// object.
  HttpRequest(const std::string& host, base::Disk& disk, base::EventPump pump = {});

  /// Takes the control through which requests go; it must outlive this object.
  void Initialize(TransferControl& transferControl);
  /// Who is told the progress of a file's download, from 0 to 100.
  void OnProgress(Progress callback) { m_onProgress = std::move(callback); }

  /// Posts `body` to the server's root address. Returns the whole answer; what came so far when the request failed.
  std::string requestText(const std::string& body);
  /// Posts `body` and saves the answer as the file `fileName` in `folder`, which must exist and be nobody else's for
  /// that time. Until it is whole, and on the disk, it is called "tmp" there. Nothing is written through a link, nor
  /// into a folder that was exchanged meanwhile. Returns "" always.
  std::string requestData(const std::string& body, const std::filesystem::path& folder, const std::string& fileName);

  /// How the last request ended: 0 fine, see Status for all others.
  [[nodiscard]] std::int16_t requestStatus() const { return m_status; }
  /// Why the last request's file could not be written, for the person; "" when that was not the trouble.
  [[nodiscard]] const std::string& problem() const { return m_problem; }
  /// Ends the request that runs now, with status 1; without one it does nothing. Meant to be called from an event.
  void cancel();

 private:
  [[nodiscard]] bool Start(const std::string& url, const std::string& body, std::int64_t bytesAMinute);
  [[nodiscard]] std::string ReadText();
  /// `place` is where the folder lay when the request began, all links followed.
  void ReadData(const std::filesystem::path& folder, const std::filesystem::path& place, const std::string& fileName);
  [[nodiscard]] bool ReadInto(base::NewFile& file, std::int64_t length);
  /// Gives the whole file its name.
  void Finish(const std::filesystem::path& temporary, const std::filesystem::path& target, std::int64_t length);
  void FailToWrite(const std::string& problem);
  void Fail(Status status);
  void Notice(int state);

  std::string m_url;
  std::string m_headers;
  base::Disk& m_disk;
  base::EventPump m_pump;
  TransferControl* m_inetConnector = nullptr;
  Progress m_onProgress;
  std::int16_t m_status = kFine;
  std::string m_problem;
  bool m_running = false;
  bool m_cancelled = false;
};

}  // namespace kestrin::core::update
