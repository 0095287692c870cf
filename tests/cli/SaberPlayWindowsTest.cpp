// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "cli/WindowsConsole.h"
#include "support/KestrinctlTest.h"
#include "support/SoundSet.h"
// After windows.h, which it needs.
#include <mmsystem.h>

#include <chrono>
#include <functional>
#include <string>
#include <thread>

namespace kestrin::support {
namespace {

/// A set that is played by keys at a console.
class SaberPlayWindowsTest : public KestrinctlTest {
 protected:
  SaberPlayWindowsTest() {
    // What is over soon is over before anybody could look; what is looked at sounds on meanwhile.
    unsigned seed = 1;
    for (const SoundSet::Sound& sound : m_set.sounds) {
      const bool isLong = sound.slot == "motion" || sound.slot == "impact";
      WriteSoundFile(sound.path, SomeSamples(isLong ? 48000 * 30 : 12000, 2000, seed++));
    }
  }
  [[nodiscard]] std::unique_ptr<ChildProcess> Play() const {
    return Start({"saber", "play", m_set.configuration.string()}, {.output = kTerminal, .hasKeyboard = true});
  }
  /// Does something again and again until the screen shows the text; false when that takes too long, or when the saber
  /// has gone.
  bool Until(
      const ChildProcess& saber, const std::string& text, const std::function<void()>& act = [] {}) const {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (m_console.Line().find(text) == std::string::npos) {
      if (saber.HasEnded() || std::chrono::steady_clock::now() > end) return false;
      act();
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
  }
  static void ExpectNoLoudspeaker(const Finished& finished) {
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.errors,
              "kestrinctl: Windows has no sound output to play on. Connect a loudspeaker and try again.\n");
  }
  static bool HasLoudspeaker() { return waveOutGetNumDevs() != 0; }

  SoundSet m_set = WriteSoundSet(m_folder.Path());
  WindowsConsole m_console;
  const DWORD m_mode = m_console.Mode();
};

TEST_F(SaberPlayWindowsTest, KeysMakeThingsHappenOrNobodyCanHearThem) {
  const auto saber = Play();
  if (HasLoudspeaker()) {
    EXPECT_TRUE(Until(*saber, "Off")) << m_console.Line();
    EXPECT_NE(m_console.Mode(), m_mode);
    m_console.Press(VK_SPACE);
    EXPECT_TRUE(Until(*saber, "On: Idle")) << m_console.Line();
    m_console.Press(VK_RIGHT);
    EXPECT_TRUE(Until(*saber, "On: Idle, Motion ")) << m_console.Line();
    m_console.Press(VK_RETURN);
    EXPECT_TRUE(Until(*saber, "On: Idle, Impact ")) << m_console.Line();
    // As long as it is held.
    EXPECT_TRUE(Until(*saber, "Lock-up: Idle, Lock-up 1", [this] { m_console.Press('L'); })) << m_console.Line();
    EXPECT_TRUE(Until(*saber, "On: Idle")) << m_console.Line();
    m_console.Press('Q');
    const Finished finished = saber->Wait();
    EXPECT_EQ(finished.code, 0) << finished.errors;
  } else {
    ExpectNoLoudspeaker(saber->Wait());
  }
  EXPECT_EQ(m_console.Mode(), m_mode);
}

TEST_F(SaberPlayWindowsTest, CtrlCEndsItOrNobodyCanHearIt) {
  const auto saber = Play();
  if (HasLoudspeaker()) {
    EXPECT_TRUE(Until(*saber, "Off")) << m_console.Line();
    // It goes to everybody at this console. One that has just been made may lose it.
    SetConsoleCtrlHandler(nullptr, TRUE);
    EXPECT_FALSE(Until(*saber, "nothing more", [] { GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0); }));
    ASSERT_TRUE(saber->HasEnded());
    SetConsoleCtrlHandler(nullptr, FALSE);
    EXPECT_EQ(saber->Wait().code, 130);
  } else {
    ExpectNoLoudspeaker(saber->Wait());
  }
  EXPECT_EQ(m_console.Mode(), m_mode);
}

TEST_F(SaberPlayWindowsTest, WithoutAConsoleItSaysWhatToDo) {
  const Finished finished = Run({"saber", "play", m_set.configuration.string()});
  EXPECT_EQ(finished.code, 2);
  EXPECT_EQ(finished.errors,
            "kestrinctl: A saber is played by keys: run \"saber play\" in a terminal. \"saber render\" writes the same "
            "into a WAV file, by a script.\n");
}

}  // namespace
}  // namespace kestrin::support
