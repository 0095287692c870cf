// SPDX-License-Identifier: MIT
#include "platform/net/CurlTransfer.h"

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "core/base/Text.h"
#include "platform/net/AnswerHead.h"
#include "platform/net/CurlHandles.h"
#include "platform/net/EncryptionTrouble.h"

namespace kestrin::platform::net {

using std::chrono::milliseconds;
using Moment = std::chrono::steady_clock::time_point;

namespace {

/// How long a call waits for the next bytes before the person's interface has its turn again.
constexpr milliseconds kTurn{10};
/// How long bytes beyond the announced length may take to show: a moment, for more would slow every honest answer down;
/// longer where the server has said that it closes the connection, which ends the wait.
constexpr milliseconds kMoment{1};
constexpr milliseconds kUntilClosed{250};
/// What libcurl takes from the system at once, and keeps beyond a chunk. The quickest: less means more calls, more
/// falls out of the processor's nearest memory before it is written.
constexpr long kReadAtOnce = 16L * 1024;
constexpr std::chrono::minutes kMinute{1};
/// What counts of the time between two looks at the connection. A person may be asked something meanwhile, or the
/// computer may sleep: that the server did not bring anything then is not its fault.
constexpr std::chrono::seconds kLongestLook{1};

/// The header lines as they go out, and the two that libcurl would add of its own crossed out. Null when there is no
/// memory.
CurlLines HeaderLines(std::string_view headers) {
  std::vector<std::string> lines{"Accept:", "Expect:"};
  for (const std::string_view line : core::base::Split(headers, core::base::kLineEnd))
    if (!line.empty()) lines.emplace_back(line);
  CurlLines list;
  for (const std::string& line : lines) {
    curl_slist* const longer = curl_slist_append(list.get(), line.c_str());
    if (longer == nullptr) return nullptr;
    // The list keeps its first element, in which the rest hangs.
    static_cast<void>(list.release());
    list.reset(longer);
  }
  return list;
}

/// Whether a result of libcurl means that the connection ended too early.
bool IsDisconnection(CURLcode result) {
  return result == CURLE_PARTIAL_FILE || result == CURLE_RECV_ERROR || result == CURLE_SEND_ERROR ||
         result == CURLE_GOT_NOTHING;
}

}  // namespace

/// A request that runs or has ended, until the next one.
struct CurlTransfer::Transfer {
  ~Transfer() { Close(); }

  /// Ends the connection.
  void Close() {
    if (easy && multi) curl_multi_remove_handle(multi.get(), easy.get());
    easy.reset();
  }

  /// The request is over, in one of the states of update::TransferControl or well (0).
  void End(int state) {
    Close();
    ended = true;
    failure = state;
    if (failure != 0) body.clear();
  }

  [[nodiscard]] bool Options(const std::string& url, const std::string& content, const Patience& patience);
  [[nodiscard]] bool Encryption(const std::string& certificates);
  [[nodiscard]] std::size_t Waiting() const { return body.size() - taken; }
  [[nodiscard]] bool IsWhole() const { return length && received == *length; }
  /// How a request ends whose connection ended like this.
  [[nodiscard]] int StateOf(CURLcode result) const {
    if (result != CURLE_OK && !IsDisconnection(result)) return kError;
    if (IsWhole() || (result == CURLE_OK && !length)) return 0;
    return kDisconnected;
  }

  /// Waits up to `wait` for something to come, and notes that it has.
  [[nodiscard]] CURLMcode Listen(milliseconds wait);
  static std::size_t TakeHead(char* line, std::size_t size, std::size_t count, void* self);
  static std::size_t TakeBody(char* bytes, std::size_t size, std::size_t count, void* self);

  CurlMulti multi{curl_multi_init()};
  CurlLines headers;
  CurlEasy easy{curl_easy_init()};
  AnswerHead head;
  /// The announced length of the body, and what has come of it.
  std::optional<std::int64_t> length;
  std::int64_t received = 0;
  /// What has come and was not asked for yet begins at `taken`.
  std::string body;
  std::size_t taken = 0;
  bool ended = false;
  int failure = 0;
  /// What libcurl says of a failure.
  std::array<char, CURL_ERROR_SIZE> words{};
  Moment heard = std::chrono::steady_clock::now();
  /// When the connection was last looked at, what of this minute is over, and what had come before it.
  core::base::Clock::Duration looked{};
  core::base::Clock::Duration minute{};
  std::int64_t receivedBefore = 0;
};

bool CurlTransfer::Transfer::Options(const std::string& url, const std::string& content, const Patience& patience) {
  std::vector<CURLcode> results;
  const auto set = [&](CURLoption option, auto value) {
    results.push_back(curl_easy_setopt(easy.get(), option, value));
  };
  set(CURLOPT_URL, url.c_str());
  set(CURLOPT_PROTOCOLS_STR, "http,https");
  set(CURLOPT_ERRORBUFFER, words.data());
  set(CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1);
  set(CURLOPT_POST, 1L);
  set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(content.size()));
  set(CURLOPT_COPYPOSTFIELDS, content.c_str());
  set(CURLOPT_HTTPHEADER, headers.get());
  set(CURLOPT_PROXY, "");
  set(CURLOPT_NOPROXY, "*");
  set(CURLOPT_FOLLOWLOCATION, 0L);
  // A request on a connection that the server has given up meanwhile would be repeated.
  set(CURLOPT_FRESH_CONNECT, 1L);
  set(CURLOPT_FORBID_REUSE, 1L);
  // With the length known to it libcurl would read no further, and nobody would see that the server sends more.
  set(CURLOPT_IGNORE_CONTENT_LENGTH, 1L);
  set(CURLOPT_BUFFERSIZE, kReadAtOnce);
  set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(patience.connecting.count()));
  set(CURLOPT_NOSIGNAL, 1L);
  // A name that is still looked up must not hold up who cancels.
  set(CURLOPT_QUICK_EXIT, 1L);
  set(CURLOPT_HEADERFUNCTION, &Transfer::TakeHead);
  set(CURLOPT_HEADERDATA, this);
  set(CURLOPT_WRITEFUNCTION, &Transfer::TakeBody);
  set(CURLOPT_WRITEDATA, this);
  return std::all_of(results.begin(), results.end(), [](CURLcode result) { return result == CURLE_OK; });
}

bool CurlTransfer::Transfer::Encryption(const std::string& certificates) {
  const auto set = [this](CURLoption option, auto value) {
    return curl_easy_setopt(easy.get(), option, value) == CURLE_OK;
  };
  // The defaults of the library, which must not hang on how somebody has built it.
  if (!set(CURLOPT_SSL_VERIFYPEER, 1L) || !set(CURLOPT_SSL_VERIFYHOST, 2L) ||
      !set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2)))
    return false;
  // Windows asks for lists of revoked certificates: one that cannot be had, as behind many a company's wall, or that an
  // authority of one's own does not keep, is no reason to refuse. A certificate that is on one is refused. Other
  // backends ask for none and ignore it.
  if (!set(CURLOPT_SSL_OPTIONS, static_cast<long>(CURLSSLOPT_REVOKE_BEST_EFFORT))) return false;
  if (certificates.empty()) return true;
  // A folder of certificates would be trusted beside the file; not every backend knows of one.
  static_cast<void>(set(CURLOPT_CAPATH, static_cast<const char*>(nullptr)));
  return set(CURLOPT_CAINFO, certificates.c_str());
}

CURLMcode CurlTransfer::Transfer::Listen(milliseconds wait) {
  int ready = 0;
  const CURLMcode outcome = curl_multi_poll(multi.get(), nullptr, 0, static_cast<int>(wait.count()), &ready);
  if (ready > 0) heard = std::chrono::steady_clock::now();
  return outcome;
}

std::size_t CurlTransfer::Transfer::TakeHead(char* line, std::size_t size, std::size_t count, void* self) {
  Transfer& transfer = *static_cast<Transfer*>(self);
  transfer.heard = std::chrono::steady_clock::now();
  // What is not taken whole ends the transfer.
  if (!transfer.head.Add({line, size * count})) return 0;
  if (!transfer.head.IsComplete()) return size * count;
  transfer.length = transfer.head.Length();
  return transfer.head.IsSound() ? size * count : 0;
}

std::size_t CurlTransfer::Transfer::TakeBody(char* bytes, std::size_t size, std::size_t count, void* self) {
  Transfer& transfer = *static_cast<Transfer*>(self);
  transfer.heard = std::chrono::steady_clock::now();
  transfer.received += static_cast<std::int64_t>(size * count);
  if (transfer.length && transfer.received > *transfer.length) return 0;
  transfer.body.erase(0, std::exchange(transfer.taken, 0));
  transfer.body.append(bytes, size * count);
  return size * count;
}

CurlTransfer::Library::Library() { curl_global_init(CURL_GLOBAL_DEFAULT); }

CurlTransfer::Library::~Library() { curl_global_cleanup(); }

CurlTransfer::CurlTransfer(core::base::EventPump pump, Patience patience, const core::base::Clock* clock)
    : m_pump(std::move(pump)), m_patience(patience), m_clock(clock != nullptr ? *clock : m_systemClock) {}

CurlTransfer::~CurlTransfer() = default;

void CurlTransfer::OnStateChanged(StateChanged callback) { m_onStateChanged = std::move(callback); }

bool CurlTransfer::Execute(const std::string& url, const std::string& method, const std::string& body,
                           const std::string& headers) {
  m_transfer.reset();
  m_trouble.clear();
  if (method != "POST") return false;
  if (!m_library) m_library.emplace();
  auto transfer = std::make_unique<Transfer>();
  transfer->headers = HeaderLines(headers);
  if (!transfer->multi || !transfer->easy || !transfer->headers || !transfer->Options(url, body, m_patience) ||
      !transfer->Encryption(m_certificates))
    return false;
  if (curl_multi_add_handle(transfer->multi.get(), transfer->easy.get()) != CURLM_OK) return false;
  m_transfer = std::move(transfer);
  m_transfer->looked = m_clock.Now();
  return true;
}

bool CurlTransfer::StillExecuting() {
  if (!m_transfer) return false;
  if (!m_transfer->ended && !m_transfer->head.IsComplete()) Drive(kTurn);
  // What goes wrong behind the head is told to who reads the body.
  if (m_transfer->ended && (!m_transfer->head.IsComplete() || !m_transfer->head.IsSound())) {
    Tell();
    return false;
  }
  return !m_transfer->head.IsComplete();
}

void CurlTransfer::Cancel() { m_transfer.reset(); }

int CurlTransfer::HttpStatus() const {
  return m_transfer && m_transfer->head.IsComplete() ? m_transfer->head.Status() : 0;
}

std::string CurlTransfer::GetHeader(const std::string& name) const {
  return m_transfer ? m_transfer->head.Value(name) : "";
}

std::string CurlTransfer::NextChunk(std::size_t most) {
  // The person may cancel in every turn.
  while (m_transfer && !m_transfer->ended && m_transfer->Waiting() < most) {
    if (m_transfer->IsWhole()) {
      AwaitNothingMore();
    } else {
      const std::int64_t before = m_transfer->received;
      Drive(kTurn);
      // Whoever brings single bytes must not hold up the person.
      if (m_transfer->received < before + kReadAtOnce) core::base::Pump(m_pump);
    }
  }
  if (!m_transfer) return "";
  if (m_transfer->failure != 0) {
    Tell();
    return "";
  }
  Transfer& transfer = *m_transfer;
  std::string chunk = transfer.body.substr(transfer.taken, most);
  transfer.taken += chunk.size();
  return chunk;
}

void CurlTransfer::Drive(milliseconds wait) {
  Transfer& transfer = *m_transfer;
  // libcurl tells of the head only line by line: whether single bytes of it come, the connection itself knows.
  const bool inHead = !transfer.head.IsComplete();
  CURLMcode outcome = CURLM_OK;
  if (inHead) outcome = transfer.Listen(wait);
  const Moment before = transfer.heard;
  int running = 0;
  if (outcome == CURLM_OK) outcome = curl_multi_perform(transfer.multi.get(), &running);
  if (!inHead && outcome == CURLM_OK && running != 0 && transfer.heard == before) {
    outcome = transfer.Listen(wait);
    if (outcome == CURLM_OK) outcome = curl_multi_perform(transfer.multi.get(), &running);
  }
  if (outcome != CURLM_OK) return transfer.End(kError);
  int left = 0;
  if (const CURLMsg* const message = curl_multi_info_read(transfer.multi.get(), &left); message != nullptr) {
    const CURLcode result = message->data.result;
    m_trouble = EncryptionTrouble(result, transfer.words.data(), m_certificates);
    return transfer.End(transfer.StateOf(result));
  }

  curl_off_t connected = 0;
  curl_easy_getinfo(transfer.easy.get(), CURLINFO_PRETRANSFER_TIME_T, &connected);
  const Moment now = std::chrono::steady_clock::now();
  // libcurl itself limits the time of connecting.
  if (connected == 0) transfer.heard = now;
  if (now - transfer.heard > m_patience.silence) return transfer.End(kError);
  CheckDemand();
}

void CurlTransfer::CheckDemand() {
  Transfer& transfer = *m_transfer;
  const core::base::Clock::Duration now = m_clock.Now();
  transfer.minute += std::min<core::base::Clock::Duration>(now - std::exchange(transfer.looked, now), kLongestLook);
  if (transfer.minute < kMinute || transfer.IsWhole()) return;
  transfer.minute = {};
  const std::int64_t brought = transfer.received - std::exchange(transfer.receivedBefore, transfer.received);
  if (brought < m_demand) transfer.End(kError);
}

void CurlTransfer::AwaitNothingMore() {
  const Moment until = std::chrono::steady_clock::now() + (m_transfer->head.AnnouncesClose() ? kUntilClosed : kMoment);
  do {
    Drive(kMoment);
    core::base::Pump(m_pump);
    if (!m_transfer) return;
  } while (!m_transfer->ended && std::chrono::steady_clock::now() < until);
  if (!m_transfer->ended) m_transfer->End(0);
}

void CurlTransfer::Tell() {
  if (m_onStateChanged) m_onStateChanged(m_transfer->failure);
}

}  // namespace kestrin::platform::net
