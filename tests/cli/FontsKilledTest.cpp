// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <future>
#include <limits>
#include <map>

#include "FontsFixture.h"
#include "core/update/FontAnswers.h"
#include "support/ScriptedServer.h"
#include "support/Watched.h"

namespace kestrin::support {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kParts = 4;
constexpr const char* kAnother =
    "Another update is putting fonts into this folder. Wait until it is done and try again.";

/// A server of the offered fonts that stops where the test says, and tells that it has.
class StoppingServer {
 public:
  static constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

  explicit StoppingServer(const fs::path& offered) : m_answers(core::update::FontCollection(offered)) {}

  [[nodiscard]] std::string Host() const { return m_server.Host(); }
  /// The bytes of every answer so far.
  [[nodiscard]] const std::vector<std::size_t>& Answers() const { return m_sizes; }

  /// From now on: stops behind so many bytes of answers or, `atRequest`, when the next request behind them is here.
  /// Then it does `then`, and sends the rest when that has returned true. Only while no client is connected.
  void StopBehind(std::size_t bytes, bool atRequest, std::function<bool()> then) {
    m_left = bytes;
    m_atRequest = atRequest;
    m_then = std::move(then);
    m_stopped = false;
  }

 private:
  void Answer(ScriptedServer::Connection& client) {
    const std::string request = m_server.Requests().back();
    // Somebody who was killed before it came to that.
    if (request.empty()) return;
    if (m_stopped) return static_cast<void>(client.AwaitClose());
    const std::string body = request.substr(request.find("\r\n\r\n") + 4);
    const core::update::FontAnswers::Answer answer =
        request.starts_with("POST /tst/") ? m_answers.Download(body) : m_answers.Text(body);
    const std::string payload = answer.file ? ReadBytes(*answer.file) : answer.text;
    const std::string bytes =
        "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(payload.size()) + "\r\n\r\n" + payload;
    m_sizes.push_back(bytes.size());
    const std::size_t first = std::min(m_left, bytes.size());
    if (first > 0) client.Send(bytes.substr(0, first));
    m_left -= m_left == kNever ? 0 : first;
    const bool stops = m_left == 0 && (first == 0 || !m_atRequest);
    if (stops && m_then) {
      m_stopped = true;
      if (!std::exchange(m_then, nullptr)()) return static_cast<void>(client.AwaitClose());
      m_stopped = false;
      m_left = kNever;
    }
    client.Send(bytes.substr(first));
    client.AwaitClose();
  }

  core::update::FontAnswers m_answers;
  std::vector<std::size_t> m_sizes;
  std::size_t m_left = kNever;
  bool m_atRequest = false;
  std::atomic<bool> m_stopped{false};
  std::function<bool()> m_then;
  ScriptedServer m_server{[this](ScriptedServer::Connection& client) { Answer(client); }};
};

/// Two updates in one folder, and updates that are ended by force.
class FontsKilledTest : public FontsFixture {
 protected:
  FontsKilledTest() {
    for (const char* const name : {"Ember", "Frost"}) OfferFont(name);
    WriteBytes(m_offered / "Frost" / "one.lsu", std::string(25000, '3'));
  }

  StoppingServer m_server{m_offered};
};

TEST_F(FontsKilledTest, OneUpdateAtATimePutsFontsIntoAFolder) {
  std::promise<void> half;
  std::promise<void> second;
  // Within the first sound, until the second update has ended.
  m_server.StopBehind(10000, false, [&] {
    half.set_value();
    return second.get_future().wait_for(std::chrono::seconds(10)) == std::future_status::ready;
  });
  const auto first = Start(Update(m_server.Host()));
  half.get_future().wait();
  const Json refused = RunJson(1, Update(m_server.Host()));
  EXPECT_EQ(refused["outcome"], "failed");
  EXPECT_EQ(refused["message"], kAnother);
  second.set_value();
  const Finished finished = first->Wait();
  EXPECT_EQ(finished.code, 0) << finished.errors;
  for (const char* const sound : {"Ember/one.lsu", "Ember/two.lsu", "Frost/one.lsu", "Frost/two.lsu"})
    EXPECT_EQ(ReadBytes(m_store / sound), ReadBytes(m_offered / sound)) << sound;
  EXPECT_EQ(RunJson(0, Update(m_server.Host()))["outcome"], "nothing");
}

/// A quarter of the moments.
class FontsKilledMomentsTest : public FontsKilledTest, public testing::WithParamInterface<std::size_t> {};

TEST_P(FontsKilledMomentsTest, AnUpdateThatIsKilledIsMadeGoodByTheNext) {
  ASSERT_EQ(Run(Update(m_server.Host())).code, 0);
  const auto whole = Tree(m_store);
  const std::map<std::string, std::string> files(whole.begin(), whole.end());
  ASSERT_EQ(whole.size(), 2 * 5 + 1U) << "two fonts of five files, the lock";
  const std::vector<std::size_t> answers = m_server.Answers();
  ASSERT_EQ(answers.size(), 1 + 2 * 3U);

  struct Moment {
    std::size_t bytes;
    bool atRequest;
  };
  std::vector<Moment> moments;
  // When a request is here, what goes before it has been written; behind an answer's last byte it is being written.
  std::size_t all = 0;
  for (const std::size_t size : answers) {
    moments.push_back({all, true});
    all += size;
    for (int again = 0; again < 4; ++again) moments.push_back({all, false});
  }
  constexpr std::size_t kMoments = kWatched ? 50 : 200;
  const std::size_t spread = kMoments - moments.size();
  for (std::size_t number = 1; number <= spread; ++number) moments.push_back({all * number / (spread + 1), false});

  for (std::size_t number = GetParam(); number < moments.size(); number += kParts) {
    const Moment& moment = moments[number];
    SCOPED_TRACE(std::to_string(moment.bytes) + (moment.atRequest ? " bytes and a request" : " bytes"));
    fs::remove_all(m_store);
    std::promise<void> reached;
    m_server.StopBehind(moment.bytes, moment.atRequest, [&] {
      reached.set_value();
      return false;
    });
    const auto update = Start(Update(m_server.Host()));
    reached.get_future().wait();
    update->Signal(SIGKILL);
    const Finished killed = update->Wait();
    ASSERT_TRUE(killed.code == -SIGKILL || moment.bytes == all) << killed.errors;
    for (const auto& [name, bytes] : Tree(m_store))
      if (name.ends_with(".lsu")) {
        ASSERT_EQ(bytes, files.at(name)) << name;
      }

    m_server.StopBehind(StoppingServer::kNever, false, nullptr);
    const Finished resumed = Run(Update(m_server.Host()));
    ASSERT_EQ(resumed.code, 0) << resumed.errors;
    ASSERT_EQ(Tree(m_store), whole);
  }
}

INSTANTIATE_TEST_SUITE_P(All, FontsKilledMomentsTest, testing::Range<std::size_t>(0, kParts));

}  // namespace
}  // namespace kestrin::support
