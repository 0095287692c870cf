// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <csignal>
#include <string>
#include <vector>

#include "core/sound/ConfigurationFile.h"
#include "rig/window/ProgramFolder.h"
#include "rig/window/WindowProgram.h"
#include "support/KestrinctlTest.h"
#include "support/RecordingDisk.h"
#include "support/SoundSet.h"

namespace kestrin::rig {
namespace {

using support::Finished;
using support::Json;

/// The built window program when the system, or its terminal, tells it to end.
class ToldToEnd : public support::KestrinctlTest, public testing::WithParamInterface<int> {
 protected:
  ToldToEnd() {
    m_environment.emplace_back("LD_PRELOAD");
    std::filesystem::create_directories(m_data);
    EXPECT_EQ(core::sound::ConfigurationFile::Save(m_set.configuration, m_path, support::AnyDisk()).Text(), "");
  }

  void Start(const std::string& boardOptions = "") {
    window.Start({"--board", Board(boardOptions), "--program-folder", m_folder.Path().string(), m_path}, m_environment);
    window.Await("label", "long");
  }
  /// A download to the end, by the command line: the board is as it should be again.
  void ExpectTheNextDownloadMendsEverything(const Json& parameters) {
    EXPECT_EQ(RunOnBoard(0, {"download", m_path})["outcome"], "success");
    EXPECT_EQ(BoardState()["accelerometer"], parameters);
    EXPECT_EQ(KeptFiles(), 0U);
    EXPECT_EQ(RunOnBoard(0, {"verify", m_path})["verified"], true);
  }

  /// Seven sounds of 150,000 coded bytes: they take more than 16 seconds on the wire.
  const support::CompleteSet m_set{100000};
  std::string m_path = (m_folder / "long.lscfg").string();
  ProgramFolder program{m_folder.Path()};
  WindowProgram window;
};

INSTANTIATE_TEST_SUITE_P(Signals, ToldToEnd, testing::Values(SIGTERM, SIGHUP, SIGINT));

TEST_P(ToldToEnd, CancelsAnEraseAndKeepsTheParametersForTheNextDownload) {
  // A board hears nothing while it erases, not even a good-bye.
  static_cast<void>(RunOnBoard(0, {"accel", "set", "--MotionDeb", "20"}));
  const Json before = BoardState();
  Start("erase=30");
  window.Click("push button", "Download");
  window.Await("label", "Erasing flash memory ...");
  window.Program().Signal(GetParam());
  EXPECT_EQ(window.Wait().code, 128 + GetParam());
  // As after a cancelled one: the erase has taken the parameters, which are kept.
  EXPECT_NE(BoardState()["accelerometer"], before["accelerometer"]);
  EXPECT_EQ(KeptFiles(), 1U);
  EXPECT_EQ(BoardState()["resets"], before["resets"]) << "it does not start with half a set";
  ExpectTheNextDownloadMendsEverything(before["accelerometer"]);
}

TEST_P(ToldToEnd, CancelsADownloadBetweenTwoBlocksAlsoWhileAQuestionStands) {
  static_cast<void>(RunOnBoard(0, {"accel", "set", "--MotionDeb", "20"}));
  const Json before = BoardState();
  Start("wire=usb");
  window.Click("push button", "Download");
  window.Await("label", "Downloading...");
  window.Press({"Escape"});
  window.Await("label",
               "Are you sure you want to cancel downloading ? \n"
               "This might result in unsable behaviour !\n"
               "Press OK to resume downloading or Cancel to abort");
  window.Program().Signal(GetParam());
  EXPECT_EQ(window.Wait().code, 128 + GetParam());
  // No table: the board finds no sounds. Its parameters are back, since the erase had ended.
  EXPECT_EQ(Flash().substr(0, 512), std::string(512, '\xFF'));
  EXPECT_EQ(BoardState()["accelerometer"], before["accelerometer"]);
  EXPECT_EQ(BoardState()["resets"], before["resets"]) << "it does not start with half a set";
  EXPECT_EQ(BoardState()["byes"], before["byes"].get<int>() + 1);
  EXPECT_EQ(KeptFiles(), 0U);
  ExpectTheNextDownloadMendsEverything(before["accelerometer"]);
}

TEST_P(ToldToEnd, EndsAtOnceWithoutAQuestionAboutAnUnsavedSet) {
  Start();
  window.ClickItem("Motion sounds", "Motion 1: ", 1);
  window.Press({"Delete"});
  window.Await("label", "long, not saved");
  window.Program().Signal(GetParam());
  EXPECT_EQ(window.Wait().code, 128 + GetParam());
  EXPECT_EQ(BoardState()["byes"], 1);
}

}  // namespace
}  // namespace kestrin::rig
