// SPDX-License-Identifier: MIT
#include "platform/net/FontServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "support/FakeClock.h"
#include "support/RawClient.h"
#include "support/TestFiles.h"

namespace kestrin::platform::net {
namespace {

using namespace std::chrono_literals;
using support::RawClient;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;

constexpr const char* kCatalogue = "svc=gct&did=1";

/// Whether this process has the file open.
bool IsOpen(const fs::path& path) {
  for (const auto& descriptor : fs::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    if (fs::read_symlink(descriptor.path(), gone) == path) return true;
  }
  return false;
}

/// The server and its clients take turns on one thread.
class FontServerTest : public testing::Test {
 protected:
  FontServerTest() {
    fs::create_directories(folder / "Ember");
    support::WriteBytes(folder / "Ember" / "a.lsu", sound);
    support::WriteBytes(folder / "Ember" / "Ember.lscfg", "BOOT\r\n/x/a.lsu\r\n 70\r\n");
    EXPECT_EQ(server.Open("127.0.0.1", 0).Text(), "");
  }

  /// Lets the server work until the client has all that it gets.
  std::string Answer(RawClient& client) {
    std::string answer;
    EXPECT_EQ(server.Run([&] { return client.ReadSome(answer); }).Text(), "");
    return answer;
  }
  std::string AnswerTo(const std::string& request) {
    RawClient client(server.Address());
    client.Send(request);
    return Answer(client);
  }

  support::TemporaryFolder folder;
  support::FakeClock clock;
  std::string sound = std::string(1024 * 1024, 's') + "end";
  std::vector<std::string> notes;
  FontServer server{core::update::FontAnswers(core::update::FontCollection(folder.Path())),
                    [this](const std::string& note) { notes.push_back(note); }, clock};
};

TEST_F(FontServerTest, AnswersOneRequestAndEndsTheConnection) {
  const std::string request = RawClient::Request("/", kCatalogue, "Connection:keep-alive\r\n");
  const std::string answer = AnswerTo(request + request);
  EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 OK\r\n"));
  EXPECT_THAT(answer, HasSubstr("Connection: close\r\n"));
  EXPECT_THAT(answer, HasSubstr("Content-Length: 29\r\n"));
  EXPECT_THAT(answer, EndsWith("\r\n\r\nstatus:OK\r\nclientv:1\r\nEmber\r\n"));
  EXPECT_THAT(notes, ElementsAre("list of 1 font"));
}

TEST_F(FontServerTest, AnswersWithTheWholeFileWhateverPartIsAskedFor) {
  for (const char* const range : {"", "Range: bytes=0-3\r\n", "Range: bytes=100-\r\n", "Range: bytes=-5\r\n"}) {
    const std::string answer = AnswerTo(RawClient::Request("/tst/gct/", "svc=dld&did=1&fid=Ember&ffd=a.lsu", range));
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 OK\r\n")) << range;
    const std::size_t body = answer.find("\r\n\r\n") + 4;
    EXPECT_THAT(answer.substr(0, body), HasSubstr("Content-Length: 1048579\r\n")) << range;
    EXPECT_TRUE(answer.substr(body) == sound) << range;
  }
  EXPECT_THAT(AnswerTo(RawClient::Request("/tst/gct/", "svc=dld&did=1&fid=Ember&ffd=b.lsu")),
              StartsWith("HTTP/1.1 404 "));
}

/// The value of a header of an answer; "" when there is none.
std::string HeaderOf(const std::string& answer, const std::string& name) {
  const std::size_t at = answer.find("\r\n" + name + ": ");
  if (at == answer.npos || at > answer.find("\r\n\r\n")) return "";
  const std::size_t start = at + name.size() + 4;
  return answer.substr(start, answer.find("\r\n", start) - start);
}

TEST_F(FontServerTest, ACacheMayKeepAFileButHasToAskWhetherItIsTheSame) {
  const auto answerTo = [this](const std::string& header) {
    return AnswerTo(RawClient::Request("/tst/gct/", "svc=dld&did=1&fid=Ember&ffd=a.lsu", header));
  };
  const std::string first = answerTo("");
  const std::string tag = HeaderOf(first, "ETag");
  EXPECT_EQ(HeaderOf(first, "X-Accel-Expires"), "@1") << "a second after 1970: long over";
  const std::string same = answerTo("If-None-Match: " + tag + "\r\n");
  EXPECT_THAT(same, StartsWith("HTTP/1.1 304 "));
  EXPECT_EQ(HeaderOf(same, "ETag"), tag);
  EXPECT_EQ(HeaderOf(same, "X-Accel-Expires"), "@1");
  EXPECT_THAT(same, EndsWith("\r\n\r\n"));
  EXPECT_THAT(notes, ElementsAre("Ember: a.lsu", "Ember: a.lsu, unchanged"));
  EXPECT_THAT(answerTo("If-None-Match: \"other\"\r\n"), StartsWith("HTTP/1.1 200 OK\r\n"));

  // As long as before, but written later; and as old as before, but longer.
  const fs::path file = folder / "Ember" / "a.lsu";
  const auto written = fs::last_write_time(file);
  support::WriteBytes(file, std::string(sound.size(), 't'));
  fs::last_write_time(file, written + 1ms);
  const std::string later = answerTo("If-None-Match: " + tag + "\r\n");
  EXPECT_THAT(later, StartsWith("HTTP/1.1 200 OK\r\n"));
  EXPECT_THAT(later, EndsWith("tttt"));
  EXPECT_NE(HeaderOf(later, "ETag"), tag);
  support::WriteBytes(file, sound + "+");
  fs::last_write_time(file, written);
  EXPECT_THAT(answerTo("If-None-Match: " + tag + "\r\n"), EndsWith("end+"));
}

TEST_F(FontServerTest, TextsAreNotToldApart) {
  const std::string answer = AnswerTo(RawClient::Request("/", kCatalogue));
  EXPECT_EQ(HeaderOf(answer, "ETag"), "");
  EXPECT_EQ(HeaderOf(answer, "X-Accel-Expires"), "");
}

TEST(FontServerPortTest, AServerThatIsStartedAnewGetsItsPortAtOnceAndASecondOneDoesNot) {
  const support::TemporaryFolder folder;
  const support::FakeClock clock;
  const auto make = [&] {
    return std::make_unique<FontServer>(
        core::update::FontAnswers(core::update::FontCollection(folder.Path())), [](const std::string&) {}, clock);
  };
  auto server = make();
  ASSERT_EQ(server->Open("127.0.0.1", 0).Text(), "");
  const std::string address = server->Address();
  const auto port = static_cast<std::uint16_t>(std::stoi(address.substr(address.find(':') + 1)));
  // The server ends the connection, so the system remembers it for a minute.
  RawClient client(address);
  client.Send(RawClient::Request("/", kCatalogue));
  std::string answer;
  EXPECT_EQ(server->Run([&] { return client.ReadSome(answer); }).Text(), "");
  EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 "));
  EXPECT_NE(make()->Open("127.0.0.1", port).Text(), "") << "two servers at one port";
  server = make();
  EXPECT_EQ(server->Open("127.0.0.1", port).Text(), "");
}

TEST_F(FontServerTest, TakesNoRequestOfMoreThanEightKibibytes) {
  const auto request = [](std::size_t size, bool inBody) {
    const std::string shortest = RawClient::Request("/", std::string(1000, 'x'), "X: \r\n");
    const std::string filling(size - shortest.size(), 'x');
    return inBody ? RawClient::Request("/", std::string(1000, 'x') + filling, "X: \r\n")
                  : RawClient::Request("/", std::string(1000, 'x'), "X: " + filling + "\r\n");
  };
  for (const bool inBody : {false, true}) {
    ASSERT_EQ(request(8192, inBody).size(), 8192U);
    EXPECT_THAT(AnswerTo(request(8192, inBody)), StartsWith("HTTP/1.1 200 ")) << inBody;
    EXPECT_THAT(AnswerTo(request(8193, inBody)), StartsWith("HTTP/1.1 413 ")) << inBody;
  }
  // Headers alone that are too long, and far too long.
  EXPECT_THAT(AnswerTo(request(9500, false)), StartsWith("HTTP/1.1 413 "));
  EXPECT_THAT(AnswerTo(request(100000, false)), StartsWith("HTTP/1.1 4"));
  EXPECT_EQ(notes.size(), 2U) << "nothing else came to an answer";
}

TEST_F(FontServerTest, TakesNoRequestThatDoesNotTellItsLength) {
  EXPECT_THAT(AnswerTo("POST / HTTP/1.1\r\nHost:x\r\n\r\n"), StartsWith("HTTP/1.1 411 "));
  EXPECT_THAT(AnswerTo("POST / HTTP/1.1\r\nHost:x\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nsvc=g\r\n0\r\n\r\n"),
              StartsWith("HTTP/1.1 411 "));
  EXPECT_THAT(AnswerTo("POST / HTTP/1.1\r\nHost:x\r\nTransfer-Encoding: chunked\r\nContent-Length: 5\r\n\r\n"
                       "5\r\nsvc=g\r\n0\r\n\r\n"),
              StartsWith("HTTP/1.1 4"))
      << "which of the two it means nobody knows";
  EXPECT_THAT(AnswerTo("GET / HTTP/1.1\r\nHost:x\r\n\r\n"), StartsWith("HTTP/1.1 404 "));
  EXPECT_THAT(AnswerTo(RawClient::Request("/tst/gct", kCatalogue)), StartsWith("HTTP/1.1 404 "));
  EXPECT_TRUE(notes.empty());
}

TEST_F(FontServerTest, ARequestHasTenSecondsToArriveInAll) {
  // A byte every second, in the head or in the body: each is a sign of life, and none helps.
  for (const std::size_t atOnce : {0U, 90U}) {
    const std::string request = RawClient::Request("/", std::string(100, 'x'));
    RawClient client(server.Address());
    client.Send(request.substr(0, atOnce));
    std::size_t dripped = 0;
    std::string answer;
    EXPECT_EQ(server
                  .Run([&] {
                    if (!client.ReadSome(answer)) return false;
                    clock.Advance(1s);
                    client.Send(request.substr(atOnce + dripped++, 1));
                    return dripped < 60;
                  })
                  .Text(),
              "");
    EXPECT_EQ(answer, "");
    EXPECT_GE(dripped, 10U);
    EXPECT_LE(dripped, 13U) << "it is told within a turn or two";
  }
}

TEST_F(FontServerTest, ARequestThatArrivesInNineSecondsIsAnswered) {
  const std::string request = RawClient::Request("/", kCatalogue);
  RawClient client(server.Address());
  std::size_t sent = 0;
  std::string answer;
  EXPECT_EQ(server
                .Run([&] {
                  if (!client.ReadSome(answer)) return false;
                  if (sent < request.size()) {
                    if (sent > 0) clock.Advance(1s);
                    const std::size_t count = std::min<std::size_t>(10, request.size() - sent);
                    client.Send(request.substr(sent, count));
                    sent += count;
                  }
                  return true;
                })
                .Text(),
            "");
  ASSERT_LE(request.size(), 100U) << "ten pieces, nine seconds";
  EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 OK\r\n"));
}

TEST_F(FontServerTest, WhoTakesNoPieceOfAFileForAMinuteIsLeft) {
  // More than any system keeps for a client that does not read.
  constexpr std::uintmax_t kSize = std::uintmax_t{32} * 1024 * 1024;
  fs::resize_file(folder / "Ember" / "a.lsu", kSize);
  RawClient client(server.Address());
  client.Send(RawClient::Request("/tst/gct/", "svc=dld&did=1&fid=Ember&ffd=a.lsu"));
  const auto opened = [&] { return IsOpen(folder / "Ember" / "a.lsu"); };
  EXPECT_EQ(server.Run([&] { return !opened(); }).Text(), "");
  // A minute and more in each turn: the first in which nothing more fits into the connection is one too many.
  constexpr int kMostTurns = 1000;
  int turns = 0;
  EXPECT_EQ(server
                .Run([&] {
                  clock.Advance(61s);
                  return ++turns < kMostTurns && opened();
                })
                .Text(),
            "");
  ASSERT_LT(turns, kMostTurns);
  const std::string answer = client.ReadAll();
  EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 OK\r\n"));
  EXPECT_LT(answer.size(), kSize);
}

}  // namespace
}  // namespace kestrin::platform::net
