// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <string>
#include <thread>

#include "support/KestrinctlTest.h"
#include "support/PrivateSoundService.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

constexpr const char* kRight = "\x1B[C";
constexpr const char* kLeft = "\x1BOD";
constexpr const char* kEscape = "\x1B";

/// A set that is played by keys on a terminal.
class SaberPlayTest : public KestrinctlTest {
 protected:
  SaberPlayTest() {
    // A quarter of a second each: long enough to be seen.
    unsigned seed = 1;
    for (const SoundSet::Sound& sound : m_set.sounds) WriteSoundFile(sound.path, SomeSamples(12000, 20000, seed++));
  }
  [[nodiscard]] std::unique_ptr<ChildProcess> Play(unsigned short columns = 80) const {
    return Start({"saber", "play", m_set.configuration.string()},
                 {.output = kTerminal, .columns = columns, .hasKeyboard = true});
  }
  /// Plays until the blade is out.
  [[nodiscard]] std::unique_ptr<ChildProcess> PlayWithTheBladeOut() const {
    auto saber = Play();
    saber->WaitForOutput("Off");
    saber->Type(" ");
    saber->WaitForOutput("On: Idle");
    return saber;
  }
  /// What the same saber sounds like in a file.
  [[nodiscard]] std::vector<std::int16_t> Rendered(const std::string& script) const {
    const std::filesystem::path wav = m_folder / "saber.wav";
    static_cast<void>(
        RunJson(0, {"saber", "render", m_set.configuration.string(), "--script", script, "--output", wav.string()}));
    const std::string bytes = ReadBytes(wav).substr(44);
    std::vector<std::int16_t> samples(bytes.size() / 2);
    std::memcpy(samples.data(), bytes.data(), samples.size() * 2);
    return samples;
  }

  SoundSet m_set = WriteSoundSet(m_folder.Path());
};

TEST_F(SaberPlayTest, KeysMakeThingsHappen) {
  const PrivateSoundService service;
  const auto saber = Play();
  saber->WaitForOutput("Space switches on and off, arrows swing, Enter hits, L locks up while it is held, Q ends.");
  EXPECT_FALSE(saber->IsTerminalAsUsual());
  saber->WaitForOutput("Off");
  saber->Type(" ");
  saber->WaitForOutput("Switching on: Power On");
  saber->WaitForOutput("On: Idle");
  saber->Type(kRight);
  saber->WaitForOutput("On: Idle, Motion ");
  saber->Type("\r");
  saber->WaitForOutput("On: Idle, Impact 1");
  saber->Type("l");
  saber->WaitForOutput("Lock-up: Idle, Lock-up 1");
  // The same again once nobody holds the key any more.
  saber->Type(kLeft);
  saber->Type(" ");
  saber->WaitForOutput("Switching off: Power Off");
  saber->Type("q");
  const Finished finished = saber->Wait();
  EXPECT_EQ(finished.code, 0) << finished.errors;
  EXPECT_TRUE(saber->IsTerminalAsUsual());
}

TEST_F(SaberPlayTest, TellsAtItsEndWhatWasTooLoudTogether) {
  const PrivateSoundService service;
  for (const SoundSet::Sound& sound : m_set.sounds)
    WriteSoundFile(sound.path, std::vector<std::int16_t>(12000, std::int16_t{32767}));
  const auto saber = PlayWithTheBladeOut();
  saber->Type("\r");
  saber->WaitForOutput("On: Idle, Impact 1");
  saber->Type("q");
  const Finished finished = saber->Wait();
  EXPECT_EQ(finished.code, 0);
  EXPECT_NE(
      finished.errors.find(" samples were louder together than full scale and cut off there. Lower volumes of the "
                           "set avoid that."),
      std::string::npos)
      << finished.errors;
}

TEST_F(SaberPlayTest, IsHeardAsItIsRendered) {
  const PrivateSoundService service;
  const std::vector<std::int16_t> boot = Rendered("boot");
  std::vector<std::int16_t> heard;
  const auto loud = [](std::vector<std::int16_t> samples) {
    const auto first = std::find_if(samples.begin(), samples.end(), [](std::int16_t sample) { return sample != 0; });
    samples.erase(samples.begin(), first);
    return samples;
  };
  ASSERT_GT(loud(boot).size(), 100U);
  // A computer that is busy with other things for longer than the service's buffer lasts has gaps, whoever plays.
  for (int attempt = 0; attempt < 20 && heard != loud(boot); ++attempt) {
    PrivateSoundService::Recorder recorder;
    const auto saber = Play();
    heard = recorder.Hear(loud(boot).size());
    saber->Type("q");
    EXPECT_EQ(saber->Wait().code, 0);
  }
  EXPECT_EQ(heard, loud(boot));
}

TEST_F(SaberPlayTest, TheBladeGoesInBeforeItEnds) {
  const PrivateSoundService service;
  for (const char* const key : {"q", "Q", kEscape}) {
    const auto saber = PlayWithTheBladeOut();
    saber->Type(key);
    const Finished finished = saber->Wait();
    EXPECT_EQ(finished.code, 0) << finished.errors;
    EXPECT_NE(finished.out.find("Switching off: Power Off"), std::string::npos) << finished.out;
    EXPECT_TRUE(saber->IsTerminalAsUsual());
  }
}

TEST_F(SaberPlayTest, WhoAsksTwiceDoesNotWaitForTheBlade) {
  const PrivateSoundService service;
  // A minute: the test would not wait for it.
  WriteSoundFile(m_set.sounds[2].path, SomeSamples(48000 * 60));
  const auto saber = PlayWithTheBladeOut();
  saber->Type("q");
  saber->WaitForOutput("Switching off");
  // Once asked, it is heard on.
  PrivateSoundService::Recorder recorder;
  const std::vector<std::int16_t> heard = recorder.Hear(48000);
  EXPECT_GT(std::ranges::count_if(heard, [](std::int16_t sample) { return sample != 0; }), 24000);
  EXPECT_FALSE(saber->HasEnded());
  saber->Type("q");
  EXPECT_EQ(saber->Wait().code, 0);
}

TEST_F(SaberPlayTest, SignalsEndItAndTheTerminalIsAsBefore) {
  const PrivateSoundService service;
  for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
    const auto saber = PlayWithTheBladeOut();
    EXPECT_FALSE(saber->IsTerminalAsUsual());
    saber->Signal(number);
    EXPECT_EQ(saber->Wait().code, 128 + number);
    EXPECT_TRUE(saber->IsTerminalAsUsual()) << number;
  }
  // Ctrl-C as a terminal makes a signal of it.
  const auto saber = PlayWithTheBladeOut();
  saber->Type("\x03");
  EXPECT_EQ(saber->Wait().code, 128 + SIGINT);
  EXPECT_TRUE(saber->IsTerminalAsUsual());
}

TEST_F(SaberPlayTest, CtrlZGivesTheTerminalBackUntilItGoesOn) {
  const PrivateSoundService service;
  // Only a shell with jobs can wake it up again.
  ChildProcess shell(
      {"/bin/sh", "-c", "set -m; \"$0\" saber play \"$1\"; echo in the shell; read line; fg; echo ended $?", KESTRINCTL,
       m_set.configuration.string()},
      m_environment, {.output = kTerminal, .columns = 80, .hasKeyboard = true});
  shell.WaitForOutput("Off");
  shell.Type(" ");
  shell.WaitForOutput("On: Idle");
  EXPECT_FALSE(shell.IsTerminalAsUsual());
  shell.Type("\x1A");
  shell.WaitForOutput("in the shell");
  EXPECT_TRUE(shell.IsTerminalAsUsual());
  shell.Type("\n");
  shell.Type(kRight);
  shell.WaitForOutput("On: Idle, Motion ");
  EXPECT_FALSE(shell.IsTerminalAsUsual());
  shell.Type("q");
  shell.WaitForOutput("ended 0");
  EXPECT_TRUE(shell.IsTerminalAsUsual());
}

TEST_F(SaberPlayTest, GoesOnByKeysAfterAShellHasUsedTheTerminal) {
  const PrivateSoundService service;
  const auto saber = PlayWithTheBladeOut();
  // A stop that no program can see coming; shells put the terminal back themselves then.
  saber->Signal(SIGSTOP);
  saber->UseTerminalAsUsual();
  saber->Signal(SIGCONT);
  saber->Type(kRight);
  saber->WaitForOutput("On: Idle, Motion ");
  EXPECT_FALSE(saber->IsTerminalAsUsual());
  saber->Type("q");
  EXPECT_EQ(saber->Wait().code, 0);
  EXPECT_TRUE(saber->IsTerminalAsUsual());
}

TEST_F(SaberPlayTest, NobodyStopsIfThereIsNobodyToWakeItUp) {
  const PrivateSoundService service;
  const auto saber = PlayWithTheBladeOut();
  saber->Type("\x1A");
  saber->Signal(SIGTSTP);
  saber->Type(kRight);
  saber->WaitForOutput("On: Idle, Motion ");
  EXPECT_FALSE(saber->IsTerminalAsUsual());
  saber->Type("q");
  EXPECT_EQ(saber->Wait().code, 0);
  EXPECT_TRUE(saber->IsTerminalAsUsual());
}

TEST_F(SaberPlayTest, AnImpatientCtrlCLeavesTheTerminalAsBefore) {
  const PrivateSoundService service;
  const auto saber = PlayWithTheBladeOut();
  // It has something to show and cannot: it hears of the second Ctrl-C in the middle of that.
  saber->BlockTerminal();
  saber->Type(kRight);
  while (!saber->HasEnded()) {
    saber->Signal(SIGINT);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  EXPECT_EQ(saber->Wait().code, 130);
  EXPECT_TRUE(saber->IsTerminalAsUsual());
}

TEST_F(SaberPlayTest, ATerminalThatHangsUpEndsIt) {
  const PrivateSoundService service;
  const auto saber = PlayWithTheBladeOut();
  saber->CloseOutput();
  const int code = saber->Wait().code;
  // It sees that the terminal is gone, or hears it from the system, whichever is first.
  EXPECT_TRUE(code == 0 || code == 129) << code;
}

TEST_F(SaberPlayTest, ALineIsNeverWiderThanTheTerminal) {
  const PrivateSoundService service;
  const auto saber = Play(12);
  saber->WaitForOutput("Off");
  saber->Type(" ");
  saber->WaitForOutput("\rSwitching o");
  saber->WaitForOutput("\rOn: Idle");
  saber->Type("q");
  EXPECT_EQ(saber->Wait().out.find("Switching on"), std::string::npos);
}

TEST_F(SaberPlayTest, WithoutATerminalItSaysWhatToDo) {
  const Finished finished = Run({"saber", "play", m_set.configuration.string()}, {.closed = {0}});
  EXPECT_EQ(finished.code, 2);
  EXPECT_EQ(finished.errors,
            "kestrinctl: A saber is played by keys: run \"saber play\" in a terminal. \"saber render\" writes the same "
            "into a WAV file, by a script.\n");
}

TEST_F(SaberPlayTest, WithoutASoundServiceItSaysSo) {
  m_environment.emplace_back("PULSE_SERVER=unix:/nonexistent/nobody");
  const auto saber = Play();
  const Finished finished = saber->Wait();
  EXPECT_EQ(finished.code, 1);
  EXPECT_EQ(finished.errors,
            "kestrinctl: No sound service answers on this computer, so nothing can be heard. Start PipeWire or "
            "PulseAudio and try again.\n");
  EXPECT_TRUE(saber->IsTerminalAsUsual());
}

TEST_F(SaberPlayTest, AServiceThatDiesEndsIt) {
  const PrivateSoundService service;
  const auto saber = PlayWithTheBladeOut();
  service.Signal(SIGKILL);
  const Finished finished = saber->Wait();
  EXPECT_EQ(finished.code, 1);
  EXPECT_EQ(finished.errors, "kestrinctl: The sound service stopped playing (Connection terminated). Try again.\n");
  EXPECT_TRUE(saber->IsTerminalAsUsual());
}

TEST_F(SaberPlayTest, WithoutTheLibraryItSaysSoAndTheRestWorks) {
  // What is found first under the library's name is none.
  WriteBytes(m_folder / "libpulse.so.0", "");
  m_environment.push_back("LD_LIBRARY_PATH=" + m_folder.Path().string());
  const Finished finished = Play()->Wait();
  EXPECT_EQ(finished.code, 1);
  EXPECT_EQ(
      finished.errors,
      "kestrinctl: Nothing can be heard: the library libpulse is not on this computer. Install it (on Debian: apt "
      "install libpulse0) and try again.\n");
  EXPECT_FALSE(Rendered("boot").empty());
}

TEST_F(SaberPlayTest, ASoundThatIsMissingIsNamed) {
  std::filesystem::remove(m_set.sounds[4].path);
  const auto saber = Play();
  const Finished finished = saber->Wait();
  EXPECT_EQ(finished.code, 1);
  EXPECT_NE(finished.errors.find(m_set.sounds[4].path.filename().string()), std::string::npos) << finished.errors;
}

}  // namespace
}  // namespace kestrin::support
