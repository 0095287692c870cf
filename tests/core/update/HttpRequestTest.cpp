// SPDX-License-Identifier: MIT
#include "core/update/HttpRequest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "core/base/PathText.h"
#include "core/update/FontStore.h"
#include "core/update/SmallDisk.h"
#include "support/RecordingDisk.h"
#include "support/ScriptedTransfer.h"
#include "support/TestFiles.h"

namespace kestrin::core::update {
namespace {

using support::ScriptedTransfer;
using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

/// Bytes that differ, so that a chunk in the wrong place is seen.
std::string Body(std::size_t size) {
  std::string body(size, '\0');
  for (std::size_t i = 0; i < size; ++i) body[i] = static_cast<char>((i * 7 + i / 251) & 0xFF);
  return body;
}

class HttpRequestTest : public testing::Test {
 protected:
  HttpRequestTest() {
    request.Initialize(transfer);
    request.OnProgress([this](std::int16_t percentage) { progress.push_back(percentage); });
  }

  std::vector<std::string> FilesIn() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder.Path()))
      names.push_back(base::TextOf(entry.path().filename()));
    return names;
  }
  void Download(const ScriptedTransfer::Answer& answer) {
    transfer.answers.push_back(answer);
    EXPECT_EQ(request.requestData("svc=dld", folder.Path(), "a.lsu"), "");
  }

  support::TemporaryFolder folder;
  ScriptedTransfer transfer;
  int turns = 0;
  std::function<void()> atTurn;
  support::RecordingDisk disk;
  FontStore store{folder.Path(), disk};
  SinkFor sinkFor = [this](const fs::path& place, const std::string& name) { return store.Receive(place, name); };
  HttpRequest request{"fonts.example:8080", sinkFor, [this] {
                        ++turns;
                        if (atTurn) atTurn();
                      }};
  std::vector<std::int16_t> progress;
};

TEST_F(HttpRequestTest, PostsToTheServersRootWithExactlyItsHeaders) {
  transfer.answers.push_back(ScriptedTransfer::Whole("hello"));
  EXPECT_EQ(request.requestText("svc=gct&did=1"), "hello");
  EXPECT_EQ(request.requestStatus(), 0);
  ASSERT_EQ(transfer.requests.size(), 1U);
  EXPECT_EQ(transfer.requests[0].url, "http://fonts.example:8080");
  EXPECT_EQ(transfer.requests[0].method, "POST");
  EXPECT_EQ(transfer.requests[0].body, "svc=gct&did=1");
  EXPECT_EQ(transfer.requests[0].headers,
            "Host:fonts.example:8080\r\nUser-Agent:VMTUpdateModule\r\nConnection:keep-alive\r\n"
            "Content-Type:application/x-www-form-urlencoded");
  EXPECT_EQ(transfer.cancels, 0);
  EXPECT_GE(turns, 3);
}

TEST_F(HttpRequestTest, TheKindOfConnectionIsNoPartOfTheHost) {
  for (const auto& [server, url] : {std::pair("https://fonts.example:8443", "https://fonts.example:8443"),
                                    std::pair("HTTP://fonts.example:8443", "http://fonts.example:8443")}) {
    HttpRequest asking(server, sinkFor);
    asking.Initialize(transfer);
    transfer.requests.clear();
    transfer.answers = {ScriptedTransfer::Whole("hello"), ScriptedTransfer::Whole("x")};
    EXPECT_EQ(asking.requestText("svc=gct&did=1"), "hello");
    asking.requestData("svc=dld", folder.Path(), "a.lsu");
    ASSERT_EQ(transfer.requests.size(), 2U);
    EXPECT_EQ(transfer.requests[0].url, url);
    EXPECT_EQ(transfer.requests[1].url, std::string(url) + "/tst/gct/");
    for (const ScriptedTransfer::Request& sent : transfer.requests)
      EXPECT_EQ(sent.headers,
                "Host:fonts.example:8443\r\nUser-Agent:VMTUpdateModule\r\nConnection:keep-alive\r\n"
                "Content-Type:application/x-www-form-urlencoded");
  }
}

TEST_F(HttpRequestTest, AsksForFilesAtTheirOwnPath) {
  Download(ScriptedTransfer::Whole("x"));
  EXPECT_EQ(transfer.requests[0].url, "http://fonts.example:8080/tst/gct/");
  EXPECT_EQ(transfer.requests[0].body, "svc=dld");
  EXPECT_EQ(support::ReadBytes(folder / "a.lsu"), "x");
}

TEST_F(HttpRequestTest, ATextOfExactlyOneChunkIsReadToItsEnd) {
  for (const std::size_t size : {0U, 1U, 8191U, 8192U, 8193U, 16384U, 100000U}) {
    transfer.answers.push_back({Body(size)});
    EXPECT_EQ(request.requestText("q"), Body(size)) << size;
    EXPECT_EQ(request.requestStatus(), 0) << size;
  }
  // One read more than there are chunks: only an empty one ends a text.
  transfer.bytesGiven = 0;
  turns = 0;
  transfer.answers.push_back({Body(8192), 200, {}, 0});
  EXPECT_EQ(request.requestText("q").size(), 8192U);
  EXPECT_EQ(turns, 3) << "one before the request, one after each of two reads";
}

TEST_F(HttpRequestTest, ADownloadOf20000BytesTellsThreePercentages) {
  Download(ScriptedTransfer::Whole(Body(20000)));
  EXPECT_EQ(request.requestStatus(), 0);
  EXPECT_THAT(progress, ElementsAre(41, 82, 100));
  EXPECT_THAT(FilesIn(), ElementsAre("a.lsu"));
  EXPECT_EQ(support::ReadBytes(folder / "a.lsu"), Body(20000));
}

TEST_F(HttpRequestTest, PercentagesAreRoundedWithTiesToTheEvenNumber) {
  // 8192 of 327680 bytes are 2.5 % each: 2.5, 5, 7.5, ... 100.
  Download(ScriptedTransfer::Whole(Body(327680)));
  ASSERT_EQ(progress.size(), 40U);
  EXPECT_THAT(std::vector<std::int16_t>(progress.begin(), progress.begin() + 6), ElementsAre(2, 5, 8, 10, 12, 15));
  EXPECT_EQ(progress.back(), 100);
}

TEST_F(HttpRequestTest, AnOldFileOfThatNameIsReplaced) {
  support::WriteBytes(folder / "a.lsu", "old");
  Download(ScriptedTransfer::Whole("new bytes"));
  EXPECT_EQ(support::ReadBytes(folder / "a.lsu"), "new bytes");
}

/// A download that fails leaves nothing behind.
struct BadDownload {
  const char* what;
  ScriptedTransfer::Answer answer;
  std::int16_t status;
};

TEST_F(HttpRequestTest, ADownloadThatFailsLeavesNothingBehind) {
  const std::string body = Body(20000);
  const auto withLength = [&](const std::string& length) {
    return ScriptedTransfer::Answer{body, 200, {{"Content-Length", length}}};
  };
  ScriptedTransfer::Answer disconnected = ScriptedTransfer::Whole(body);
  disconnected.breakAt = 10000;
  disconnected.breakNotice = ScriptedTransfer::kDisconnected;
  ScriptedTransfer::Answer error = disconnected;
  error.breakNotice = ScriptedTransfer::kError;
  ScriptedTransfer::Answer atTheStart = error;
  atTheStart.breakAt = 0;
  ScriptedTransfer::Answer executing = ScriptedTransfer::Whole(body);
  executing.noticeWhileExecuting = ScriptedTransfer::kError;
  ScriptedTransfer::Answer closing = executing;
  closing.noticeWhileExecuting = ScriptedTransfer::kDisconnected;
  ScriptedTransfer::Answer notFound = ScriptedTransfer::Whole("not here");
  notFound.status = 404;
  ScriptedTransfer::Answer redirect = notFound;
  redirect.status = 302;
  ScriptedTransfer::Answer noHead = notFound;
  noHead.status = 0;
  ScriptedTransfer::Answer closedBeforeTheHead = noHead;
  closedBeforeTheHead.noticeWithAnswer = ScriptedTransfer::kDisconnected;
  ScriptedTransfer::Answer closedBehindAnErrorPage = notFound;
  closedBehindAnErrorPage.noticeWithAnswer = ScriptedTransfer::kDisconnected;
  ScriptedTransfer::Answer refused;
  refused.refused = true;
  ScriptedTransfer::Answer broken;
  broken.throwsAtStart = true;
  const BadDownload table[] = {
      {"length 0", withLength("0"), 1},
      {"no length", {body}, 1},
      {"negative length", withLength("-5"), 1},
      {"length that is no number", withLength("many"), 1},
      {"length with a tail", withLength("20000 bytes"), 1},
      {"empty length", withLength(""), 1},
      {"longer than it says", withLength("19999"), 2},
      {"a chunk longer than it says", withLength("8192"), 2},
      {"shorter than it says", withLength("20001"), 1},
      {"too large", withLength("67108865"), 2},
      {"too large for any number", withLength("99999999999999999999999"), 2},
      {"disconnected half way", disconnected, 1},
      {"error half way", error, 2},
      {"error before the first byte", atTheStart, 2},
      {"error while executing", executing, 2},
      {"closed while executing", closing, 1},
      {"not found", notFound, 2},
      {"redirected", redirect, 2},
      {"no answer at all", noHead, 2},
      {"closed instead of answered", closedBeforeTheHead, 1},
      {"not found and closed", closedBehindAnErrorPage, 2},
      {"could not be started", refused, 3},
      {"the control raises an error", broken, 3},
  };
  for (const BadDownload& row : table) {
    Download(row.answer);
    EXPECT_EQ(request.requestStatus(), row.status) << row.what;
    EXPECT_THAT(FilesIn(), ElementsAre()) << row.what;
  }
  // What went before does not matter to the next one.
  Download(ScriptedTransfer::Whole(body));
  EXPECT_EQ(request.requestStatus(), 0);
}

TEST_F(HttpRequestTest, ABlankBeforeTheLengthDoesNotMatter) {
  Download({"abc", 200, {{"Content-Length", " 3 "}}});
  EXPECT_EQ(request.requestStatus(), 0);
  EXPECT_EQ(support::ReadBytes(folder / "a.lsu"), "abc");
}

TEST_F(HttpRequestTest, AServerThatClosesBehindItsAnswerIsFine) {
  ScriptedTransfer::Answer answer = ScriptedTransfer::Whole("all of it");
  answer.noticeWithAnswer = ScriptedTransfer::kDisconnected;
  transfer.answers.push_back(answer);
  EXPECT_EQ(request.requestText("q"), "all of it");
  EXPECT_EQ(request.requestStatus(), 0);
  EXPECT_THAT(progress, ElementsAre()) << "texts have no progress";

  answer.noticeWithAnswer = ScriptedTransfer::kError;
  transfer.answers.push_back(answer);
  EXPECT_EQ(request.requestText("q"), "");
  EXPECT_EQ(request.requestStatus(), 2) << "an error is one whenever it comes";
}

TEST_F(HttpRequestTest, OtherStatesAreIgnored) {
  transfer.answers.push_back(ScriptedTransfer::Whole("text"));
  transfer.onChunk = [this](std::size_t) {
    for (const int state : {0, 1, 8, 9, 12}) transfer.Tell(state);
  };
  EXPECT_EQ(request.requestText("q"), "text");
  EXPECT_EQ(request.requestStatus(), 0);
}

TEST_F(HttpRequestTest, ATextThatBreaksOffIsReturnedAsFarAsItCame) {
  struct Row {
    int notice;
    std::int16_t status;
  };
  for (const Row row : {Row{ScriptedTransfer::kDisconnected, 1}, Row{ScriptedTransfer::kError, 2}}) {
    ScriptedTransfer::Answer answer{Body(20000)};
    answer.breakAt = 9000;
    answer.breakNotice = row.notice;
    transfer.answers.push_back(answer);
    EXPECT_EQ(request.requestText("q"), Body(9000));
    EXPECT_EQ(request.requestStatus(), row.status);
  }
}

TEST_F(HttpRequestTest, ATextFailsLikeAFile) {
  struct Row {
    const char* what;
    ScriptedTransfer::Answer answer;
    std::int16_t status;
  };
  ScriptedTransfer::Answer executing{"text"};
  executing.noticeWhileExecuting = ScriptedTransfer::kError;
  ScriptedTransfer::Answer refused{"text"};
  refused.refused = true;
  ScriptedTransfer::Answer broken{"text"};
  broken.throwsAtStart = true;
  const Row table[] = {
      {"error while executing", executing, 2},
      {"server error", {"text", 500}, 2},
      {"informational status", {"text", 199}, 2},
      {"redirected", {"text", 300}, 2},
      {"shorter than it says", {"text", 200, {{"Content-Length", "5"}}}, 1},
      {"longer than it says", {"text", 200, {{"Content-Length", "3"}}}, 2},
      {"could not be started", refused, 3},
      {"the control raises an error", broken, 3},
      {"last good status", {"text", 299}, 0},
      {"empty", {"", 204}, 0},
  };
  for (const Row& row : table) {
    transfer.answers.push_back(row.answer);
    (void)request.requestText("q");
    EXPECT_EQ(request.requestStatus(), row.status) << row.what;
  }
}

TEST_F(HttpRequestTest, ATextMayHave16MiBAndNotAByteMore) {
  constexpr std::size_t kMost = 16 * 1024 * 1024;
  for (const std::size_t size : {kMost, kMost + 1}) {
    transfer.answers.push_back({std::string(size, 'x')});
    EXPECT_EQ(request.requestText("q").size(), kMost);
    EXPECT_EQ(request.requestStatus(), size == kMost ? 0 : 2);
  }
}

TEST_F(HttpRequestTest, WithoutAControlEveryRequestFails) {
  HttpRequest unbound("fonts.example", sinkFor);
  EXPECT_EQ(unbound.requestText("q"), "");
  EXPECT_EQ(unbound.requestStatus(), 3);
}

TEST_F(HttpRequestTest, CanBeCancelledAtEveryTurn) {
  for (int turn = 1; turn <= 5; ++turn) {
    turns = 0;
    transfer.answers = {ScriptedTransfer::Whole(Body(20000))};
    atTurn = [&] {
      if (turns == turn) request.cancel();
    };
    EXPECT_EQ(request.requestData("q", folder.Path(), "a.lsu"), "");
    EXPECT_EQ(turns, turn) << "it went on";
    EXPECT_EQ(request.requestStatus(), 1) << turn;
    EXPECT_THAT(FilesIn(), ElementsAre()) << turn;
    transfer.answers.clear();
  }
  // Nothing runs any more, so there is nothing to cancel.
  const int cancels = transfer.cancels;
  request.cancel();
  EXPECT_EQ(transfer.cancels, cancels);
}

TEST_F(HttpRequestTest, CanBeCancelledWhileAChunkIsWaitedFor) {
  transfer.onChunk = [this](std::size_t given) {
    if (given > 8192) request.cancel();
  };
  Download(ScriptedTransfer::Whole(Body(20000)));
  EXPECT_EQ(request.requestStatus(), 1);
  EXPECT_THAT(progress, ElementsAre(41));
  EXPECT_THAT(FilesIn(), ElementsAre());
}

TEST_F(HttpRequestTest, AMissingFolderIsToldOf) {
  transfer.answers.push_back(ScriptedTransfer::Whole("abc"));
  EXPECT_EQ(request.requestData("q", folder / "missing", "a.lsu"), "");
  EXPECT_EQ(request.requestStatus(), 3);
  EXPECT_THAT(request.fileResult().Text(), HasSubstr("tmp\" could not be written: No such file or directory"));
}

TEST_F(HttpRequestTest, AFolderInTheWayOfTheFileIsToldOf) {
  fs::create_directories(folder / "a.lsu");
  Download(ScriptedTransfer::Whole("abc"));
  EXPECT_EQ(request.requestStatus(), 3);
  EXPECT_THAT(request.fileResult().Text(),
              HasSubstr("a.lsu\" could not be written: a folder of that name is in the way"));
  Download({"", 404});
  EXPECT_EQ(request.fileResult().Text(), "") << "that was not the disk's fault";
}

TEST_F(HttpRequestTest, ALinkThatComesDuringTheRequestIsNotFollowed) {
  const fs::path victim = folder / "victim";
  support::WriteBytes(victim, "mine");
  for (const fs::path& target : {victim, folder / "nowhere", folder / "tmp"}) {
    turns = 0;
    // The second turn is the one in which the answer is waited for.
    atTurn = [&] {
      if (turns == 2) fs::create_symlink(target, folder / "tmp");
    };
    Download(ScriptedTransfer::Whole(Body(20000)));
    EXPECT_EQ(request.requestStatus(), 0) << target;
    EXPECT_EQ(support::ReadBytes(victim), "mine") << target;
    EXPECT_FALSE(fs::is_symlink(folder / "a.lsu")) << target;
    EXPECT_EQ(support::ReadBytes(folder / "a.lsu"), Body(20000)) << target;
    EXPECT_EQ(FilesIn().size(), 2U) << target;
    fs::remove(folder / "a.lsu");
  }
}

TEST_F(HttpRequestTest, AFolderThatBecomesALinkDuringTheRequestGetsNothing) {
  const fs::path elsewhere = folder / "elsewhere";
  const fs::path own = folder / "own";
  fs::create_directories(elsewhere);
  support::WriteBytes(elsewhere / "tmp", "mine");
  // While the answer is waited for, behind its first chunk, and behind its last.
  for (const int turn : {2, 3, 5}) {
    fs::create_directories(own);
    turns = 0;
    atTurn = [&] {
      if (turns != turn) return;
      fs::rename(own, folder / "moved");
      fs::create_directory_symlink(elsewhere, own);
    };
    transfer.answers.push_back(ScriptedTransfer::Whole(Body(20000)));
    EXPECT_EQ(request.requestData("q", own, "a.lsu"), "");
    EXPECT_GE(turns, turn);
    EXPECT_EQ(request.requestStatus(), 3) << turn;
    EXPECT_THAT(request.fileResult().Text(), HasSubstr("own\" has become another folder meanwhile")) << turn;
    EXPECT_EQ(support::ReadBytes(elsewhere / "tmp"), "mine") << turn;
    EXPECT_EQ(std::distance(fs::directory_iterator(elsewhere), fs::directory_iterator()), 1) << turn;
    fs::remove(own);
    fs::remove_all(folder / "moved");
  }
}

TEST_F(HttpRequestTest, AFileOfExactly64MiBIsTaken) {
  Download(ScriptedTransfer::Whole(std::string(std::size_t{64} * 1024 * 1024, 'x')));
  EXPECT_EQ(request.requestStatus(), 0);
  EXPECT_EQ(fs::file_size(folder / "a.lsu"), 67108864U);
}

TEST_F(HttpRequestTest, AFileGetsItsNameOnceItIsOnTheDisk) {
  disk.onFlush = [&](const fs::path& path) {
    EXPECT_EQ(path, folder / "tmp");
    EXPECT_EQ(support::ReadBytes(folder / "tmp"), Body(20000));
    EXPECT_FALSE(fs::exists(folder / "a.lsu"));
    return std::make_error_code(std::errc::no_space_on_device);
  };
  Download(ScriptedTransfer::Whole(Body(20000)));
  EXPECT_EQ(disk.flushed.size(), 1U);
  EXPECT_EQ(request.requestStatus(), 3);
  EXPECT_THAT(request.fileResult().Text(), testing::EndsWith("tmp\" could not be written: No space left on device"));
  EXPECT_FALSE(fs::exists(folder / "a.lsu"));
}

TEST_F(HttpRequestTest, NobodyElsesFileGetsTheName) {
  // In the last turn of a download of three chunks: one before the request, one while it is answered, three for them.
  struct Row {
    const char* what;
    std::function<void()> replace;
  };
  const Row table[] = {
      {"shorter", [&] { support::WriteBytes(folder / "tmp", "another's"); }},
      {"longer", [&] { support::WriteBytes(folder / "tmp", Body(20001)); }},
      {"link", [&] { fs::create_symlink(folder / "mine", folder / "tmp"); }},
      {"folder", [&] { fs::create_directories(folder / "tmp"); }},
      {"none", [] {}},
  };
  support::WriteBytes(folder / "mine", Body(20000));
  for (const Row& row : table) {
    turns = 0;
    atTurn = [&] {
      if (turns != 5) return;
      fs::remove(folder / "tmp");
      row.replace();
    };
    Download(ScriptedTransfer::Whole(Body(20000)));
    EXPECT_EQ(request.requestStatus(), 3) << row.what;
    EXPECT_THAT(request.fileResult().Text(), testing::EndsWith("tmp\" has become another file meanwhile")) << row.what;
    EXPECT_FALSE(fs::exists(folder / "a.lsu")) << row.what;
    fs::remove(folder / "tmp");
  }
}

TEST_F(HttpRequestTest, ATextHasAMinuteAndAFileBringsSomethingInEach) {
  transfer.answers.push_back(ScriptedTransfer::Whole("x"));
  (void)request.requestText("q");
  Download(ScriptedTransfer::Whole("x"));
  transfer.answers.push_back(ScriptedTransfer::Whole("x"));
  (void)request.requestText("q");
  ASSERT_EQ(transfer.requests.size(), 3U);
  EXPECT_EQ(transfer.requests[0].bytesAMinute, ScriptedTransfer::kAllOfIt);
  EXPECT_EQ(transfer.requests[1].bytesAMinute, 65536);
  EXPECT_EQ(transfer.requests[2].bytesAMinute, ScriptedTransfer::kAllOfIt);
}

#ifdef __linux__
TEST_F(HttpRequestTest, ADiskThatRefusesTheLastBytesIsToldOf) {
  // So few that they wait until the file is closed.
  {
    const support::SmallDisk small(10);
    Download(ScriptedTransfer::Whole(Body(50)));
  }
  EXPECT_EQ(request.requestStatus(), 3);
  EXPECT_THAT(request.fileResult().Text(), HasSubstr("tmp\" could not be written: File too large"));
  EXPECT_FALSE(fs::exists(folder / "a.lsu"));
}

TEST_F(HttpRequestTest, AFullDiskIsToldOf) {
  {
    const support::SmallDisk small(10000);
    Download(ScriptedTransfer::Whole(Body(20000)));
  }
  EXPECT_EQ(request.requestStatus(), 3);
  EXPECT_THAT(request.fileResult().Text(), HasSubstr("tmp\" could not be written: File too large"));
  EXPECT_FALSE(fs::exists(folder / "a.lsu"));
}
#endif

}  // namespace
}  // namespace kestrin::core::update
