// SPDX-License-Identifier: MIT
#include "platform/net/FontServer.h"

#include <microhttpd.h>

#ifndef _WIN32
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#endif

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace kestrin::platform::net {

namespace {

/// What the library may use for a connection: a request, its headers taken apart, and the head of the answer.
constexpr std::size_t kConnectionMemory = std::size_t{32} * 1024;
/// A file goes out in pieces of that many bytes, each of which has its time.
constexpr std::size_t kPiece = std::size_t{64} * 1024;
/// How often it is asked whether to go on.
constexpr std::int32_t kTurnMilliseconds = 50;

constexpr unsigned int kFine = 200;
constexpr unsigned int kNotModified = 304;
constexpr unsigned int kLengthRequired = 411;
constexpr unsigned int kTooLarge = 413;
constexpr unsigned int kNotFound = 404;

/// For a cache before the server: it may keep a file, but has to ask every time whether that is still the same one. A
/// second of trust would be enough to give out old and new sounds of one font.
constexpr const char* kKeeping = "X-Accel-Expires";
constexpr const char* kOverLongAgo = "@1";

struct ResponseDeleter {
  void operator()(MHD_Response* response) const { MHD_destroy_response(response); }
};
using Response = std::unique_ptr<MHD_Response, ResponseDeleter>;

struct AddressDeleter {
  void operator()(addrinfo* addresses) const { freeaddrinfo(addresses); }
};

/// One request on each connection: a second one would begin with no time spent.
bool Queue(MHD_Connection* connection, unsigned int status, const char* type, Response response) {
  return response && MHD_add_response_header(response.get(), MHD_HTTP_HEADER_CONTENT_TYPE, type) == MHD_YES &&
         MHD_add_response_header(response.get(), MHD_HTTP_HEADER_CONNECTION, "close") == MHD_YES &&
         MHD_queue_response(connection, status, response.get()) == MHD_YES;
}

bool QueueText(MHD_Connection* connection, unsigned int status, std::string text) {
  // The library copies it, and does not write to it.
  return Queue(connection, status, "text/plain",
               Response(MHD_create_response_from_buffer(text.size(), text.data(), MHD_RESPMEM_MUST_COPY)));
}

/// By which a file is known again: changed bytes change the time or the size. In quotes, as the header has it.
/// Nothing when that is not known.
std::string TagOf(const std::filesystem::path& path) {
  std::error_code unknown;
  const auto written = std::filesystem::last_write_time(path, unknown);
  if (unknown) return "";
  const std::uintmax_t size = std::filesystem::file_size(path, unknown);
  if (unknown) return "";
  return '"' + std::to_string(written.time_since_epoch().count()) + '-' + std::to_string(size) + '"';
}

bool AddTag(const Response& response, const std::string& tag) {
  return !tag.empty() && MHD_add_response_header(response.get(), MHD_HTTP_HEADER_ETAG, tag.c_str()) == MHD_YES &&
         MHD_add_response_header(response.get(), kKeeping, kOverLongAgo) == MHD_YES;
}

/// The length that a request's head tells; nothing when it tells none, or that it comes in pieces of any number.
std::optional<std::size_t> LengthOf(MHD_Connection* connection) {
  const auto value = [&](const char* name) { return MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name); };
  const char* const text = value(MHD_HTTP_HEADER_CONTENT_LENGTH);
  if (text == nullptr || value(MHD_HTTP_HEADER_TRANSFER_ENCODING) != nullptr) return std::nullopt;
  std::size_t length = 0;
  const char* const end = text + std::strlen(text);
  const auto [stop, error] = std::from_chars(text, end, length);
  return error == std::errc{} && stop == end ? std::optional(length) : std::nullopt;
}

/// The network that a client is in, as far as one person may have it all: a whole address of the old kind, the first
/// half of a new one.
std::string NetworkOf(const sockaddr* address) {
  if (address->sa_family != AF_INET6) {
    in_addr old{};
    std::memcpy(&old, &reinterpret_cast<const sockaddr_in*>(address)->sin_addr, sizeof(old));
    return {reinterpret_cast<const char*>(&old), sizeof(old)};
  }
  std::array<char, 8> half{};
  std::memcpy(half.data(), &reinterpret_cast<const sockaddr_in6*>(address)->sin6_addr, half.size());
  return {half.data(), half.size()};
}

}  // namespace

struct FontServer::Impl {
  Impl(core::update::FontAnswers theAnswers, std::function<void(const std::string&)> theNote,
       const core::base::Clock& theClock, const ConnectionTable::Limits& theLimits)
      : answers(std::move(theAnswers)),
        note(std::move(theNote)),
        clock(theClock),
        limits(theLimits),
        connections(theLimits) {}
  ~Impl() {
    if (daemon != nullptr) MHD_stop_daemon(daemon);
  }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  /// What has come of a request.
  struct Request {
    explicit Request(ConnectionTable::Id theId) : id(theId) {}
    ConnectionTable::Id id;
    std::string body;
  };

  /// A file that goes out.
  struct Sending {
    std::ifstream file;
    std::uintmax_t size;
    Impl& server;
    ConnectionTable::Id id;
  };

  [[nodiscard]] bool Start(const addrinfo& place);
  [[nodiscard]] static bool Begin(MHD_Connection* connection, std::string_view url, std::string_view method);
  [[nodiscard]] bool Answer(MHD_Connection* connection, std::string_view url, const Request& request);
  [[nodiscard]] bool AnswerFile(MHD_Connection* connection, const std::filesystem::path& path, const Request& request,
                                const std::string& what);
  [[nodiscard]] Response FileResponse(const std::filesystem::path& path, ConnectionTable::Id id);
  void EndOverdue();

  static void End(ConnectionTable::Id id);
  static ConnectionTable::Id IdOf(MHD_Connection* connection);
  // What the library calls; no exception may reach it.
  static MHD_Result TakeRequest(void* self, MHD_Connection* connection, const char* url, const char* method,
                                const char* version, const char* bytes, std::size_t* size, void** request);
  static void Completed(void* self, MHD_Connection* connection, void** request, MHD_RequestTerminationCode how);
  static void Notice(void* self, MHD_Connection* connection, void** context, MHD_ConnectionNotificationCode what);
  static ssize_t GiveFile(void* sending, std::uint64_t position, char* buffer, std::size_t most);

  core::update::FontAnswers answers;
  std::function<void(const std::string&)> note;
  const core::base::Clock& clock;
  ConnectionTable::Limits limits;
  ConnectionTable connections;
  std::string address;
  int port = 0;
  MHD_Daemon* daemon = nullptr;
};

bool FontServer::Impl::Start(const addrinfo& place) {
  unsigned int flags = MHD_USE_AUTO;
  if (place.ai_family == AF_INET6) flags |= MHD_USE_IPv6;
  daemon = MHD_start_daemon(flags, 0, nullptr, nullptr, &Impl::TakeRequest, this, MHD_OPTION_SOCK_ADDR, place.ai_addr,
                            MHD_OPTION_CONNECTION_MEMORY_LIMIT, kConnectionMemory,
                            // The table keeps the limits; whom it has told to end stays a moment longer.
                            MHD_OPTION_CONNECTION_LIMIT, static_cast<unsigned int>(2 * limits.inAll),
                            MHD_OPTION_NOTIFY_CONNECTION, &Impl::Notice, this, MHD_OPTION_NOTIFY_COMPLETED,
                            &Impl::Completed, this,
#ifdef _WIN32
                            // Two programs must not share a port, each getting half of the requests. Elsewhere they
                            // cannot; there this would keep a server that is started anew from its port for a minute.
                            MHD_OPTION_LISTENING_ADDRESS_REUSE, 0U,
#endif
                            MHD_OPTION_END);
  if (daemon == nullptr) return false;
  const MHD_DaemonInfo* const info = MHD_get_daemon_info(daemon, MHD_DAEMON_INFO_BIND_PORT);
  if (info != nullptr) port = info->port;
  return port != 0;
}

bool FontServer::Impl::Begin(MHD_Connection* connection, std::string_view url, std::string_view method) {
  const bool known = url == core::update::FontAnswers::kTextPath || url == core::update::FontAnswers::kDownloadPath;
  if (method != MHD_HTTP_METHOD_POST || !known) return QueueText(connection, kNotFound, "");
  const std::optional<std::size_t> length = LengthOf(connection);
  if (!length) return QueueText(connection, kLengthRequired, "");
  const MHD_ConnectionInfo* const head = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_REQUEST_HEADER_SIZE);
  const std::size_t before = head != nullptr ? head->header_size : kLongestRequest;
  if (before > kLongestRequest || *length > kLongestRequest - before) return QueueText(connection, kTooLarge, "");
  return true;
}

Response FontServer::Impl::FileResponse(const std::filesystem::path& path, ConnectionTable::Id id) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  auto sending = std::make_unique<Sending>(Sending{std::ifstream(path, std::ios::binary), size, *this, id});
  if (error || !sending->file.is_open()) return nullptr;
  Response response(MHD_create_response_from_callback(size, kPiece, &Impl::GiveFile, sending.get(),
                                                      [](void* ended) { delete static_cast<Sending*>(ended); }));
  if (response) static_cast<void>(sending.release());
  return response;
}

bool FontServer::Impl::AnswerFile(MHD_Connection* connection, const std::filesystem::path& path, const Request& request,
                                  const std::string& what) {
  // Before the file is opened: a file that changes meanwhile must not go by the tag of what it has become.
  const std::string tag = TagOf(path);
  const char* const known = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, MHD_HTTP_HEADER_IF_NONE_MATCH);
  const bool same = !tag.empty() && known != nullptr && known == tag;
  Response response = same ? Response(MHD_create_response_from_buffer(0, nullptr, MHD_RESPMEM_PERSISTENT))
                           : FileResponse(path, request.id);
  if (!response || !AddTag(response, tag)) {
    note("unreadable: " + what);
    return QueueText(connection, kNotFound, "");
  }
  note(same ? what + ", unchanged" : what);
  // Whatever part was asked for, all of it is the answer.
  return Queue(connection, same ? kNotModified : kFine, "application/octet-stream", std::move(response));
}

bool FontServer::Impl::Answer(MHD_Connection* connection, std::string_view url, const Request& request) {
  core::update::FontAnswers::Answer answer =
      url == core::update::FontAnswers::kTextPath ? answers.Text(request.body) : answers.Download(request.body);
  connections.NoteProgress(request.id, clock.Now());
  if (answer.file) return AnswerFile(connection, *answer.file, request, answer.note);
  note(answer.note);
  return QueueText(connection, static_cast<unsigned int>(answer.status), std::move(answer.text));
}

MHD_Result FontServer::Impl::TakeRequest(void* self, MHD_Connection* connection, const char* url, const char* method,
                                         const char*, const char* bytes, std::size_t* size, void** request) {
  try {
    auto* taken = static_cast<Request*>(*request);
    if (taken == nullptr) {
      *request = new Request(IdOf(connection));
      return Begin(connection, url, method) ? MHD_YES : MHD_NO;
    }
    if (*size > 0) {
      taken->body.append(bytes, *size);
      *size = 0;
      return MHD_YES;
    }
    return static_cast<Impl*>(self)->Answer(connection, url, *taken) ? MHD_YES : MHD_NO;
  } catch (const std::exception&) {
    // Whatever went wrong, it ends this one connection.
    return MHD_NO;
  }
}

void FontServer::Impl::Completed(void*, MHD_Connection*, void** request, MHD_RequestTerminationCode) {
  delete static_cast<Request*>(std::exchange(*request, nullptr));
}

void FontServer::Impl::Notice(void* self, MHD_Connection* connection, void**, MHD_ConnectionNotificationCode what) {
  auto& server = *static_cast<Impl*>(self);
  const ConnectionTable::Id id = IdOf(connection);
  if (what == MHD_CONNECTION_NOTIFY_CLOSED) return server.connections.Remove(id);
  const MHD_ConnectionInfo* const client = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CLIENT_ADDRESS);
  try {
    const std::string network = client != nullptr ? NetworkOf(client->client_addr) : "";
    if (const auto leaving = server.connections.Add(id, network, server.clock.Now())) End(*leaving);
  } catch (const std::exception&) {
    // Nobody may be connected whose time is not watched.
    End(id);
  }
}

ssize_t FontServer::Impl::GiveFile(void* sending, std::uint64_t position, char* buffer, std::size_t most) {
  auto& answer = *static_cast<Sending*>(sending);
  answer.server.connections.NoteProgress(answer.id, answer.server.clock.Now());
  const std::uintmax_t left = answer.size - std::min<std::uintmax_t>(position, answer.size);
  const auto count = static_cast<std::streamsize>(std::min<std::uintmax_t>(left, most));
  answer.file.read(buffer, count);
  // A file that has become shorter ends the connection, so the client sees that something is missing.
  return answer.file.gcount() == count && count > 0 ? static_cast<ssize_t>(count) : MHD_CONTENT_READER_END_WITH_ERROR;
}

ConnectionTable::Id FontServer::Impl::IdOf(MHD_Connection* connection) {
  const MHD_ConnectionInfo* const info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD);
  return info != nullptr ? static_cast<ConnectionTable::Id>(info->connect_fd) : -1;
}

void FontServer::Impl::End(ConnectionTable::Id id) {
#ifdef _WIN32
  constexpr int kBothWays = SD_BOTH;
#else
  constexpr int kBothWays = SHUT_RDWR;
#endif
  // The library then finds the connection ended, and cleans up behind it.
  static_cast<void>(shutdown(static_cast<MHD_socket>(id), kBothWays));
}

void FontServer::Impl::EndOverdue() {
  for (const ConnectionTable::Id id : connections.Overdue(clock.Now())) End(id);
}

FontServer::FontServer(core::update::FontAnswers answers, std::function<void(const std::string&)> note,
                       const core::base::Clock& clock, const ConnectionTable::Limits& limits)
    : m_impl(std::make_unique<Impl>(std::move(answers), std::move(note), clock, limits)) {}

FontServer::~FontServer() = default;

core::base::Result<> FontServer::Open(const std::string& address, std::uint16_t port) {
  m_impl->address = address;
  m_impl->port = port;
  addrinfo wanted{};
  wanted.ai_flags = AI_PASSIVE | AI_NUMERICSERV;
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (getaddrinfo(address.c_str(), std::to_string(port).c_str(), &wanted, &found) != 0) found = nullptr;
  const std::unique_ptr<addrinfo, AddressDeleter> places(found);
  for (const addrinfo* place = places.get(); place != nullptr; place = place->ai_next)
    if (m_impl->Start(*place)) return {};
  return core::base::Failure{core::base::FailureKind::Failed,
                             (port == 0 ? address : Address()) +
                                 " cannot be used: it is taken, needs more rights or is no address of this computer. "
                                 "Choose another with --port or --address."};
}

std::string FontServer::Address() const {
  const bool colons = m_impl->address.find(':') != std::string::npos;
  return (colons ? "[" + m_impl->address + "]" : m_impl->address) + ":" + std::to_string(m_impl->port);
}

core::base::Result<> FontServer::Run(const std::function<bool()>& goOn) {
  while (goOn()) {
    if (MHD_run_wait(m_impl->daemon, kTurnMilliseconds) != MHD_YES)
      return core::base::Failure{core::base::FailureKind::Failed,
                                 "The system lets the server wait for nobody any more. Start it again."};
    m_impl->EndOverdue();
  }
  return {};
}

}  // namespace kestrin::platform::net
