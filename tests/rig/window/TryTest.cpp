// SPDX-License-Identifier: MIT
// A set is tried with a saber on the screen, by keyboard, by mouse, and as a screen reader tells it.

#include <cmath>
#include <cstdint>
#include <numbers>

#include "rig/window/AccessibleNames.h"
#include "support/PrivateSoundService.h"
#include "support/TestFiles.h"

namespace kestrin::rig {
namespace {

using testing::IsSupersetOf;

class Try : public AccessibleNames {
 protected:
  /// A tone of two seconds.
  std::vector<std::int16_t> Tone(const std::string& name, double pitch) const {
    std::vector<std::int16_t> samples(96000);
    for (std::size_t i = 0; i < samples.size(); ++i)
      samples[i] = static_cast<std::int16_t>(
          std::lround(6000 * std::sin(2 * std::numbers::pi * pitch * (static_cast<double>(i) + 1) / 48000)));
    support::WriteSoundFile(m_folder / name, samples);
    return samples;
  }
  void StartWithSet() {
    boot = Tone("boot.lsu", 311);
    for (const char* name : {"on.lsu", "off.lsu", "hum.lsu", "swing.lsu", "clash.lsu", "lock.lsu"}) Tone(name, 440);
    const auto path = [this](const char* name) { return (m_folder / name).string() + "\r\n 100\r\n"; };
    support::WriteBytes(m_folder / "my saber.lscfg", "BOOT\r\n" + path("boot.lsu") + "PWRON\r\n" + path("on.lsu") +
                                                         "PWROFF\r\n" + path("off.lsu") + "IDLE\r\n" + path("hum.lsu") +
                                                         "MOTION-1\r\n" + path("swing.lsu") + "IMPACT-1\r\n" +
                                                         path("clash.lsu") + "LOCKUP-1\r\n" + path("lock.lsu"));
    Start(m_folder / "my saber.lscfg");
    window.Await("label", "my saber");
  }

  std::vector<std::int16_t> boot;
};

TEST_F(Try, ByKeyboard) {
  const support::PrivateSoundService service;
  StartWithSet();
  {
    // The board starts with its boot sound, which is heard as it is.
    support::PrivateSoundService::Recorder recorder;
    window.Press({"Control_L", "t"});
    EXPECT_EQ(recorder.Hear(boot.size()), boot);
  }
  window.Press({"space"});
  window.AwaitItem("Sounds", "Power On: on.lsu, volume 100 %, sounding");
  window.AwaitItem("Sounds", "Idle: hum.lsu, volume 100 %, sounding");
  window.Press({"s"});
  window.AwaitItem("Sounds", "Motion 1: swing.lsu, volume 100 %, sounding");
  window.Press({"h"});
  window.AwaitItem("Sounds", "Impact 1: clash.lsu, volume 100 %, sounding");
  window.Press({"p"});
  window.AwaitItem("Sounds", "Power Off: off.lsu, volume 100 %, sounding");
  window.Press({"Escape"});
  window.AwaitGone("push button", "Back to the set");
  EXPECT_EQ(window.Close().code, 0);
}

TEST_F(Try, ByMouse) {
  const support::PrivateSoundService service;
  StartWithSet();
  window.Click("check box", "Try");
  window.Click("graphic", "The saber");
  window.AwaitItem("Sounds", "Idle: hum.lsu, volume 100 %, sounding");
  window.Click("push button", "Swing");
  window.AwaitItem("Sounds", "Motion 1: swing.lsu, volume 100 %, sounding");
  window.Click("graphic", "The saber");
  window.AwaitItem("Sounds", "Impact 1: clash.lsu, volume 100 %, sounding");
  window.Click("push button", "Lock-up");
  window.AwaitItem("Sounds", "Lock-up 1: lock.lsu, volume 100 %, sounding");
  window.Click("push button", "Back to the set");
  window.AwaitGone("graphic", "The saber");
}

TEST_F(Try, WithoutAnySoundService) {
  StartWithSet();
  window.Click("check box", "Try");
  window.Press({"space"});
  window.AwaitItem("Sounds", "Idle: hum.lsu, volume 100 %, sounding");
  window.Press({"Escape"});
  window.AwaitGone("graphic", "The saber");
}

TEST_F(Try, AsAScreenReaderTellsIt) {
  StartWithSet();
  window.Press({"Control_L", "t"});
  window.AwaitItem("Sounds", "Boot: boot.lsu, volume 100 %");
  EXPECT_THAT(Controls(kMain), IsSupersetOf(std::vector<Said>{{"graphic", "The saber"},
                                                              {"check box", "Power"},
                                                              {"push button", "Swing"},
                                                              {"push button", "Hit"},
                                                              {"push button", "Lock-up"},
                                                              {"graphic", "The last 12 seconds"},
                                                              {"list", "Sounds"},
                                                              {"check box", "Fewer flashes"},
                                                              {"check box", "As on the board"},
                                                              {"push button", "Back to the set"}}));
}

}  // namespace
}  // namespace kestrin::rig
