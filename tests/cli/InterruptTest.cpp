#include "cli/Interrupt.h"

#include <csignal>

#include "KestrinctlTest.h"
#include "SoundSet.h"
#include "cli/CommandFailure.h"

namespace kestrin::support {
namespace {

class InterruptTest : public KestrinctlTest {
 protected:
  SoundSet m_set = WriteSoundSet(m_folder.Path());
};

TEST_F(InterruptTest, CtrlCCancelsADownloadAndTheNextOneWorks) {
  static_cast<void>(RunOnBoard(0, {"accel", "set", "--MotionDeb", "20"}));
  const Json parameters = BoardState()["accelerometer"];
  const auto download = Start({"--board", Board("erase=30"), "download", m_set.configuration.string()});
  download->WaitForOutput("Erasing flash memory ...\n");
  download->Signal(SIGINT);
  const Finished finished = download->Wait();
  EXPECT_EQ(finished.code, 130);
  EXPECT_EQ(finished.errors.rfind("kestrinctl: Canceled\n", 0), 0U) << finished.errors;
  EXPECT_EQ(finished.out.find("SUCCESS"), std::string::npos) << finished.out;
  EXPECT_EQ(KeptFiles(), 1U);
  EXPECT_NE(BoardState()["accelerometer"], parameters);

  EXPECT_EQ(RunOnBoard(0, {"download", m_set.configuration.string()})["outcome"], "success");
  EXPECT_EQ(BoardState()["accelerometer"], parameters);
  EXPECT_EQ(KeptFiles(), 0U);
  EXPECT_EQ(RunOnBoard(0, {"verify", m_set.configuration.string()})["verified"], true);
}

TEST_F(InterruptTest, ACancelledDownloadIsADocumentToo) {
  const auto download = Start({"--json", "--board", Board("erase=30"), "download", m_set.configuration.string()});
  download->WaitForErrors("Erasing flash memory ...\n");
  download->Signal(SIGINT);
  const Finished finished = download->Wait();
  EXPECT_EQ(finished.code, 130);
  const Json document = Json::parse(finished.out);
  EXPECT_EQ(document["outcome"], "cancelled");
  EXPECT_EQ(document["information"], "Canceled");
  EXPECT_EQ(document["bytes"], 0);
}

TEST_F(InterruptTest, CtrlCStopsWhileTheSoundsAreSent) {
  // A second and a half of sound takes more than two seconds on the wire.
  WriteSoundFile(m_set.sounds[3].path, SomeSamples(90000));
  const auto download = Start({"--board", Board("wire=usb"), "download", m_set.configuration.string()});
  download->WaitForOutput("Downloading...\n");
  download->Signal(SIGINT);
  const Finished finished = download->Wait();
  EXPECT_EQ(finished.code, 130);
  EXPECT_EQ(finished.errors.rfind("kestrinctl: Canceled\n", 0), 0U) << finished.errors;
  // No table: the board finds no sounds.
  EXPECT_EQ(Flash().substr(0, 512), std::string(512, '\xFF'));
  EXPECT_EQ(RunOnBoard(1, {"verify", m_set.configuration.string()})["table"]["ok"], false);
}

using InterruptDeathTest = InterruptTest;

TEST_F(InterruptDeathTest, TheFirstCtrlCIsRememberedAndStopsTheCommand) {
  EXPECT_EXIT(
      {
        cli::Interrupt interrupt;
        interrupt.Look();
        static_cast<void>(std::raise(SIGINT));
        int code = 0;
        try {
          interrupt.Look();
        } catch (const cli::CommandFailure& failure) {
          code = static_cast<int>(failure.Code());
        }
        std::_Exit(cli::Interrupt::Requested() && code == 130 ? 42 : 1);
      },
      ::testing::ExitedWithCode(42), "");
}

TEST_F(InterruptDeathTest, TheSecondCtrlCEndsTheProgramAtOnce) {
  EXPECT_EXIT(
      {
        cli::Interrupt interrupt;
        static_cast<void>(std::raise(SIGINT));
        static_cast<void>(std::raise(SIGINT));
        std::_Exit(1);
      },
      ::testing::ExitedWithCode(130), "");
}

TEST_F(InterruptDeathTest, AnActionRunsOnceInsteadAndNothingStopsTheEnd) {
  EXPECT_EXIT(
      {
        cli::Interrupt interrupt;
        int runs = 0;
        {
          const cli::InterruptAction action(interrupt, [&] { ++runs; });
          static_cast<void>(std::raise(SIGINT));
          interrupt.Look();
          interrupt.Look();
        }
        interrupt.Look();
        std::_Exit(runs == 1 ? 42 : 1);
      },
      ::testing::ExitedWithCode(42), "");
}

}  // namespace
}  // namespace kestrin::support
