// SPDX-License-Identifier: MIT
#include "core/update/HttpRequest.h"

#include <gmock/gmock.h>

#include "core/base/PathText.h"
#include "core/update/FontStore.h"
#include "platform/files/SystemDisk.h"
#include "platform/net/CurlTransfer.h"
#include "support/ScriptedServer.h"
#include "support/TestFiles.h"

namespace kestrin::support {
namespace {

using core::update::HttpRequest;
using testing::ElementsAre;
using testing::IsEmpty;

std::string Whole(const std::string& body) {
  return "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

/// The request client over the real transfer control.
class HttpRequestRig : public testing::Test {
 protected:
  /// Asks a server that answers so for a file of 20,000 bytes or whatever it has.
  std::int16_t Download(const std::string& answer, bool close) {
    ScriptedServer server([&](ScriptedServer::Connection& client) {
      client.Send(answer);
      if (!close) client.AwaitClose();
    });
    HttpRequest request(server.Host(), m_sinkFor);
    request.Initialize(m_transfer);
    request.OnProgress([this](std::int16_t percentage) { m_progress.push_back(percentage); });
    EXPECT_EQ(request.requestData("svc=dld&did=1&fid=A&ffd=b.lsu", m_folder.Path(), "b.lsu"), "");
    m_requests = server.Requests();
    return request.requestStatus();
  }

  [[nodiscard]] std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(m_folder.Path()))
      names.push_back(core::base::TextOf(entry.path().filename()));
    return names;
  }

  TemporaryFolder m_folder;
  platform::files::SystemDisk m_disk;
  core::update::FontStore m_store{m_folder.Path(), m_disk};
  core::update::SinkFor m_sinkFor = [this](const std::filesystem::path& folder, const std::string& name) {
    return m_store.Receive(folder, name);
  };
  platform::net::CurlTransfer m_transfer{{}};
  std::vector<std::int16_t> m_progress;
  std::vector<std::string> m_requests;
};

TEST_F(HttpRequestRig, AFileArrivesUnderItsName) {
  const std::string body(20000, '\xA5');
  EXPECT_EQ(Download(Whole(body), false), 0);
  EXPECT_THAT(Files(), ElementsAre("b.lsu"));
  EXPECT_EQ(ReadBytes(m_folder / "b.lsu"), body);
  EXPECT_THAT(m_progress, ElementsAre(41, 82, 100));
}

TEST_F(HttpRequestRig, TheWholeRequestIsTheHeadersOfTheProtocolAndTheLength) {
  ScriptedServer server([](ScriptedServer::Connection& client) {
    client.Send(Whole("status:OK"));
    client.AwaitClose();
  });
  HttpRequest request(server.Host(), m_sinkFor);
  request.Initialize(m_transfer);
  EXPECT_EQ(request.requestText("svc=gct&did=4B535401"), "status:OK");
  EXPECT_EQ(request.requestStatus(), 0);
  EXPECT_THAT(server.Requests(), ElementsAre("POST / HTTP/1.1\r\nHost:" + server.Host() +
                                             "\r\nUser-Agent:VMTUpdateModule\r\nConnection:keep-alive\r\n"
                                             "Content-Type:application/x-www-form-urlencoded\r\n"
                                             "Content-Length: 20\r\n\r\nsvc=gct&did=4B535401"));
}

TEST_F(HttpRequestRig, AConnectionThatDropsHalfWayLeavesNothing) {
  EXPECT_EQ(Download(Whole(std::string(20000, 'x')).substr(0, 10000), true), 1);
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(HttpRequestRig, ABodyThatIsLongerThanItsLengthLeavesNothing) {
  EXPECT_EQ(Download(Whole(std::string(20000, 'x')) + "y", false), 2);
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(HttpRequestRig, AFileWithoutALengthIsRefused) {
  EXPECT_EQ(Download("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n0\r\n\r\n", false), 1);
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(HttpRequestRig, AnErrorPageIsNoFile) {
  EXPECT_EQ(Download("HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\ngone", false), 2);
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(HttpRequestRig, AServerThatClosesInsteadOfAnsweringIsAskedOnce) {
  EXPECT_EQ(Download("", true), 1);
  EXPECT_THAT(Files(), IsEmpty());
  EXPECT_EQ(m_requests.size(), 1U);
}

TEST_F(HttpRequestRig, ATextOfExactlyOneChunkIsWhole) {
  const std::string text(8192, 't');
  ScriptedServer server([&](ScriptedServer::Connection& client) {
    client.Send(Whole(text));
    client.AwaitClose();
  });
  HttpRequest request(server.Host(), m_sinkFor);
  request.Initialize(m_transfer);
  EXPECT_EQ(request.requestText("svc=gct&did=1"), text);
  EXPECT_EQ(request.requestStatus(), 0);
}

}  // namespace
}  // namespace kestrin::support
