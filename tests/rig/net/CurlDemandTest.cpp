// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <string>
#include <vector>

#include "platform/net/CurlTransfer.h"
#include "support/FakeClock.h"
#include "support/ScriptedServer.h"

namespace kestrin::support {
namespace {

using namespace std::chrono_literals;
using platform::net::CurlTransfer;
using testing::ElementsAre;
using testing::IsEmpty;
using Connection = ScriptedServer::Connection;
using Control = core::update::TransferControl;

constexpr std::int64_t kAMinute = 65536;

/// What is demanded of a server that never falls silent. A second passes with every turn of the client.
class CurlDemandTest : public testing::Test {
 protected:
  /// The states that are told.
  std::vector<int> Fetch(const ScriptedServer& server, std::int64_t bytesAMinute) {
    std::vector<int> states;
    CurlTransfer transfer(
        [this] {
          ++turns;
          clock.Advance(1s);
        },
        CurlTransfer::Patience{}, &clock);
    transfer.OnStateChanged([&](int state) { states.push_back(state); });
    transfer.Demand(bytesAMinute);
    EXPECT_TRUE(transfer.Execute("http://" + server.Host(), "POST", "svc=gct&did=1", "Host:x"));
    while (transfer.StillExecuting()) {
      ++turns;
      clock.Advance(1s);
    }
    if (!states.empty()) return states;
    body.clear();
    for (std::string chunk = transfer.NextChunk(8192); !chunk.empty(); chunk = transfer.NextChunk(8192)) body += chunk;
    return states;
  }

  /// For scripts: waits until the client has had that many turns; false when it has gone.
  bool AwaitTurn(Connection& client, int turn) {
    constexpr int kMostWaits = 20000;
    for (int wait = 0; turns < turn; ++wait)
      if (client.AwaitClose(1) || wait == kMostWaits) return false;
    return true;
  }
  /// Sends a part of that size in the turns 0, 50, 100 and so on.
  ScriptedServer::Script Parts(std::size_t size, std::size_t length) {
    return [=, this](Connection& client) {
      client.Send("HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(length) + "\r\n\r\n");
      for (std::size_t sent = 0; sent < length; sent += size)
        if (!AwaitTurn(client, static_cast<int>(sent / size) * 50) || !client.Send(std::string(size, 'x'))) return;
      client.AwaitClose();
    };
  }

  FakeClock clock;
  std::atomic<int> turns{0};
  std::string body;
};

TEST_F(CurlDemandTest, APieceWhoseFrameNeverEndsIsGivenUp) {
  for (const std::int64_t demand : {Control::kAllOfIt, kAMinute}) {
    turns = 0;
    const ScriptedServer server([](Connection& client) {
      client.Send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1;");
      while (client.Send(std::string(1000, 'a'))) {
      }
    });
    EXPECT_THAT(Fetch(server, demand), ElementsAre(Control::kError));
    EXPECT_GE(turns, 59);
    EXPECT_LE(turns, 70);
  }
}

TEST_F(CurlDemandTest, ATextThatDripsIsGivenUp) {
  const ScriptedServer server([this](Connection& client) {
    client.Send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n");
    for (int turn = 0; AwaitTurn(client, turn) && client.Send("x"); ++turn) {
    }
  });
  EXPECT_THAT(Fetch(server, Control::kAllOfIt), ElementsAre(Control::kError));
  EXPECT_LE(turns, 70);
}

TEST_F(CurlDemandTest, AHeadThatDripsIsGivenUp) {
  const ScriptedServer server([this](Connection& client) {
    client.Send("HTTP/1.1 200 OK\r\nX-One: ");
    for (int turn = 0; AwaitTurn(client, turn) && client.Send("x"); ++turn) {
    }
  });
  EXPECT_THAT(Fetch(server, kAMinute), ElementsAre(Control::kError));
  EXPECT_LE(turns, 70);
}

TEST_F(CurlDemandTest, AFileThatBringsEnoughInEveryMinuteIsTaken) {
  const ScriptedServer server(Parts(66000, 3 * 66000));
  EXPECT_THAT(Fetch(server, kAMinute), IsEmpty());
  EXPECT_EQ(body.size(), 3 * 66000U);
  EXPECT_GE(turns, 100) << "in more than a minute";
}

TEST_F(CurlDemandTest, AFileThatBringsTooLittleInOneMinuteIsGivenUp) {
  // Two parts in the first minute, one in the second.
  const ScriptedServer server(Parts(65000, 20 * 65000));
  EXPECT_THAT(Fetch(server, kAMinute), ElementsAre(Control::kError));
  EXPECT_GE(turns, 110);
  EXPECT_LE(turns, 130);
}

TEST_F(CurlDemandTest, TimeInWhichThePersonWasAskedSomethingIsNotTheServers) {
  const ScriptedServer server([&](Connection& client) {
    client.Send("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nx");
    // The client has looked more than once since.
    if (AwaitTurn(client, 5)) client.Send("y");
    client.AwaitClose();
  });
  std::vector<int> states;
  CurlTransfer transfer(
      [&] {
        if (turns++ == 0) clock.Advance(1h);
      },
      CurlTransfer::Patience{}, &clock);
  transfer.OnStateChanged([&](int state) { states.push_back(state); });
  transfer.Demand(Control::kAllOfIt);
  ASSERT_TRUE(transfer.Execute("http://" + server.Host(), "POST", "svc=gct&did=1", "Host:x"));
  while (transfer.StillExecuting()) {
  }
  EXPECT_EQ(transfer.NextChunk(8192), "xy");
  EXPECT_THAT(states, IsEmpty());
}

}  // namespace
}  // namespace kestrin::support
