// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/sound/ConfigurationFile.h"
#include "rig/window/ProgramFolder.h"
#include "rig/window/WindowProgram.h"
#include "support/KestrinctlTest.h"
#include "support/PrivateSoundService.h"
#include "support/RecordingDisk.h"
#include "support/SoundSet.h"

namespace kestrin::rig {
namespace {

using support::Json;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kOnline = "Kestrin USB Serial Number: 4B535401";

/// Somebody who makes a set of their own sounds for a simulated board that keeps its state in a folder.
class WholeJob : public support::KestrinctlTest {
 protected:
  WholeJob() {
    m_environment.emplace_back("LD_PRELOAD");
    std::filesystem::create_directory(m_folder / "sounds");
    std::filesystem::create_directories(m_data);
  }

  /// A sound of half a second of which neither the first nor the last sample is silent.
  std::vector<std::int16_t> Sound(const std::string& name, unsigned seed) const {
    auto samples = support::SomeSamples(24000, 20000, seed);
    samples.front() = 1234;
    samples.back() = -4321;
    support::WriteSoundFile(m_folder / "sounds" / (name + ".lsu"), samples);
    return samples;
  }
  void Start(const std::string& boardOptions = "", const std::vector<std::string>& more = {}) {
    std::vector<std::string> arguments{"--board", Board(boardOptions), "--program-folder", m_folder.Path().string()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    window.Start(arguments, m_environment);
    window.Await("label", kOnline);
  }
  /// A double click adds to the slot that is chosen.
  void AddByMouse(const std::string& file) const { window.ClickItem("Sound files", file + ".lsu, 0.5 s", 2); }
  void AddByKeyboard(const std::string& file) const {
    window.ClickItem("Sound files", file + ".lsu, 0.5 s");
    window.Press({"Return"});
  }

  ProgramFolder program{m_folder.Path()};
  WindowProgram window;
};

TEST_F(WholeJob, ASetIsMadeHeardSavedOpenedSentAndVerified) {
  const support::PrivateSoundService service;
  unsigned seed = 1;
  for (const char* const name : {"boot", "on", "off", "hum", "swing", "swish", "clash"}) Sound(name, seed++);
  const std::vector<std::int16_t> lockup = Sound("lockup", seed);
  Start();

  // The folder, the seven slots by mouse and by keyboard, and second thoughts.
  window.ClickItem("Folders", "sounds", 2);
  AddByMouse("boot");
  window.AwaitItem("Boot sound", "Boot: boot.lsu, 0.5 s");
  window.Click("radio button", "Add sounds to Power On");
  AddByMouse("on");
  window.AwaitItem("Power On sound", "Power On: on.lsu, 0.5 s");
  window.Press({"Alt_L", "f"});
  AddByKeyboard("off");
  window.AwaitItem("Power Off sound", "Power Off: off.lsu, 0.5 s");
  window.Press({"Alt_L", "i"});
  AddByKeyboard("hum");
  window.AwaitItem("Idle sound", "Idle: hum.lsu, 0.5 s");
  window.Press({"Alt_L", "m"});
  AddByKeyboard("swing");
  window.AwaitItem("Motion sounds", "Motion 1: swing.lsu, 0.5 s");
  AddByMouse("clash");
  window.AwaitItem("Motion sounds", "Motion 2: clash.lsu, 0.5 s");
  AddByKeyboard("swish");
  window.AwaitItem("Motion sounds", "Motion 3: swish.lsu, 0.5 s");
  window.ClickItem("Motion sounds", "Motion 2: clash.lsu, 0.5 s");
  window.Press({"Delete"});
  window.AwaitItem("Motion sounds", "Motion 2: swish.lsu, 0.5 s");
  window.ClickItem("Motion sounds", "Motion 1: swing.lsu, 0.5 s", 2);
  window.AwaitItem("Motion sounds", "Motion 1: swish.lsu, 0.5 s");
  window.Press({"Control_L", "z"});
  window.AwaitItem("Motion sounds", "Motion 2: swish.lsu, 0.5 s");
  window.Press({"Alt_L", "p"});
  AddByMouse("clash");
  window.AwaitItem("Impact sounds", "Impact 1: clash.lsu, 0.5 s");
  window.Press({"Alt_L", "l"});
  AddByKeyboard("lockup");
  window.AwaitItem("Lock-up sounds", "Lock-up 1: lockup.lsu, 0.5 s");

  // The preview, to the last sample.
  {
    support::PrivateSoundService::Recorder recorder;
    window.Press({"space"});
    EXPECT_EQ(recorder.Hear(lockup.size()), lockup);
    window.Await("push button", "Play");
  }

  // A file, and back out of it.
  window.Press({"Control_L", "s"});
  const std::string path = (m_folder / "my saber.lscfg").string();
  window.ChooseFile("Save the sound set", path);
  window.Await("label", "my saber");
  window.Press({"Control_L", "n"});
  window.Await("label", "New set");
  EXPECT_THAT(window.ItemsOf("Motion sounds"), IsEmpty());
  window.Press({"Control_L", "o"});
  window.ChooseFile("Open a sound set", path);
  window.Await("label", "my saber");
  EXPECT_THAT(window.ItemsOf("Motion sounds"),
              ElementsAre(StartsWith("Motion 1: swing.lsu, 0.5 s"), StartsWith("Motion 2: swish.lsu, 0.5 s")));
  EXPECT_THAT(window.ItemsOf("Lock-up sounds"), ElementsAre(StartsWith("Lock-up 1: lockup.lsu, 0.5 s")));

  // Into the board.
  window.Click("push button", "Download");
  window.Await("label", "SUCCESS !");
  window.Await("label", "The board holds the new sounds and restarts with them.");
  // Right away: a click so soon would be taken for the second one of a double click.
  window.Press({"Escape"});
  window.AwaitGone("label", "SUCCESS !");
  EXPECT_EQ(window.Close().code, 0);

  EXPECT_EQ(BoardState()["resets"], 1);
  EXPECT_EQ(BoardState()["byes"], 1);
  const Json document = RunOnBoard(0, {"verify", path});
  EXPECT_EQ(document["verified"], true);
  std::vector<std::string> sent;
  for (const Json& file : document["files"]) sent.push_back(file["slot"]);
  EXPECT_THAT(sent, ElementsAre("boot", "pwron", "pwroff", "idle", "motion", "motion", "impact", "lockup"));
}

TEST_F(WholeJob, ADownloadIsCancelledHalfWayAndDoneAgain) {
  // Seven sounds of 150,000 coded bytes: they take more than 16 seconds on the wire.
  const support::CompleteSet set(100000);
  const std::string path = (m_folder / "long.lscfg").string();
  ASSERT_EQ(core::sound::ConfigurationFile::Save(set.configuration, path, support::AnyDisk()).Text(), "");
  Start("wire=usb", {path});
  window.Await("label", "long");
  window.Click("push button", "Download");
  const auto isUnderWay = [this](const Control& control) {
    return control.name == "Progress of the download" && window.Value(control) >= 5;
  };
  window.Await("label", "Downloading...");
  window.Await("progress under way", isUnderWay);
  const std::string question =
      "Are you sure you want to cancel downloading ? \n"
      "This might result in unsable behaviour !\n"
      "Press OK to resume downloading or Cancel to abort";
  // The first time they think better of it.
  for (const char* const answer : {"OK", "Cancel"}) {
    window.Press({"Escape"});
    window.Await("label", question);
    window.Click("push button", answer);
    window.AwaitGone("label", question);
  }
  window.Await("label", "Canceled");
  window.Await("label", "The board holds no complete sound set. Repeat the download before you use the saber.");
  EXPECT_EQ(window.Close().code, 0);

  // The table in front is not there, the sounds behind it only in part.
  const std::string flash = Flash();
  ASSERT_GT(flash.size(), 512U + 10000);
  EXPECT_LT(flash.size(), 512U + 7 * 150000);
  EXPECT_EQ(flash.substr(0, 512), std::string(512, '\xFF'));
  EXPECT_EQ(RunOnBoard(1, {"verify", path})["verified"], false);

  Start("", {path});
  window.Click("push button", "Download");
  window.Await("label", "SUCCESS !");
  EXPECT_EQ(window.Close().code, 0);
  EXPECT_EQ(RunOnBoard(0, {"verify", path})["verified"], true);
}

}  // namespace
}  // namespace kestrin::rig
