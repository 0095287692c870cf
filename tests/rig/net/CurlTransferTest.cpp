// SPDX-License-Identifier: MIT
#include "platform/net/CurlTransfer.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cstdlib>
#include <future>
#include <optional>
#include <ostream>

#include "core/base/Clock.h"
#include "platform/net/FontServer.h"
#include "support/ScriptedServer.h"
#include "support/TestFiles.h"

namespace kestrin::support {
namespace {

using platform::net::CurlTransfer;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using Connection = ScriptedServer::Connection;
using Control = core::update::TransferControl;

constexpr const char* kHeaders = "Host:example\r\nX-One:1\r\nContent-Type:application/x-www-form-urlencoded";
constexpr std::size_t kChunk = 8192;
constexpr CurlTransfer::Patience kShort{milliseconds(200), milliseconds(200)};

/// Bytes of every value, so that nothing which takes text for bytes goes unseen.
std::string Bytes(std::size_t count) {
  std::string bytes(count, '\0');
  for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<char>(i * 7 + i / 256);
  return bytes;
}

std::string Head(const std::string& headers, const std::string& status = "200 OK") {
  return "HTTP/1.1 " + status + "\r\n" + headers + "\r\n";
}
std::string WithLength(std::size_t length) { return Head("Content-Length: " + std::to_string(length) + "\r\n"); }

struct Answer {
  /// The states that were told, without repetition.
  std::vector<int> states;
  int status = 0;
  std::vector<std::size_t> chunks;
  std::string body;
};

/// Asks and reads to the end.
Answer Fetch(CurlTransfer& transfer, const std::string& host) {
  Answer answer;
  transfer.OnStateChanged([&](int state) {
    if (answer.states.empty() || answer.states.back() != state) answer.states.push_back(state);
  });
  EXPECT_TRUE(transfer.Execute("http://" + host, "POST", "svc=gct&did=1", kHeaders));
  while (transfer.StillExecuting()) {
  }
  answer.status = transfer.HttpStatus();
  for (std::string chunk = transfer.NextChunk(kChunk); !chunk.empty(); chunk = transfer.NextChunk(kChunk)) {
    answer.chunks.push_back(chunk.size());
    answer.body += chunk;
  }
  return answer;
}

struct Row {
  const char* name;
  ScriptedServer::Script script;
  /// What is told: nothing (0), kDisconnected or kError.
  int state;
  /// Empty where it depends on the library's version whether the status is told.
  std::optional<int> status;
  /// What is read of the body.
  std::string body;
};
void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

/// Sends these bytes and waits for the client to end the connection.
ScriptedServer::Script Kept(const std::string& bytes) {
  return [bytes](Connection& client) { client.Send(bytes) && client.AwaitClose(); };
}
/// Sends these bytes and ends the connection.
ScriptedServer::Script Closed(const std::string& bytes) {
  return [bytes](Connection& client) { client.Send(bytes); };
}
ScriptedServer::Script WithReset(const std::string& bytes) {
  return [bytes](Connection& client) {
    client.Send(bytes);
    client.Reset();
  };
}

const std::string kBody = Bytes(100000);
const std::string kChunked = Head("Transfer-Encoding: chunked\r\n") + "5\r\nabcde\r\n3\r\nfgh\r\n";
constexpr int kFine = 0;
constexpr int kCut = Control::kDisconnected;
constexpr int kWrong = Control::kError;

const Row kRows[]{
    {"AWholeBody", Kept(WithLength(100000) + kBody), kFine, 200, kBody},
    {"AWholeBodyBeforeTheEnd", Closed(WithLength(100000) + kBody), kFine, 200, kBody},
    {"AnAnnouncedEnd", Closed(Head("Content-Length: 100000\r\nConnection: close\r\n") + kBody), kFine, 200, kBody},
    {"AResetBehindTheWholeBody", WithReset(WithLength(3) + "abc"), kFine, 200, "abc"},
    {"NoBody", Kept(WithLength(0)), kFine, 200, ""},
    {"NoContent", Kept(Head("", "204 No Content")), kFine, 204, ""},
    {"NoLength", Closed(Head("") + kBody), kFine, 200, kBody},
    {"TheOldProtocol", Closed("HTTP/1.0 200 OK\r\n\r\n" + kBody), kFine, 200, kBody},
    {"NoReason", Kept("HTTP/1.1 200\r\nContent-Length: 3\r\n\r\nabc"), kFine, 200, "abc"},
    {"InterimAnswer", Kept("HTTP/1.1 100 Continue\r\n\r\n" + WithLength(3) + "abc"), kFine, 200, "abc"},
    {"Chunked", Kept(kChunked + "0\r\n\r\n"), kFine, 200, "abcdefgh"},
    {"ChunkedWithTrailer", Kept(kChunked + "0\r\nX-More: 1\r\n\r\n"), kFine, 200, "abcdefgh"},
    {"CompressedStaysSo", Kept(Head("Content-Encoding: gzip\r\nContent-Length: 3\r\n") + "\x1F\x8B\x08"), kFine, 200,
     "\x1F\x8B\x08"},
    {"EndHalfWay", Closed(WithLength(100000) + kBody.substr(0, 50000)), kCut, 200, ""},
    {"ResetHalfWay", WithReset(WithLength(100000) + kBody.substr(0, 50000)), kCut, 200, ""},
    {"OneByteShort", Closed(WithLength(4) + "abc"), kCut, 200, ""},
    {"ChunkedCutOff", Closed(kChunked), kCut, 200, ""},
    {"NoAnswer", Closed(""), kCut, 0, ""},
    {"NoAnswerButReset", WithReset(""), kCut, 0, ""},
    {"OneByteTooLong", Kept(WithLength(3) + "abcd"), kWrong, 200, ""},
    {"MuchTooLong", Kept(WithLength(50000) + kBody), kWrong, 200, ""},
    {"LongerThanNothing", Kept(WithLength(0) + "a"), kWrong, 200, ""},
    {"TooLongBeforeTheAnnouncedEnd", Closed(Head("Content-Length: 3\r\nConnection: close\r\n") + "abcd"), kWrong, 200,
     ""},
    {"TooLongInTheOldProtocol", Closed("HTTP/1.0 200 OK\r\nContent-Length: 3\r\n\r\nabcd"), kWrong, 200, ""},
    {"ChunkedLongerThanAnnounced",
     Kept(Head("Transfer-Encoding: chunked\r\nContent-Length: 2\r\n") + "3\r\nabc\r\n0\r\n\r\n"), kWrong, 200, ""},
    {"ChunkedShorterThanAnnounced",
     Kept(Head("Transfer-Encoding: chunked\r\nContent-Length: 4\r\n") + "3\r\nabc\r\n0\r\n\r\n"), kCut, 200, ""},
    {"TwoLengths", Kept(Head("Content-Length: 3\r\nContent-Length: 4\r\n") + "abcd"), kWrong, 200, ""},
    {"CompressedOnTheWay", Kept(Head("Transfer-Encoding: gzip, chunked\r\n") + "0\r\n\r\n"), kWrong, std::nullopt, ""},
    {"NotFound", Kept(Head("Content-Length: 4\r\n", "404 Not Found") + "gone"), kWrong, 404, ""},
    {"ServerError", Kept(Head("Content-Length: 4\r\n", "500 Oh") + "oops"), kWrong, 500, ""},
    {"NotModified", Kept(Head("", "304 Not Modified")), kWrong, 304, ""},
    {"AnotherProtocol", Kept(Head("Upgrade: x\r\nConnection: Upgrade\r\n", "101 Switching")), kWrong, 101, ""},
    {"Garbage", Closed("hello world, this is no such protocol\r\n\r\n"), kWrong, 0, ""},
    {"Nulls", Closed(std::string(100, '\0')), kWrong, 0, ""},
    {"AHeadWithoutEnd",
     [](Connection& client) {
       client.Send("HTTP/1.1 200 OK\r\n");
       while (client.Send("X-More: " + std::string(1000, 'x') + "\r\n")) {
       }
     },
     kWrong, 0, ""},
    {"Silence", Kept(""), kWrong, 0, ""},
    {"SilenceInTheHead", Kept("HTTP/1.1 200 OK\r\nX-One: 1\r\n"), kWrong, 0, ""},
    {"SilenceInTheBody", Kept(WithLength(100000) + kBody.substr(0, 20)), kWrong, 200, ""},
    {"SilenceWithoutLength", Kept(Head("") + kBody.substr(0, 20)), kWrong, 200, ""},
    // All in all longer than the client's patience for silence, yet never silent.
    {"ASlowDrip",
     [](Connection& client) {
       client.Send(WithLength(10));
       for (int i = 0; i < 10; ++i)
         if (client.AwaitClose(30) || !client.Send("x")) return;
       client.AwaitClose();
     },
     kFine, 200, "xxxxxxxxxx"},
    {"ASlowDripInALineOfTheHead",
     [](Connection& client) {
       client.Send("HTTP/1.1 200 OK\r\nX-One: ");
       for (int i = 0; i < 10; ++i)
         if (client.AwaitClose(30) || !client.Send("x")) return;
       client.Send("\r\nContent-Length: 3\r\n\r\nabc");
       client.AwaitClose();
     },
     kFine, 200, "abc"},
};

class CurlTransferAnswerTest : public testing::TestWithParam<Row> {};

TEST_P(CurlTransferAnswerTest, IsTakenForWhatItIs) {
  const Row& row = GetParam();
  ScriptedServer server(row.script);
  CurlTransfer transfer({}, kShort);
  const Answer answer = Fetch(transfer, server.Host());
  EXPECT_THAT(answer.states, row.state == kFine ? std::vector<int>{} : std::vector<int>{row.state});
  EXPECT_EQ(answer.status, row.status.value_or(answer.status));
  // A body that is not whole may have been read in part.
  if (row.state == kFine) {
    EXPECT_EQ(answer.body, row.body);
  } else {
    EXPECT_EQ(kBody.compare(0, answer.body.size(), answer.body), 0);
  }
  EXPECT_EQ(transfer.NextChunk(kChunk), "");
  // Whatever the answer: the request went out once.
  EXPECT_EQ(server.Requests().size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(All, CurlTransferAnswerTest, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CurlTransferTest, TheRequestGoesOutAsItWasGiven) {
  ScriptedServer server(Kept(WithLength(0)));
  CurlTransfer transfer({});
  ASSERT_TRUE(transfer.Execute("http://" + server.Host() + "/tst/gct/", "POST", "svc=dld&fid=a b+c%20&ffd=\xC3\xA4.lsu",
                               "Host:fonts.example\r\nUser-Agent:Somebody\r\nConnection:keep-alive\r\n"
                               "Content-Type:application/x-www-form-urlencoded"));
  while (transfer.StillExecuting()) {
  }
  EXPECT_EQ(transfer.NextChunk(1), "");
  ASSERT_EQ(server.Requests().size(), 1U);
  const std::string request = server.Requests().front();
  const std::size_t headEnd = request.find("\r\n\r\n");
  ASSERT_NE(headEnd, request.npos) << request;
  EXPECT_EQ(request.substr(headEnd + 4), "svc=dld&fid=a b+c%20&ffd=\xC3\xA4.lsu");
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t end = request.find("\r\n"); start <= headEnd; start = end + 2, end = request.find("\r\n", start))
    lines.push_back(request.substr(start, end - start));
  EXPECT_EQ(lines.front(), "POST /tst/gct/ HTTP/1.1");
  // The order of headers means nothing.
  EXPECT_THAT(lines,
              testing::UnorderedElementsAre("POST /tst/gct/ HTTP/1.1", "Host:fonts.example", "User-Agent:Somebody",
                                            "Connection:keep-alive", "Content-Type:application/x-www-form-urlencoded",
                                            "Content-Length: 31"));
}

TEST(CurlTransferTest, AnAddressWithoutPathMeansTheRoot) {
  ScriptedServer server(Kept(WithLength(0)));
  CurlTransfer transfer({});
  static_cast<void>(Fetch(transfer, server.Host()));
  EXPECT_EQ(server.Requests().at(0).substr(0, 17), "POST / HTTP/1.1\r\n");
}

TEST(CurlTransferTest, ChunksAreOfTheAskedSizeUntilTheLast) {
  ScriptedServer server(Kept(WithLength(20000) + kBody.substr(0, 20000)));
  CurlTransfer transfer({});
  EXPECT_THAT(Fetch(transfer, server.Host()).chunks, ElementsAre(8192, 8192, 3616));
}

TEST(CurlTransferTest, ChunksAreOfTheAskedSizeHoweverTheBytesCome) {
  ScriptedServer server([](Connection& client) {
    client.Send(WithLength(20000));
    for (std::size_t at = 0; at < 20000; at += 1000) client.Send(kBody.substr(at, 1000));
    client.AwaitClose();
  });
  CurlTransfer transfer({});
  const Answer answer = Fetch(transfer, server.Host());
  EXPECT_THAT(answer.chunks, ElementsAre(8192, 8192, 3616));
  EXPECT_EQ(answer.body, kBody.substr(0, 20000));
}

TEST(CurlTransferTest, HeadersAreFoundInAnyLetterCase) {
  ScriptedServer server(Kept(Head("content-LENGTH:  3 \r\nX-Two: a: b\r\n") + "abc"));
  CurlTransfer transfer({});
  ASSERT_TRUE(transfer.Execute("http://" + server.Host(), "POST", "", kHeaders));
  EXPECT_EQ(transfer.GetHeader("Content-Length"), "");
  EXPECT_EQ(transfer.HttpStatus(), 0);
  while (transfer.StillExecuting()) {
  }
  EXPECT_EQ(transfer.GetHeader("Content-Length"), "3");
  EXPECT_EQ(transfer.GetHeader("x-two"), "a: b");
  EXPECT_EQ(transfer.GetHeader("X-Three"), "");
}

TEST(CurlTransferTest, ARedirectionIsNotFollowed) {
  ScriptedServer elsewhere(Kept(WithLength(3) + "abc"));
  ScriptedServer server(Kept(Head("Location: http://" + elsewhere.Host() + "/\r\nContent-Length: 0\r\n", "302 Found")));
  CurlTransfer transfer({});
  const Answer answer = Fetch(transfer, server.Host());
  EXPECT_EQ(answer.status, 302);
  EXPECT_THAT(answer.states, ElementsAre(kWrong));
  EXPECT_THAT(elsewhere.Requests(), IsEmpty());
}

TEST(CurlTransferTest, EveryRequestHasAConnectionOfItsOwnAndIsNeverRepeated) {
  std::atomic<int> answers{0};
  // The first answer leaves the connection open; whoever used it again would lose the second request.
  ScriptedServer server([&](Connection& client) {
    if (++answers == 2) return;
    client.Send(WithLength(3) + "abc");
    client.AwaitClose();
  });
  CurlTransfer transfer({});
  EXPECT_EQ(Fetch(transfer, server.Host()).body, "abc");
  EXPECT_THAT(Fetch(transfer, server.Host()).states, ElementsAre(kCut));
  EXPECT_EQ(server.Requests().size(), 2U);
  EXPECT_EQ(Fetch(transfer, server.Host()).body, "abc");
}

/// Environment variables of one test.
class Environment {
 public:
  explicit Environment(std::vector<std::string> names, const std::string& value) : m_names(std::move(names)) {
    for (const std::string& name : m_names) setenv(name.c_str(), value.c_str(), 1);
  }
  ~Environment() {
    for (const std::string& name : m_names) unsetenv(name.c_str());
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  std::vector<std::string> m_names;
};

TEST(CurlTransferTest, AProxyInTheEnvironmentPlaysNoPart) {
  ScriptedServer proxy(Kept(WithLength(5) + "wrong"));
  ScriptedServer server(Kept(WithLength(5) + "right"));
  const Environment environment({"http_proxy", "HTTP_PROXY", "all_proxy", "ALL_PROXY"}, "http://" + proxy.Host());
  CurlTransfer transfer({});
  EXPECT_EQ(Fetch(transfer, server.Host()).body, "right");
  EXPECT_THAT(proxy.Requests(), IsEmpty());
}

TEST(CurlTransferTest, NobodyAtThePortIsAnError) {
  std::optional<ScriptedServer> server(Closed(""));
  const std::string host = server->Host();
  server.reset();
  CurlTransfer transfer({});
  const Answer answer = Fetch(transfer, host);
  EXPECT_THAT(answer.states, ElementsAre(kWrong));
  EXPECT_EQ(answer.status, 0);
}

TEST(CurlTransferTest, WhoDoesNotLetAnybodyInIsAnErrorAfterAWhile) {
  const FullQueue server;
  CurlTransfer transfer({}, {milliseconds(100), milliseconds(60000)});
  EXPECT_THAT(Fetch(transfer, server.Host()).states, ElementsAre(kWrong));
}

TEST(CurlTransferTest, OtherKindsOfRequestsAndAddressesAreRefused) {
  CurlTransfer transfer({});
  EXPECT_FALSE(transfer.Execute("http://127.0.0.1:1", "GET", "", kHeaders));
  EXPECT_FALSE(transfer.StillExecuting());
  for (const char* url : {"https://", "file:///etc/hostname", "ftp://127.0.0.1:1", "", "http://"}) {
    std::vector<int> states;
    transfer.OnStateChanged([&](int state) { states.push_back(state); });
    ASSERT_TRUE(transfer.Execute(url, "POST", "", kHeaders)) << url;
    while (transfer.StillExecuting()) {
    }
    EXPECT_THAT(states, ElementsAre(kWrong)) << url;
    EXPECT_EQ(transfer.NextChunk(kChunk), "") << url;
  }
}

TEST(CurlTransferTest, WhoDoesNotEncryptIsNotAskedAnything) {
  const TemporaryFolder folder;
  const core::base::SystemClock clock;
  std::vector<std::string> notes;
  platform::net::FontServer server(
      core::update::FontAnswers(core::update::FontCollection(folder.Path())),
      [&](const std::string& note) { notes.push_back(note); }, clock);
  ASSERT_EQ(server.Open("127.0.0.1", 0).Text(), "");
  CurlTransfer transfer({});
  std::vector<int> states;
  transfer.OnStateChanged([&](int state) { states.push_back(state); });
  ASSERT_TRUE(transfer.Execute("https://" + server.Address(), "POST", "svc=gct&did=1", kHeaders));
  EXPECT_EQ(server.Run([&] { return transfer.StillExecuting(); }).Text(), "");
  EXPECT_THAT(states, ElementsAre(kWrong));
  EXPECT_EQ(transfer.HttpStatus(), 0);
  EXPECT_THAT(transfer.Trouble(), testing::StartsWith("Nothing was fetched: no encrypted connection"));
  EXPECT_THAT(notes, IsEmpty());
  // The next request knows nothing of it.
  ScriptedServer plain(Kept(WithLength(3) + "abc"));
  EXPECT_EQ(Fetch(transfer, plain.Host()).body, "abc");
  EXPECT_EQ(transfer.Trouble(), "");
}

TEST(CurlTransferTest, CertificatesThatCannotBeReadAreNoReasonToTrustAnybody) {
  ScriptedServer server(Kept(""));
  CurlTransfer transfer({}, kShort);
  transfer.Trust("/no/such/file.pem");
  ASSERT_TRUE(transfer.Execute("https://" + server.Host(), "POST", "", kHeaders));
  while (transfer.StillExecuting()) {
  }
  EXPECT_EQ(transfer.Trouble(),
            "Nothing was fetched: \"/no/such/file.pem\" holds no certificates. Correct the variable KESTRIN_CA_FILE.");
  EXPECT_EQ(Fetch(transfer, server.Host()).status, 0) << "plain requests need none";
  EXPECT_EQ(transfer.Trouble(), "");
}

TEST(CurlTransferTest, ThePersonsInterfaceHasItsTurnWhileNothingComes) {
  ScriptedServer server(Kept(WithLength(100) + "a"));
  int turns = 0;
  CurlTransfer transfer([&] { ++turns; }, kShort);
  EXPECT_THAT(Fetch(transfer, server.Host()).states, ElementsAre(kWrong));
  // 200 ms in turns of 10; a busy computer may miss some.
  EXPECT_GE(turns, 5);
}

TEST(CurlTransferTest, ACancelInATurnEndsTheConnectionAtOnce) {
  std::promise<bool> closed;
  ScriptedServer server([&](Connection& client) {
    client.Send(WithLength(100) + "a");
    closed.set_value(client.AwaitClose());
  });
  CurlTransfer* running = nullptr;
  CurlTransfer transfer([&] { running->Cancel(); });
  running = &transfer;
  const Answer answer = Fetch(transfer, server.Host());
  EXPECT_THAT(answer.states, IsEmpty());
  EXPECT_EQ(answer.body, "");
  EXPECT_TRUE(closed.get_future().get());
  EXPECT_FALSE(transfer.StillExecuting());
  EXPECT_EQ(transfer.HttpStatus(), 0);
}

TEST(CurlTransferTest, ACancelBeforeTheAnswerEndsTheConnectionAtOnce) {
  std::promise<bool> closed;
  ScriptedServer server([&](Connection& client) { closed.set_value(client.AwaitClose()); });
  CurlTransfer transfer({});
  ASSERT_TRUE(transfer.Execute("http://" + server.Host(), "POST", "x", kHeaders));
  while (server.Requests().empty()) ASSERT_TRUE(transfer.StillExecuting());
  transfer.Cancel();
  EXPECT_TRUE(closed.get_future().get());
  EXPECT_FALSE(transfer.StillExecuting());
  EXPECT_EQ(transfer.NextChunk(kChunk), "");
  transfer.Cancel();
}

TEST(CurlTransferTest, ANewRequestEndsTheOneThatRuns) {
  ScriptedServer silent(Kept(""));
  ScriptedServer server(Kept(WithLength(3) + "abc"));
  CurlTransfer transfer({});
  ASSERT_TRUE(transfer.Execute("http://" + silent.Host(), "POST", "x", kHeaders));
  ASSERT_TRUE(transfer.StillExecuting());
  const Answer answer = Fetch(transfer, server.Host());
  EXPECT_EQ(answer.body, "abc");
  EXPECT_THAT(answer.states, IsEmpty());
}

TEST(CurlTransferTest, ACancelFromTheNoticeOfAFailureIsHarmless) {
  ScriptedServer server(Closed(WithLength(4) + "abc"));
  CurlTransfer transfer({});
  int notices = 0;
  transfer.OnStateChanged([&](int) {
    ++notices;
    transfer.Cancel();
  });
  ASSERT_TRUE(transfer.Execute("http://" + server.Host(), "POST", "x", kHeaders));
  while (transfer.StillExecuting()) {
  }
  EXPECT_EQ(transfer.NextChunk(kChunk), "");
  EXPECT_EQ(transfer.NextChunk(kChunk), "");
  EXPECT_EQ(notices, 1);
}

TEST(CurlTransferTest, AServerThatIsFasterThanTheReaderWaits) {
  constexpr std::size_t kOffered = 256U * 1024 * 1024;
  std::promise<std::size_t> taken;
  ScriptedServer server([&](Connection& client) {
    client.Send(WithLength(kOffered));
    taken.set_value(client.SendUntilFull(kBody));
    client.AwaitClose();
  });
  CurlTransfer transfer({});
  ASSERT_TRUE(transfer.Execute("http://" + server.Host(), "POST", "x", kHeaders));
  while (transfer.StillExecuting()) {
  }
  EXPECT_EQ(transfer.NextChunk(kChunk), kBody.substr(0, kChunk));
  // What the system itself keeps for the connection, and no more.
  EXPECT_LT(taken.get_future().get(), 32U * 1024 * 1024);
  transfer.Cancel();
}

}  // namespace
}  // namespace kestrin::support
