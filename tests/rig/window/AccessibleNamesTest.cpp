// SPDX-License-Identifier: MIT
#include "core/sound/ConfigurationFile.h"
#include "rig/window/AccessibleNames.h"
#include "support/RecordingDisk.h"
#include "support/SoundSet.h"

namespace kestrin::rig {
namespace {

using testing::IsSupersetOf;

TEST_F(AccessibleNames, EveryControlOfEveryPanelIsSaidByItsNameAndRole) {
  const support::CompleteSet set(4800);
  ASSERT_EQ(
      core::sound::ConfigurationFile::Save(set.configuration, m_folder / "my saber.lscfg", support::AnyDisk()).Text(),
      "");
  std::filesystem::create_directory(m_folder / "folder");
  support::WriteSoundFile(m_folder / "sound.lsu", support::SomeSamples(9600));
  Start(m_folder / "my saber.lscfg");
  window.Await("label", "my saber");
  window.ClickItem("Motion sounds", "Motion 1: motion 1.lsu, 0.1 s");
  window.Await("label", "Motion 1");
  window.Await("list", "Folders");
  window.AwaitItem("Folders", "folder");
  {
    SCOPED_TRACE("sounds");
    EXPECT_THAT(Controls(kMain),
                IsSupersetOf(std::vector<Said>{{"button menu", "Open"},
                                               {"button menu", "Save"},
                                               {"button menu", "Import"},
                                               {"check box", "Try"},
                                               {"push button", "Setup"},
                                               {"push button", "Download"},
                                               {"label", "Kestrin USB Serial Number: 4B535401"},
                                               {"push button", "Undo: Load my saber.lscfg"},
                                               {"push button", "Folder above"},
                                               {"list", "Folders"},
                                               {"list item", "folder"},
                                               {"list", "Sound files"},
                                               {"radio button", "Add sounds to Boot"},
                                               {"list", "Boot sound"},
                                               {"list item", "Boot: boot.lsu"},
                                               {"radio button", "Add sounds to Power On"},
                                               {"list", "Power On sound"},
                                               {"list item", "Power On: pwron.lsu"},
                                               {"radio button", "Add sounds to Power Off"},
                                               {"list", "Power Off sound"},
                                               {"list item", "Power Off: pwroff.lsu"},
                                               {"radio button", "Add sounds to Idle"},
                                               {"list", "Idle sound"},
                                               {"list item", "Idle: idle.lsu"},
                                               {"radio button", "Add sounds to Motion"},
                                               {"list", "Motion sounds"},
                                               {"list item", "Motion 1: motion 1.lsu"},
                                               {"radio button", "Add sounds to Impact"},
                                               {"list", "Impact sounds"},
                                               {"list item", "Impact 1: impact 1.lsu"},
                                               {"radio button", "Add sounds to Lock-up"},
                                               {"list", "Lock-up sounds"},
                                               {"list item", "Lock-up 1: lockup 1.lsu"},
                                               {"push button", "Play"},
                                               {"slider", "Volume of the selected sound, in percent"}}));
    // The name of a list that opens is what is chosen in it.
    window.Await("the list of drives", [](const Control& control) {
      return control.role == "combo box" && control.name == "Home" && control.description == "Drive";
    });
    window.Await("filler", "Waveform of the selected sound");
    window.Await("graphic", "A board is connected");
  }
  window.Press({"Control_L", "e"});
  window.Await("push button", "CLOSE Window");
  {
    SCOPED_TRACE("accelerometer");
    EXPECT_THAT(Controls(kMain), IsSupersetOf(std::vector<Said>{
                                     {"slider", "Threshold, MOTION DETECTION PARAMETERS"},
                                     {"slider", "Integration Time, MOTION DETECTION PARAMETERS"},
                                     {"slider", "Threshold, IMPACT DETECTION PARAMETERS"},
                                     {"slider", "Debouncing Time, IMPACT DETECTION PARAMETERS"},
                                     {"slider", "Minimum time between repetitions, IMPACT DETECTION PARAMETERS"},
                                     {"push button", "SEND Configuration"},
                                     {"push button", "Factory Default"},
                                     {"push button", "CLOSE Window"}}));
    const auto isFirst = [](const Control& control, const std::string& description) {
      return control.name == "Threshold, MOTION DETECTION PARAMETERS" && control.description == description;
    };
    window.Await("what the board holds",
                 [&](const Control& control) { return isFirst(control, "The board holds 180."); });
    window.Press({"Right"});
    window.Await("what is not sent",
                 [&](const Control& control) { return isFirst(control, "Not sent. The board holds 180."); });
  }
  window.Press({"Escape"});
  window.AwaitGone("push button", "CLOSE Window");
  window.Click("push button", "Download");
  window.Await("label", "SUCCESS !");
  {
    SCOPED_TRACE("download");
    EXPECT_THAT(Controls(kMain), IsSupersetOf(std::vector<Said>{{"push button", "Close"}}));
    window.Await("progress bar", "Progress of the download");
  }
  window.Press({"Escape"});
  window.AwaitGone("label", "SUCCESS !");
  window.Press({"F1"});
  window.Await("tree item", "First steps");
  window.Press({"Control_L", "f"});
  const auto isSearched = [](const Control& control) {
    return control.name == "Search the help" && control.Is(Control::State::Focused);
  };
  window.Await("the search with the keyboard", isSearched);
  {
    SCOPED_TRACE("help");
    EXPECT_THAT(Controls("Kestrin Launcher Help"), IsSupersetOf(std::vector<Said>{{"push button", "First page"},
                                                                                  {"text", "Search the help"},
                                                                                  {"label", "Help page"},
                                                                                  {"tree", "Contents"},
                                                                                  {"tree item", "First steps"}}));
    window.Type("unplug");
    window.Await("list", "Pages found");
    EXPECT_THAT(Controls("Kestrin Launcher Help"), IsSupersetOf(std::vector<Said>{{"list", "Pages found"}}));
  }
}

TEST_F(AccessibleNames, MessagesAndQuestionsAreSaidWithTheirButtons) {
  const std::filesystem::path notASet = support::WriteBytes(m_folder / "garden.lscfg", "tomatoes\r\n");
  support::WriteSoundFile(m_folder / "sound.lsu", support::SomeSamples(9600));
  Start(notASet);
  window.Await("label", "Not a valid configuration file");
  window.Await("push button", "OK");
  EXPECT_THAT(Controls(kMessage), IsSupersetOf(std::vector<Said>{{"push button", "OK"}}));
  window.Press({"Return"});
  window.AwaitGone("label", "Not a valid configuration file");

  window.ClickItem("Sound files", "sound.lsu", 2);
  window.AwaitItem("Boot sound", "Boot: sound.lsu, 0.2 s");
  window.Press({"Control_L", "n"});
  window.Await("label", "The set \"New set\" has changes that are not saved.\nSave them?");
  EXPECT_THAT(Controls(kMessage), IsSupersetOf(std::vector<Said>{
                                      {"push button", "Save"}, {"push button", "Discard"}, {"push button", "Cancel"}}));
}

}  // namespace
}  // namespace kestrin::rig
