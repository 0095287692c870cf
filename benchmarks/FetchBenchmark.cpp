// SPDX-License-Identifier: MIT
// A file of 64 MiB from a server on this computer onto the disk: the update's own client and, in turn, libcurl alone as
// the curl program uses it, which writes what it gets straight into a file. The client waits until the disk has all of
// it, libcurl leaves that to the system. `ratio` is the client's speed as a share of libcurl's.

#include <benchmark/benchmark.h>
#include <curl/curl.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "core/update/FontStore.h"
#include "core/update/HttpRequest.h"
#include "platform/files/SystemDisk.h"
#include "platform/net/CurlTransfer.h"
#include "support/ScriptedServer.h"

namespace kestrin::platform::net {
namespace {

namespace fs = std::filesystem;
using support::ScriptedServer;

constexpr std::size_t kFileSize = 64U * 1024 * 1024;
/// What the curl program lets libcurl take from the system at once.
constexpr long kProgramsBuffer = 102400;

class Folder {
 public:
  Folder() { fs::create_directories(m_path); }
  ~Folder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  [[nodiscard]] const fs::path& Path() const { return m_path; }

 private:
  fs::path m_path = fs::temp_directory_path() /
                    ("kestrin fetch " + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
};

double Seconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// What else the computer does makes some of the times longer.
double Median(std::vector<double> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

void FetchWithLibcurl(const std::string& host, const fs::path& path) {
  const std::unique_ptr<CURL, void (*)(CURL*)> easy(curl_easy_init(), curl_easy_cleanup);
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "wb"), std::fclose);
  const std::string url = "http://" + host + core::update::HttpRequest::kDataPath;
  curl_easy_setopt(easy.get(), CURLOPT_URL, url.c_str());
  curl_easy_setopt(easy.get(), CURLOPT_POSTFIELDS, "svc=dld");
  curl_easy_setopt(easy.get(), CURLOPT_PROXY, "");
  curl_easy_setopt(easy.get(), CURLOPT_BUFFERSIZE, kProgramsBuffer);
  curl_easy_setopt(easy.get(), CURLOPT_WRITEDATA, file.get());
  curl_easy_perform(easy.get());
}

void Fetch64MiB(benchmark::State& state) {
  const std::string content(kFileSize, 'x');
  ScriptedServer server([&](ScriptedServer::Connection& client) {
    client.Send("HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(kFileSize) + "\r\n\r\n");
    client.Send(content);
    client.AwaitClose();
  });
  const Folder folder;
  CurlTransfer transfer({});
  files::SystemDisk disk;
  const core::update::FontStore store(folder.Path(), disk);
  core::update::HttpRequest request(
      server.Host(), [&](const fs::path& place, const std::string& name) { return store.Receive(place, name); });
  request.Initialize(transfer);
  std::vector<double> own;
  std::vector<double> plain;
  for (auto _ : state) {
    const double mine = Seconds([&] { static_cast<void>(request.requestData("svc=dld", folder.Path(), "own.lsu")); });
    own.push_back(mine);
    plain.push_back(Seconds([&] { FetchWithLibcurl(server.Host(), folder.Path() / "plain.lsu"); }));
    std::error_code missing;
    if (request.requestStatus() != 0 || fs::file_size(folder.Path() / "own.lsu", missing) != kFileSize ||
        fs::file_size(folder.Path() / "plain.lsu", missing) != kFileSize)
      return state.SkipWithError("a file did not arrive");
    // A file that is there already would be written over, which takes another time.
    fs::remove(folder.Path() / "own.lsu");
    fs::remove(folder.Path() / "plain.lsu");
    state.SetIterationTime(mine);
  }
  constexpr double kSize = kFileSize / (1024.0 * 1024.0);
  state.counters["MiB/s"] = kSize / Median(own);
  state.counters["libcurl MiB/s"] = kSize / Median(plain);
  state.counters["ratio"] = Median(plain) / Median(own);
}
BENCHMARK(Fetch64MiB)->Unit(benchmark::kMillisecond)->UseManualTime()->MinTime(2.0);

}  // namespace
}  // namespace kestrin::platform::net
