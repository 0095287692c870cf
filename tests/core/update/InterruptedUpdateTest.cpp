// SPDX-License-Identifier: MIT
#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "core/update/UpdateFixture.h"

namespace kestrin::core::update {
namespace {

using support::ReadBytes;
using support::ScriptedTransfer;
using testing::IsEmpty;
namespace fs = std::filesystem;
using Outcome = UpdateManager::Outcome;

/// How an update is broken off.
enum class Break { Disconnected, Error, Cancelled };

/// A server with three fonts of seven sounds, about 50,000 bytes; its catalogue ends in a line break.
class InterruptedUpdateTest : public support::UpdateFixture {
 protected:
  InterruptedUpdateTest() {
    std::uint32_t state = 1;
    for (const auto& [item, sounds] : kFonts)
      for (const auto& [name, size] : sounds) {
        std::string& bytes = m_files[item + "/" + name];
        for (std::size_t i = 0; i < size; ++i) {
          state = state * 1664525U + 1013904223U;
          bytes += static_cast<char>(state >> 24);
        }
      }
    transfer.respond = [this](const ScriptedTransfer::Request& request) { return Respond(request.body); };
  }

  ScriptedTransfer::Answer Respond(const std::string& body) const {
    const std::string did = "&did=4B535401";
    if (body == "svc=gct" + did) {
      std::string text;
      for (const auto& font : kFonts) text += "\r\n" + font.first;
      return Text(text + "\r\n");
    }
    const std::string query = "svc=fqr" + did + "&fid=";
    if (body.starts_with(query)) {
      const auto font = kFonts.find(body.substr(query.size()));
      std::string text;
      if (font != kFonts.end())
        for (const auto& sound : font->second) text += "\r\n" + sound.first;
      return Text(text);
    }
    const std::string download = "svc=dld" + did + "&fid=";
    EXPECT_TRUE(body.starts_with(download)) << body;
    std::string name = body.substr(download.size());
    name.replace(name.find("&ffd="), 5, "/");
    return File(m_files.at(name));
  }

  /// From the empty store: an update that is broken off, then one that is not.
  void BreakAndResume(Break how, std::optional<std::size_t> atRequest, std::optional<std::size_t> atByte) {
    fs::remove_all(fonts);
    fs::create_directories(fonts);
    transfer.requests.clear();
    transfer.bytesGiven = 0;
    if (how == Break::Cancelled) {
      atTurn = [=, this] {
        if ((atRequest && transfer.requests.size() >= *atRequest) || (atByte && transfer.bytesGiven >= *atByte))
          manager.cancel();
      };
    } else {
      transfer.failFromRequest = atRequest;
      transfer.bytesLeft = atByte;
      transfer.failNotice = how == Break::Error ? ScriptedTransfer::kError : ScriptedTransfer::kDisconnected;
    }
    view.warning.clear();
    view.message.clear();
    manager.startUpdate();
    EXPECT_EQ(manager.outcome(), how == Break::Cancelled ? Outcome::Cancelled : Outcome::Failed);
    EXPECT_EQ(view.warning.empty(), how == Break::Cancelled) << "who cancels needs no message";
    EXPECT_EQ(view.message, "");
    ExpectConsistent();

    const std::set<std::string> whole = WholeFiles();
    atTurn = nullptr;
    transfer.failFromRequest.reset();
    transfer.bytesLeft.reset();
    transfer.requests.clear();
    manager.startUpdate();
    EXPECT_EQ(manager.outcome(), Outcome::Updated) << manager.message();
    for (const std::string& body : transfer.Bodies())
      if (body.starts_with("svc=dld")) {
        std::string name = body.substr(body.find("&fid=") + 5);
        name.replace(name.find("&ffd="), 5, "/");
        EXPECT_EQ(whole.count(name), 0U) << name << " was there already";
      }
  }

  /// Whatever has its final name is whole, and a font is only complete with all of its sounds.
  void ExpectConsistent() const {
    for (const auto& [name, bytes] : Store()) {
      if (m_files.count(name) == 1) {
        EXPECT_EQ(bytes, m_files.at(name)) << name;
      }
      EXPECT_FALSE(name.ends_with("/tmp")) << name;
    }
    for (const auto& [item, sounds] : kFonts) {
      const bool complete = fs::exists(fonts / item / "fnt");
      for (const auto& sound : sounds) {
        EXPECT_TRUE(!complete || fs::exists(fonts / item / sound.first)) << item << sound.first;
      }
    }
  }

  [[nodiscard]] std::set<std::string> WholeFiles() const {
    std::set<std::string> names;
    for (const auto& file : m_files)
      if (fs::exists(fonts / file.first)) names.insert(file.first);
    return names;
  }

  inline static const std::map<std::string, std::map<std::string, std::size_t>> kFonts = {
      {"First", {{"boot.lsu", 9000}, {"idle.lsu", 8192}, {"off.lsu", 1}}},
      {"Second", {{"boot.lsu", 12345}, {"LOUD.LSU", 4096}}},
      {"Third", {{"boot.lsu", 16384}, {"last.lsu", 777}}}};

 private:
  std::map<std::string, std::string> m_files;
};

TEST_F(InterruptedUpdateTest, EndsLikeAnUninterruptedOneWhereverItIsBrokenOff) {
  manager.startUpdate();
  ASSERT_EQ(manager.outcome(), Outcome::Updated);
  const auto uninterrupted = Store();
  ASSERT_EQ(uninterrupted.size(), 3 * 4 + 7 + 3U)
      << "folder, descriptor, set and marker each; sounds; the empty item's";
  const std::size_t requests = transfer.requests.size();
  ASSERT_EQ(requests, 1 + 4 + 7U);
  const std::size_t bytes = transfer.bytesGiven;
  ASSERT_GT(bytes, 50000U);

  for (const Break how : {Break::Disconnected, Break::Error, Break::Cancelled}) {
    for (std::size_t request = 1; request <= requests; ++request) {
      SCOPED_TRACE("request " + std::to_string(request) + ", way " + std::to_string(static_cast<int>(how)));
      BreakAndResume(how, request, std::nullopt);
      ASSERT_EQ(Store(), uninterrupted);
    }
    for (std::size_t byte = 0; byte < bytes; byte += 1000) {
      SCOPED_TRACE("byte " + std::to_string(byte) + ", way " + std::to_string(static_cast<int>(how)));
      BreakAndResume(how, std::nullopt, byte);
      ASSERT_EQ(Store(), uninterrupted);
    }
  }
}

TEST_F(InterruptedUpdateTest, CanBeCancelledAtEveryTurn) {
  int turns = 0;
  atTurn = [&] { ++turns; };
  manager.startUpdate();
  const int all = turns;
  ASSERT_GT(all, 60);
  const auto uninterrupted = Store();
  for (int turn = 1; turn <= all; ++turn) {
    fs::remove_all(fonts);
    fs::create_directories(fonts);
    turns = 0;
    atTurn = [&] {
      if (++turns == turn) manager.cancel();
    };
    view.message.clear();
    view.warning.clear();
    manager.startUpdate();
    ASSERT_EQ(turns, turn) << "it went on";
    ASSERT_EQ(manager.outcome(), Outcome::Cancelled);
    ASSERT_EQ(view.message + view.warning, "");
    ExpectConsistent();
    atTurn = nullptr;
    manager.startUpdate();
    ASSERT_EQ(Store(), uninterrupted);
  }
}

TEST_F(InterruptedUpdateTest, AnUpdateThatIsBrokenOffAgainAndAgainComesToItsEnd) {
  // 9,000 bytes at a time get through; what is too large for that gets through in the end.
  int runs = 0;
  do {
    transfer.bytesLeft = 9000 + 100 * static_cast<std::size_t>(runs);
    manager.startUpdate();
    ExpectConsistent();
  } while (manager.outcome() == Outcome::Failed && ++runs < 200);
  EXPECT_EQ(manager.outcome(), Outcome::Updated);
  EXPECT_GT(runs, 5);
}

}  // namespace
}  // namespace kestrin::core::update
