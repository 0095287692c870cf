// SPDX-License-Identifier: MIT
#include "update/HttpRequest.h"

#include <charconv>
#include <limits>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "base/Numbers.h"
#include "update/TransferControl.h"
#include "update/UpdateServer.h"

namespace kestrin::core::update {

namespace fs = std::filesystem;

namespace {

constexpr const char* kLengthHeader = "Content-Length";
constexpr int kFirstGoodStatus = 200;
constexpr int kLastGoodStatus = 299;
constexpr std::int64_t kHundred = 100;

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

}  // namespace

HttpRequest::HttpRequest(const std::string& server, SinkFor sinkFor, base::EventPump pump)
    : m_url((UpdateServer::IsEncrypted(server) ? "https://" : "http://") + std::string(UpdateServer::Host(server))),
      m_headers("Host:" + std::string(UpdateServer::Host(server)) + "\r\nUser-Agent:" + kUserAgent +
                "\r\nConnection:keep-alive\r\nContent-Type:application/x-www-form-urlencoded"),
      m_sinkFor(std::move(sinkFor)),
      m_pump(std::move(pump)) {}

void HttpRequest::Initialize(TransferControl& transferControl) {
  m_inetConnector = &transferControl;
  m_inetConnector->OnStateChanged([this](int state) { Notice(state); });
}

void HttpRequest::Notice(int state) {
  if (state == TransferControl::kDisconnected) m_status = kDisconnected;
  if (state == TransferControl::kError) m_status = kFailed;
}

std::string HttpRequest::trouble() const { return m_inetConnector != nullptr ? m_inetConnector->Trouble() : ""; }

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

bool HttpRequest::Worked(base::Result<> step) {
  if (step) return true;
  m_fileResult = std::move(step);
  Fail(kRaised);
  return false;
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
  m_fileResult = {};
  try {
    const std::unique_ptr<FileSink> sink = m_sinkFor(folder, fileName);
    if (Start(m_url + kDataPath, body, kSlowestFile)) ReadData(*sink);
  } catch (const std::exception& error) {
    m_status = kRaised;
    if (m_fileResult) m_fileResult = base::Failure{base::FailureKind::Failed, error.what()};
  }
  m_running = false;
  return "";
}

bool HttpRequest::Start(const std::string& url, const std::string& body, std::int64_t bytesAMinute) {
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

void HttpRequest::ReadData(FileSink& sink) {
  const std::int64_t length = LengthIn(m_inetConnector->GetHeader(kLengthHeader)).value_or(0);
  if (length <= 0) return Fail(kDisconnected);
  if (length > kLongestFile) return Fail(kFailed);
  if (!Worked(sink.Begin()) || !ReadInto(sink, length)) return;
  if (m_status == kFine)
    static_cast<void>(Worked(sink.Finish()));
  else
    sink.Drop();
}

bool HttpRequest::ReadInto(FileSink& sink, std::int64_t length) {
  std::int64_t count = 0;
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
    if (!Worked(sink.Take(chunk))) return false;
  }
  if (m_status == kFine && count < length) m_status = kDisconnected;
  return true;
}

}  // namespace kestrin::core::update
