// SPDX-License-Identifier: MIT
#include "cli/Interrupt.h"

#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "cli/CommandFailure.h"
#include "support/KestrinctlTest.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

class InterruptTest : public KestrinctlTest {
 protected:
  /// What a download must leave, however it ended: a board that is either verified or known to hold no set, and
  /// parameters that are on the board or kept.
  void ExpectNothingLost(const Finished& finished, int cancelled, const std::string& when) {
    const std::string said = when + "\n" + finished.out + finished.errors;
    if (finished.code == 0) {
      EXPECT_NE(finished.out.find("SUCCESS !"), std::string::npos) << said;
      EXPECT_EQ(RunOnBoard(0, {"verify", m_set.configuration.string()})["verified"], true) << said;
    } else {
      EXPECT_EQ(finished.code, cancelled) << said;
      EXPECT_EQ(finished.errors.rfind("kestrinctl: Canceled\n", 0), 0U) << said;
      EXPECT_EQ(finished.out.find("SUCCESS"), std::string::npos) << said;
    }
    if (BoardState()["accelerometer"] != m_parameters) {
      EXPECT_EQ(KeptFiles(), 1U) << said;
    } else {
      EXPECT_EQ(KeptFiles(), 0U) << said;
    }
    EXPECT_EQ(RunOnBoard(0, {"download", m_set.configuration.string()})["outcome"], "success") << said;
    EXPECT_EQ(BoardState()["accelerometer"], m_parameters) << said;
    EXPECT_EQ(KeptFiles(), 0U) << said;
    EXPECT_EQ(RunOnBoard(0, {"verify", m_set.configuration.string()})["verified"], true) << said;
  }

  SoundSet m_set = WriteSoundSet(m_folder.Path());
  Json m_parameters = [this] {
    static_cast<void>(RunOnBoard(0, {"accel", "set", "--MotionDeb", "20"}));
    return BoardState()["accelerometer"];
  }();
};

/// What asks a program to stop, and the exit status of one that did.
struct Stop {
  int number;
  int status;
};
constexpr Stop kStops[] = {{SIGHUP, 129}, {SIGINT, 130}, {SIGTERM, 143}};

TEST_F(InterruptTest, EverySignalToStopCancelsADownloadInTheSameWords) {
  for (const Stop& stop : kStops) {
    const auto download = Start({"--board", Board("erase=30"), "download", m_set.configuration.string()});
    download->WaitForOutput("Erasing flash memory ...\n");
    download->Signal(stop.number);
    const Finished finished = download->Wait();
    EXPECT_EQ(finished.code, stop.status);
    EXPECT_EQ(finished.out, "Erasing flash memory ...\nStopping ...\n");
    EXPECT_EQ(finished.errors,
              "kestrinctl: Canceled\nThe board holds no complete sound set. Repeat the download before you use the "
              "saber. Its motion and impact parameters are kept safe on this computer and come back with the next "
              "download.\n");
    EXPECT_EQ(KeptFiles(), 1U);
    ExpectNothingLost(finished, stop.status, "while the board erases");
  }
}

TEST_F(InterruptTest, WhateverTheMomentNothingIsLost) {
  // A third of a second of sound takes half a second on the wire: room for many moments.
  WriteSoundFile(m_set.sounds[3].path, SomeSamples(16000));
  std::vector<std::string> moments{"Erasing", "Coding", "Downloading"};
  for (const std::size_t bars : {0, 1, 5, 15, 25, 29, 30})
    moments.push_back("Downloading...           [" + std::string(bars, '#') + (bars < 30 ? "-" : "]"));
  for (const Stop& stop : kStops)
    for (const std::string& moment : moments) {
      const auto download = Start({"--board", Board("wire=usb"), "download", m_set.configuration.string()},
                                  {.output = kTerminal, .columns = 100});
      download->WaitForOutput(moment);
      download->Signal(stop.number);
      ExpectNothingLost(download->Wait(), stop.status, "signal " + std::to_string(stop.number) + " at " + moment);
    }
}

TEST_F(InterruptTest, ATerminalThatIsClosedCancelsADownload) {
  const auto download =
      Start({"--board", Board("erase=30"), "download", m_set.configuration.string()}, {.output = kTerminal});
  download->WaitForOutput("Erasing flash memory ...");
  download->CloseOutput();
  const Finished finished = download->Wait();
  EXPECT_EQ(finished.code, 129);
  ExpectNothingLost(finished, 129, "when the terminal hangs up");
}

TEST_F(InterruptTest, ATerminalThatTakesNothingHoldsNothingUp) {
  const auto download =
      Start({"--board", Board("erase=30"), "download", m_set.configuration.string()}, {.output = kTerminal});
  download->WaitForOutput("Erasing flash memory ...");
  download->StopTerminal();
  // Whatever it has to say until its end waits until the next signal. Between two of them it must have time to get on:
  // every signal begins its pauses anew.
  while (!download->HasEnded()) {
    download->Signal(SIGTERM);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  const Finished finished = download->Wait();
  EXPECT_EQ(finished.code, 143);
  EXPECT_EQ(finished.errors.find("could not be written"), std::string::npos) << finished.errors;
  ExpectNothingLost(finished, 143, "when the terminal is stopped");
}

TEST_F(InterruptTest, WhoIsToldToOutliveTheTerminalDoes) {
  const auto download =
      Start({"--board", Board("erase=1"), "download", m_set.configuration.string()}, {.ignored = {SIGHUP}});
  download->WaitForOutput("Erasing flash memory ...\n");
  download->Signal(SIGHUP);
  const Finished finished = download->Wait();
  EXPECT_EQ(finished.code, 0) << finished.errors;
  ExpectNothingLost(finished, 0, "");
}

TEST_F(InterruptTest, HangingUpTwiceIsNoSecondCtrlC) {
  // A shell passes on the signal that the system has sent already.
  const auto download = Start({"--board", Board("erase=30"), "download", m_set.configuration.string()});
  download->WaitForOutput("Erasing flash memory ...\n");
  for (const int number : {SIGHUP, SIGHUP, SIGTERM, SIGTERM}) download->Signal(number);
  const Finished finished = download->Wait();
  // Signals that wait together arrive in the system's order.
  EXPECT_TRUE(finished.code == 129 || finished.code == 143) << finished.code;
  ExpectNothingLost(finished, finished.code, "twice");
}

TEST_F(InterruptTest, CtrlCCancelsADownloadAndTheNextOneWorks) {
  const auto download = Start({"--board", Board("erase=30"), "download", m_set.configuration.string()});
  download->WaitForOutput("Erasing flash memory ...\n");
  download->Signal(SIGINT);
  const Finished finished = download->Wait();
  EXPECT_EQ(finished.code, 130);
  EXPECT_EQ(finished.errors.rfind("kestrinctl: Canceled\n", 0), 0U) << finished.errors;
  EXPECT_EQ(finished.out.find("SUCCESS"), std::string::npos) << finished.out;
  EXPECT_EQ(KeptFiles(), 1U);
  EXPECT_NE(BoardState()["accelerometer"], m_parameters);

  EXPECT_EQ(RunOnBoard(0, {"download", m_set.configuration.string()})["outcome"], "success");
  EXPECT_EQ(BoardState()["accelerometer"], m_parameters);
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
  // 1.35 million bytes in blocks that take 17 ms each: more than twenty seconds on the wire, for a test that has to
  // wait for its turn.
  WriteSoundFile(m_set.sounds[3].path, SomeSamples(900000));
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

#ifdef __linux__
TEST_F(InterruptTest, EverySignalStopsWhatReadsFiles) {
  // A gigabyte with a hole in it.
  const std::filesystem::path large = WriteSoundFile(m_folder / "large.lsu", SomeSamples(100));
  std::filesystem::resize_file(large, std::uintmax_t{1} << 30);
  const std::string out = (m_folder / "out.lscfg").string();
  ASSERT_EQ(Run({"config", "make", out, "--boot", m_set.sounds[0].path.string()}).code, 0);
  std::string text = ReadBytes(out);
  text.replace(text.find("PWRON\r\n\r\n"), 9, "PWRON\r\n" + large.string() + "\r\n");
  const std::string set = WriteBytes(m_folder / "large.lscfg", text).string();
  const std::vector<Arguments> commands{{"config", "show", set},
                                        {"config", "map", set},
                                        {"config", "make", out, "--idle", large.string()},
                                        {"sound", "info", large.string()},
                                        {"sound", "wav", large.string(), "--output", "/dev/null"},
                                        {"--board", Board(), "download", set},
                                        {"--board", Board(), "verify", set}};
  for (std::size_t i = 0; i < commands.size(); ++i) {
    const Stop& stop = kStops[i % std::size(kStops)];
    const auto command = Start(commands[i]);
    command->WaitUntilItReads(large);
    command->Signal(stop.number);
    const Finished finished = command->Wait();
    EXPECT_EQ(finished.code, stop.status) << i;
    EXPECT_EQ(finished.out, "") << i;
    EXPECT_EQ(finished.errors, "kestrinctl: Stopped\n") << i;
  }
}

TEST_F(InterruptTest, ASignalEndsTheWaitForAPipeThatNobodyOpens) {
  const std::filesystem::path pipe = m_folder / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const Stop& stop : {Stop{SIGHUP, 129}, Stop{SIGTERM, 143}}) {
    const auto command = Start({"sound", "wav", m_set.sounds[0].path.string(), "--output", pipe.string()});
    command->WaitUntilItCatches(SIGHUP);
    // Until one of them comes while the program waits.
    while (!command->HasEnded()) command->Signal(stop.number);
    EXPECT_EQ(command->Wait().code, stop.status);
  }
}
#endif

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

TEST_F(InterruptDeathTest, TheFirstSignalDecidesTheStatus) {
  EXPECT_EXIT(
      {
        cli::Interrupt interrupt;
        const bool before = cli::Interrupt::Status() == 0;
        static_cast<void>(std::raise(SIGTERM));
        static_cast<void>(std::raise(SIGHUP));
        static_cast<void>(std::raise(SIGINT));
        std::_Exit(before && cli::Interrupt::Status() == 143 ? 42 : 1);
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
