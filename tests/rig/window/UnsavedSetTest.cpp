// SPDX-License-Identifier: MIT
// The built program is killed with a set that is not saved, and brings it back: by keyboard, by mouse, and as a screen
// reader tells it. The ways to start of an empty window, too.

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include "core/sound/ConfigurationFile.h"
#include "rig/window/AccessibleNames.h"
#include "support/RecordingDisk.h"
#include "support/SoundSet.h"

namespace kestrin::rig {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::IsSupersetOf;

class UnsavedSet : public AccessibleNames {
 protected:
  UnsavedSet() {
    fs::create_directories(m_data);
    EXPECT_EQ(core::sound::ConfigurationFile::Save(m_set.configuration, m_mine, support::AnyDisk()).Text(), "");
    m_saved = support::ReadBytes(m_mine);
  }

  void Start(const std::vector<std::string>& more = {}) {
    AccessibleNames::Start(more);
    window.Await("graphic", "A board is connected");
  }
  /// Takes the first swing out of the set.
  void Change() {
    window.ClickItem("Motion sounds", "Motion 1: ", 1);
    window.Press({"Delete"});
    window.Await("label", "mine, not saved");
  }
  [[nodiscard]] fs::path Place() const { return m_data / "kestrin" / "unsaved"; }
  [[nodiscard]] std::vector<fs::path> KeptSets() const {
    std::vector<fs::path> files;
    if (fs::exists(Place()))
      for (const auto& entry : fs::directory_iterator(Place()))
        if (entry.path().extension() == ".lscfg") files.push_back(entry.path());
    return files;
  }
  /// Returns when so many sets are kept.
  void AwaitKept(std::size_t count) const {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (KeptSets().size() != count) {
      ASSERT_LT(std::chrono::steady_clock::now(), end) << KeptSets().size() << " sets are kept";
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }
  void Kill() {
    window.Program().Signal(SIGKILL);
    EXPECT_EQ(window.Wait().code, -SIGKILL);
  }
  void StartChangeAndKill() {
    Start({m_mine});
    window.Await("label", "mine");
    Change();
    AwaitKept(1);
    Kill();
    EXPECT_EQ(support::ReadBytes(m_mine), m_saved);
  }
  void AwaitQuestion() const {
    window.Await("the question about the set", [](const Control& control) {
      return control.role == "label" && control.name.starts_with("The set \"mine\" has changes that were not saved");
    });
  }

  const support::CompleteSet m_set{100};
  std::string m_mine = (m_folder / "mine.lscfg").string();
  std::string m_saved;
};

TEST_F(UnsavedSet, SurvivesKillNineAndIsOpenedAgainByKeyboard) {
  StartChangeAndKill();
  Start();
  AwaitQuestion();
  window.Press({"Return"});
  window.Await("label", "mine, not saved");
  EXPECT_TRUE(window.ItemsOf("Motion sounds").empty());
  EXPECT_FALSE(window.ItemsOf("Impact sounds").empty());
  EXPECT_EQ(support::ReadBytes(m_mine), m_saved) << "its file is the person's";
  // Once it is saved, nothing is kept.
  window.Press({"Control_L", "s"});
  window.Await("label", "mine");
  EXPECT_NE(support::ReadBytes(m_mine), m_saved);
  AwaitKept(0);
  EXPECT_EQ(window.Close().code, 0);
}

TEST_F(UnsavedSet, IsLeftByMouseAndOfferedAgain) {
  StartChangeAndKill();
  Start();
  AwaitQuestion();
  EXPECT_THAT(Controls(kMessage),
              IsSupersetOf(std::vector<Said>{
                  {"push button", "Open it again"}, {"push button", "Leave it"}, {"push button", "Throw it away"}}));
  window.Click("push button", "Leave it");
  window.AwaitGone("push button", "Leave it");
  window.Await("label", "New set");
  EXPECT_EQ(window.Close().code, 0);
  EXPECT_EQ(KeptSets().size(), 1U);
  Start();
  AwaitQuestion();
  window.Click("push button", "Throw it away");
  window.AwaitGone("push button", "Throw it away");
  EXPECT_EQ(KeptSets().size(), 0U);
  EXPECT_EQ(support::ReadBytes(m_mine), m_saved);
}

TEST_F(UnsavedSet, BelongsToItsWindowAsLongAsThatRuns) {
  Start({m_mine});
  window.Await("label", "mine");
  Change();
  AwaitKept(1);
  // As in another session of the same person.
  std::vector<std::string> elsewhere = m_environment;
  elsewhere.emplace_back("KESTRIN_WINDOW=elsewhere");
  const auto other = window.Another({"--board", "sim:", "--program-folder", m_folder.Path().string()}, elsewhere);
  window.Await("label", "New set");
  EXPECT_FALSE(window.IsShown("push button", "Open it again"));
  other->Signal(SIGTERM);
  EXPECT_EQ(other->Wait().code, 128 + SIGTERM);
  EXPECT_EQ(KeptSets().size(), 1U);
  Kill();
  Start();
  AwaitQuestion();
}

TEST_F(UnsavedSet, TornAndForeignFilesAreInNobodysWay) {
  StartChangeAndKill();
  const fs::path torn = KeptSets().at(0);
  const std::string content = support::ReadBytes(torn);
  support::WriteBytes(torn, content.substr(0, content.size() / 2));
  support::WriteBytes(Place() / "unsaved-letter.lscfg", "Dear Sir\r\n");
  Start();
  window.Await("label", "New set");
  EXPECT_EQ(window.Close().code, 0);
  EXPECT_EQ(support::ReadBytes(torn), content.substr(0, content.size() / 2));
  EXPECT_EQ(support::ReadBytes(Place() / "unsaved-letter.lscfg"), "Dear Sir\r\n");
}

TEST_F(UnsavedSet, AnEmptyWindowTellsWhatToDoNext) {
  fs::create_directories(m_folder / "Examples");
  fs::copy(m_mine, m_folder / "Examples" / "demo.lscfg");
  Start();
  window.Await("label", "Three ways to start");
  EXPECT_THAT(Controls(kMain), IsSupersetOf(std::vector<Said>{{"push button", "Choose sounds ..."},
                                                              {"push button", "Open a set ..."},
                                                              {"push button", "Try the example"}}));
  window.Click("push button", "Choose sounds ...");
  window.Await("dialog", "Choose sounds to import");
  window.Press({"Escape"});
  window.AwaitGone("dialog", "Choose sounds to import");
  window.Click("push button", "Open a set ...");
  window.Await("dialog", "Open a sound set");
  window.Press({"Escape"});
  window.AwaitGone("dialog", "Open a sound set");
  window.Click("push button", "Try the example");
  window.Click("push button", "Back to the set");
  window.Await("label", "demo");
  window.AwaitGone("label", "Three ways to start");
  // The explorer shows where its sounds are.
  window.Await("the list of drives at the examples", [](const Control& control) {
    return control.role == "combo box" && control.name == "Examples" && control.description == "Drive";
  });
}

}  // namespace
}  // namespace kestrin::rig
