#include "update/HttpRequest.h"

#include <charconv>
#include <optional>
#include <system_error>
#include <utility>

#include "base/Disk.h"
#include "base/NewFile.h"
#include "base/Numbers.h"
#include "base/PathText.h"
#include "update/TransferControl.h"

namespace kestrin::core::update {

namespace fs = std::filesystem;

namespace {

constexpr const char* kLengthHeader = "Content-Length";
constexpr int kFirstGoodStatus = 200;
constexpr int kLastGoodStatus = 299;
constexpr std::int64_t kHundred = 100;
/// Chunks are gathered to this before they are written: a write for each would cost a tenth of the speed and more.
constexpr std::size_t kWrittenAtOnce = 65536;

/// A length as a header tells it; nothing when that is no whole number. One too large for anything is the largest.
std::optional<std::int64_t> LengthIn(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == text.npos) return std::nullopt;
  text = text.substr(first, text.find_last_not_of(" \t") - first + 1);
  std::int64_t length = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
  if (end != text.data() + text.size() || error == std::errc::invalid_argument) return std::nullopt;
  if (error == std::errc::result_out_of_range) return std::numeric_limits<std::int64_t>::max();
  return length;
}

std::string CouldNotWrite(const fs::path& path, const std::string& reason) {
  return "\"" + base::TextOf(path) + "\" could not be written: " + reason;
}

/// The folder behind all links, "" when there is none.
fs::path Behind(const fs::path& folder) {
  std::error_code ignored;
  return fs::canonical(folder, ignored);
}

}  // namespace

HttpRequest::HttpRequest(const std::string& host, base::Disk& disk, base::EventPump pump)
    : m_url("http://" + host),
      m_headers("Host:" + host + "\r\nUser-Agent:" + kUserAgent +
                "\r\nConnection:keep-alive\r\nContent-Type:application/x-www-form-urlencoded"),
      m_disk(disk),
      m_pump(std::move(pump)) {}

void HttpRequest::Initialize(TransferControl& transferControl) {
  m_inetConnector = &transferControl;
  m_inetConnector->OnStateChanged([this](int state) { Notice(state); });
}

void HttpRequest::Notice(int state) {
  if (state == TransferControl::kDisconnected) m_status = kDisconnected;
  if (state == TransferControl::kError) m_status = kFailed;
}

void HttpRequest::cancel() {
  if (!m_running) return;
  m_cancelled = true;
  m_status = kDisconnected;
  m_inetConnector->Cancel();
}

void HttpRequest::Fail(Status status) {
  m_status = status;
  m_inetConnector->Cancel();
}

void HttpRequest::FailToWrite(const std::string& problem) {
  m_problem = problem;
  Fail(kRaised);
}

std::string HttpRequest::requestText(const std::string& body) {
  std::string text;
  try {
    if (Start(m_url, body, TransferControl::kAllOfIt)) text = ReadText();
  } catch (const std::exception&) {
    m_status = kRaised;
    text.clear();
  }
  m_running = false;
  return text;
}

std::string HttpRequest::requestData(const std::string& body, const fs::path& folder, const std::string& fileName) {
  try {
    const fs::path place = Behind(folder);
    if (Start(m_url + kDataPath, body, kSlowestFile)) ReadData(folder, place, fileName);
  } catch (const std::exception& error) {
    m_status = kRaised;
    if (m_problem.empty()) m_problem = error.what();
  }
  m_running = false;
  return "";
}

bool HttpRequest::Start(const std::string& url, const std::string& body, std::int64_t bytesAMinute) {
  m_problem.clear();
  m_cancelled = false;
  m_status = kRaised;
  if (m_inetConnector == nullptr) return false;
  m_running = true;
  base::Pump(m_pump);
  if (m_cancelled) {
    m_status = kDisconnected;
    return false;
  }
  m_inetConnector->Demand(bytesAMinute);
  if (!m_inetConnector->Execute(url, "POST", body, m_headers)) return false;
  m_status = kFine;
  while (m_inetConnector->StillExecuting()) {
    base::Pump(m_pump);
    if (m_status != kFine) {
      m_inetConnector->Cancel();
      return false;
    }
  }
  const int status = m_inetConnector->HttpStatus();
  if (status == 0 && m_status == kDisconnected) {
    Fail(kDisconnected);
    return false;
  }
  // The answer is here: that the server has closed the connection by now says nothing about the body.
  if (m_status == kFailed || status < kFirstGoodStatus || status > kLastGoodStatus) {
    Fail(kFailed);
    return false;
  }
  m_status = kFine;
  return true;
}

std::string HttpRequest::ReadText() {
  const std::optional<std::int64_t> length = LengthIn(m_inetConnector->GetHeader(kLengthHeader));
  std::string text;
  while (true) {
    const std::string chunk = m_inetConnector->NextChunk(kChunk);
    if (text.size() + chunk.size() > kLongestText)
      Fail(kFailed);
    else
      text += chunk;
    base::Pump(m_pump);
    if (m_status != kFine) {
      m_inetConnector->Cancel();
      return text;
    }
    if (chunk.empty()) break;
  }
  const auto size = static_cast<std::int64_t>(text.size());
  if (length && size != *length) m_status = size < *length ? kDisconnected : kFailed;
  return text;
}

void HttpRequest::ReadData(const fs::path& folder, const fs::path& place, const std::string& fileName) {
  const std::int64_t length = LengthIn(m_inetConnector->GetHeader(kLengthHeader)).value_or(0);
  if (length <= 0) return Fail(kDisconnected);
  if (length > kLongestFile) return Fail(kFailed);

  // While the server is waited for, anybody may put a link where the folder or the file was.
  const auto hasMoved = [&] { return Behind(folder) != place; };
  const std::string moved = "\"" + base::TextOf(folder) + "\" has become another folder meanwhile";
  const fs::path temporary = folder / kTemporaryName;
  std::error_code error;
  if (hasMoved()) return FailToWrite(moved);
  fs::remove(temporary, error);
  base::NewFile file(temporary);
  if (!file.IsOpen() || !ReadInto(file, length) || !file.Close())
    return FailToWrite(CouldNotWrite(temporary, file.Why().text));
  const bool stays = !hasMoved();
  if (m_status != kFine) {
    if (stays) fs::remove(temporary, error);
    return;
  }
  if (!stays) return FailToWrite(moved);
  Finish(temporary, folder / base::PathOf(fileName), length);
}

void HttpRequest::Finish(const fs::path& temporary, const fs::path& target, std::int64_t length) {
  // Only what was written here may get the name.
  std::error_code error;
  const fs::file_status status = fs::symlink_status(temporary, error);
  if (!fs::is_regular_file(status) || fs::file_size(temporary, error) != static_cast<std::uintmax_t>(length))
    return FailToWrite("\"" + base::TextOf(temporary) + "\" has become another file meanwhile");
  // A font that is marked as complete must have its sounds after a power cut, too.
  error = m_disk.Flush(temporary);
  if (error) return FailToWrite(CouldNotWrite(temporary, error.message()));
  fs::rename(temporary, target, error);
  if (!error) return;
  const std::string reason = error.message();
  const bool inTheWay = fs::is_directory(target, error);
  FailToWrite(CouldNotWrite(target, inTheWay ? "a folder of that name is in the way" : reason));
}

/// False when the file could not be written; everything else that goes wrong is left in the status.
bool HttpRequest::ReadInto(base::NewFile& file, std::int64_t length) {
  std::int64_t count = 0;
  std::string gathered;
  const auto write = [&] {
    const bool taken = file.Write(gathered);
    gathered.clear();
    return taken;
  };
  while (true) {
    const std::string chunk = m_inetConnector->NextChunk(kChunk);
    if (chunk.empty()) break;
    count += static_cast<std::int64_t>(chunk.size());
    if (count > length) {
      Fail(kFailed);
      return true;
    }
    const double percentage = static_cast<double>(count * kHundred) / static_cast<double>(length);
    if (m_onProgress) m_onProgress(base::RoundTo<std::int16_t>(percentage));
    base::Pump(m_pump);
    if (m_status != kFine) {
      m_inetConnector->Cancel();
      return true;
    }
    gathered += chunk;
    if (gathered.size() >= kWrittenAtOnce && !write()) return false;
  }
  if (m_status == kFine && !write()) return false;
  if (m_status == kFine && count < length) m_status = kDisconnected;
  return true;
}

}  // namespace kestrin::core::update
