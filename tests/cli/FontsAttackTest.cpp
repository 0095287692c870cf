// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <sys/resource.h>

#include <fstream>
#include <future>

#include "FontsFixture.h"
#include "support/RawClient.h"
#include "support/Watched.h"

namespace kestrin::support {
namespace {

using testing::EndsWith;
using testing::StartsWith;

constexpr std::size_t kMebibyte = std::size_t{1024} * 1024;

/// The most memory that a process has had so far, in bytes.
std::size_t PeakMemory(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with("VmHWM:")) return std::stoul(line.substr(6)) * 1024;
  ADD_FAILURE() << "the system does not tell of the memory";
  return 0;
}

/// Clients that nobody wants, against the built server.
class FontsAttackTest : public FontsFixture {
 protected:
  FontsAttackTest() {
    // Connections of this test, not of the server, which is started with the old limit.
    OfferFont("Ember");
    m_server = Serve();
    getrlimit(RLIMIT_NOFILE, &m_old);
    const rlimit many{std::min<rlim_t>(m_old.rlim_max, 4096), m_old.rlim_max};
    setrlimit(RLIMIT_NOFILE, &many);
  }
  ~FontsAttackTest() override { setrlimit(RLIMIT_NOFILE, &m_old); }

  /// What an honest client gets.
  [[nodiscard]] std::string Catalogue() const {
    RawClient client(m_server.address);
    client.Send(RawClient::Request("/", "svc=gct&did=1"));
    return client.ReadAll();
  }

  Server m_server;
  rlimit m_old{};
};

struct Flood {
  const char* what;
  std::string head;
  std::string piece;
  std::size_t mebibytes;
};

TEST_F(FontsAttackTest, AnHonestClientIsServedWhateverTheOthersDo) {
  const std::string post = "POST / HTTP/1.1\r\nHost:x\r\n";
  const std::string kilobyte(1024, 'x');
  std::string headers;
  while (headers.size() < 65536) headers += "X-" + std::to_string(headers.size()) + ": " + kilobyte + "\r\n";
  const Flood floods[] = {
      {"a body in pieces", post + "Transfer-Encoding: chunked\r\n\r\n", "10000\r\n" + std::string(65536, 'x') + "\r\n",
       300},
      {"frames of pieces", post + "Transfer-Encoding: chunked\r\n\r\n1;", std::string(65536, 'x'), 300},
      {"a body of no length", post + "\r\n", std::string(65536, 'x'), 200},
      {"a body of great length", post + "Content-Length: 209715200\r\n\r\n", std::string(65536, 'x'), 200},
      {"headers", post, headers, 200},
      {"one header", post + "X-One: ", std::string(65536, 'x'), 200},
      {"a path", "POST /", std::string(65536, 'x'), 200},
  };
  constexpr std::size_t kIdle = 1500;
  std::vector<RawClient> idle;
  for (std::size_t number = 0; number < kIdle; ++number) idle.emplace_back(m_server.address);
  std::vector<RawClient> dripping;
  for (int number = 0; number < 8; ++number) dripping.emplace_back(m_server.address);
  const auto drip = [&] {
    for (RawClient& client : dripping) client.Send("P");
  };
  std::vector<std::future<std::size_t>> flooding;
  for (const Flood& flood : floods)
    flooding.push_back(std::async(std::launch::async, [&flood, this] {
      RawClient client(m_server.address);
      client.Send(flood.head);
      return client.Flood(flood.piece, flood.mebibytes * kMebibyte);
    }));

  for (int round = 0; round < 10; ++round) {
    drip();
    const std::string answer = Catalogue();
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(answer, EndsWith("clientv:1\r\nEmber\r\n"));
  }
  for (std::size_t number = 0; number < std::size(floods); ++number)
    EXPECT_LT(flooding[number].get(), floods[number].mebibytes * kMebibyte) << floods[number].what;
  EXPECT_EQ(RunJson(0, Update(m_server.address))["outcome"], "updated");
  if (!kWatched) {
    EXPECT_LT(PeakMemory(m_server.process->Id()), 64 * kMebibyte);
  }
  // Some of them are connected still.
  drip();
  EXPECT_EQ(Stop(m_server).code, 130);
}

TEST_F(FontsAttackTest, TheNextConnectionsOfAnAddressEndItsOldestIdleOnes) {
  RawClient first(m_server.address);
  std::vector<RawClient> others;
  for (int number = 0; number < 32; ++number) others.emplace_back(m_server.address);
  EXPECT_EQ(first.ReadAll(), "") << "33 are one too many";
  others.back().Send(RawClient::Request("/", "svc=gct&did=1"));
  EXPECT_THAT(others.back().ReadAll(), StartsWith("HTTP/1.1 200 OK\r\n"));
}

}  // namespace
}  // namespace kestrin::support
