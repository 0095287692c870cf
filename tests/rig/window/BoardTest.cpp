// SPDX-License-Identifier: MIT
// What is on the board, by mouse, by keyboard, and as a screen reader tells it.

#include "rig/window/AccessibleNames.h"
#include "support/SoundSet.h"

namespace kestrin::rig {
namespace {

using testing::IsSupersetOf;

class OnTheBoard : public AccessibleNames {
 protected:
  OnTheBoard() {
    m_set.AddOneEach(4800);
    m_onBoard = m_set.WriteConfiguration("Ember.lscfg");
    static_cast<void>(RunOnBoard(0, {"download", m_onBoard.string()}));
  }

  /// The set with the idle sound at another volume.
  std::filesystem::path Louder() {
    for (support::SoundSet::Sound& sound : m_set.sounds)
      if (sound.slot == "idle") sound.volume = 42;
    return m_set.WriteConfiguration("other.lscfg");
  }
  Control AwaitChip(const std::string& name) {
    return window.Await(
        name, [&](const Control& control) { return control.name == name && control.Is(Control::State::Focusable); });
  }
  void ClickChip(const std::string& name) { window.Click(AwaitChip(name).role, name); }

  support::SoundSet m_set{m_folder.Path()};
  std::filesystem::path m_onBoard;
};

TEST_F(OnTheBoard, IsComparedByMouseAndTakenOverByKeyboard) {
  Start(Louder());
  ClickChip("Board: This set, but Idle differs");
  window.Await("label", "6 sounds are the same, 1 differs.");
  EXPECT_THAT(Controls(kMain), IsSupersetOf(std::vector<Said>{{"radio button", "All 7"},
                                                              {"radio button", "Only differences 1"},
                                                              {"push button", "Play Boot: boot.lsu"},
                                                              {"push button", "Play Idle: idle.lsu"},
                                                              {"push button", "Take over Idle: idle.lsu at 100 %"},
                                                              {"push button", "Close"},
                                                              {"push button", "Send to the board"}}));
  // From the first play button down to the row, then right to what takes over.
  window.Press({"Down"});
  window.Press({"Down"});
  window.Press({"Down"});
  window.Press({"Right"});
  window.Press({"Right"});
  window.Press({"space"});
  window.Await("label", "All 7 sounds are the same.");
  window.Press({"Escape"});
  window.AwaitGone("push button", "Send to the board");
  AwaitChip("Board: This set");
  window.Press({"Control_L", "z"});
  AwaitChip("Board: This set, but Idle differs");
  window.Press({"Control_L", "y"});
}

TEST_F(OnTheBoard, ADownloadThatWouldChangeNothingSaysSo) {
  Start(m_onBoard);
  AwaitChip("Board: This set");
  const std::string flash = Flash();
  const auto resets = BoardState()["resets"];
  window.Click("push button", "Download");
  window.Await("label", "The board holds just this set.");
  window.Await("push button", "Send it again");
  window.Press({"Escape"});
  window.AwaitGone("label", "The board holds just this set.");
  EXPECT_EQ(window.Close().code, 0);
  EXPECT_EQ(Flash(), flash);
  EXPECT_EQ(BoardState()["resets"], resets);
}

TEST_F(OnTheBoard, IsKnownFromItsHistory) {
  std::filesystem::remove(m_onBoard);
  Start(std::vector<std::string>{});
  AwaitChip("Board: Ember");
}

}  // namespace
}  // namespace kestrin::rig
