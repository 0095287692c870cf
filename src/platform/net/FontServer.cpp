#include "platform/net/FontServer.h"

#include <httplib.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <mutex>
#include <system_error>
#include <utility>
#include <vector>

namespace kestrin::net {

namespace {

/// How many clients are answered at a time.
constexpr std::size_t kClients = 8;
/// A request of this protocol is a line; beyond this it is none.
constexpr std::size_t kLongestRequest = 4096;
constexpr std::size_t kPiece = 65536;
/// How often it is asked whether to go on.
constexpr std::chrono::milliseconds kIdle{50};

/// The server's threads, and its question whether to go on: while it waits for somebody, and with everybody who comes,
/// for on a busy day it never waits.
class Clients final : public httplib::TaskQueue {
 public:
  explicit Clients(std::function<void()> goOn) : m_pool(kClients), m_goOn(std::move(goOn)) {}

  void enqueue(std::function<void()> task) override {
    m_goOn();
    // Even then: the task is what closes the connection.
    m_pool.enqueue(std::move(task));
  }
  void shutdown() override { m_pool.shutdown(); }
  void on_idle() override { m_goOn(); }

 private:
  httplib::ThreadPool m_pool;
  std::function<void()> m_goOn;
};

/// Without the option by which two programs could share a port, each getting half of the requests.
void AloneAtThePort(socket_t socket) {
#ifdef _WIN32
  const int option = SO_EXCLUSIVEADDRUSE;
#else
  // A port whose connections have only just ended may be taken again.
  const int option = SO_REUSEADDR;
#endif
  const int yes = 1;
  setsockopt(socket, SOL_SOCKET, option, reinterpret_cast<const char*>(&yes), sizeof(yes));
}

/// Lets the answer be the file, read as it is sent. False when it cannot be read.
bool SetFile(httplib::Response& response, const std::filesystem::path& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  auto file = std::make_shared<std::ifstream>(path, std::ios::binary);
  if (error || !file->is_open()) return false;
  response.set_content_provider(static_cast<std::size_t>(size), "application/octet-stream",
                                [file](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
                                  std::vector<char> piece(std::min(length, kPiece));
                                  file->seekg(static_cast<std::streamoff>(offset));
                                  file->read(piece.data(), static_cast<std::streamsize>(piece.size()));
                                  // A file that has become shorter ends the connection, so the client sees that
                                  // something is missing.
                                  return file->good() && sink.write(piece.data(), piece.size());
                                });
  return true;
}

}  // namespace

struct FontServer::Impl {
  Impl(FontAnswers theAnswers, std::function<void(const std::string&)> theNote)
      : answers(std::move(theAnswers)), note(std::move(theNote)) {}

  void Send(FontAnswers::Answer answer, httplib::Response& response) {
    if (answer.file && !SetFile(response, *answer.file)) answer = {404, "", std::nullopt, "unreadable: " + answer.note};
    response.status = answer.status;
    if (!answer.file) response.set_content(answer.text, "text/plain");
    const std::lock_guard lock(noting);
    note(answer.note);
  }

  FontAnswers answers;
  std::function<void(const std::string&)> note;
  std::mutex noting;
  std::string address;
  int port = 0;
  httplib::Server server;
};

FontServer::FontServer(FontAnswers answers, std::function<void(const std::string&)> note)
    : m_impl(std::make_unique<Impl>(std::move(answers), std::move(note))) {
  httplib::Server& server = m_impl->server;
  server.set_socket_options(AloneAtThePort);
  server.set_tcp_nodelay(true);
  server.set_keep_alive_timeout(1);
  server.set_idle_interval(kIdle);
  server.set_payload_max_length(kLongestRequest);
  server.Post(FontAnswers::kTextPath,
              [impl = m_impl.get()](const httplib::Request& request, httplib::Response& response) {
                impl->Send(impl->answers.Text(request.body), response);
              });
  server.Post(FontAnswers::kDownloadPath,
              [impl = m_impl.get()](const httplib::Request& request, httplib::Response& response) {
                impl->Send(impl->answers.Download(request.body), response);
              });
}

FontServer::~FontServer() = default;

std::string FontServer::Open(const std::string& address, std::uint16_t port) {
  m_impl->address = address;
  m_impl->port = port;
  bool open = true;
  if (port == 0) {
    m_impl->port = m_impl->server.bind_to_any_port(address);
    open = m_impl->port > 0;
  } else {
    open = m_impl->server.bind_to_port(address, port);
  }
  if (open) return "";
  return (port == 0 ? address : Address()) +
         " cannot be used: it is taken, needs more rights or is no address of this computer. Choose another "
         "with --port or --address.";
}

std::string FontServer::Address() const {
  const bool colons = m_impl->address.find(':') != std::string::npos;
  return (colons ? "[" + m_impl->address + "]" : m_impl->address) + ":" + std::to_string(std::max(m_impl->port, 0));
}

void FontServer::Run(const std::function<bool()>& goOn) {
  httplib::Server& server = m_impl->server;
  server.new_task_queue = [&] {
    return new Clients([&] {
      if (!goOn()) server.stop();
    });
  };
  server.listen_after_bind();
}

}  // namespace kestrin::net
