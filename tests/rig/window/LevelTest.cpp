// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <numbers>

#include "rig/window/AccessibleNames.h"
#include "support/PrivateSoundService.h"
#include "support/ReferenceCoder.h"

namespace kestrin::rig {
namespace {

using testing::HasSubstr;
using testing::IsSupersetOf;

/// Somebody whose two sounds differ in loudness.
class Level : public AccessibleNames {
 protected:
  /// Half a second of a tone that the board's format lifts until its one loudest sample, 20,000, has its full height:
  /// of two such sounds the one with half the amplitude is 6.02 LU below the other.
  std::vector<std::int16_t> Tone(const std::string& name, double amplitude) const {
    std::vector<std::int16_t> samples(24000);
    for (std::size_t i = 0; i < samples.size(); ++i)
      samples[i] = static_cast<std::int16_t>(
          std::lround(amplitude * std::sin(2 * std::numbers::pi * 997 * static_cast<double>(i) / 48000)));
    samples[12001] = 20000;
    support::WriteSoundFile(m_folder / name, samples);
    return samples;
  }
  /// What a board plays of the samples, from the first that is not silent.
  static std::vector<std::int16_t> OnBoard(const std::vector<std::int16_t>& samples, int volume) {
    std::vector<std::int16_t> played;
    for (const int value : support::DecodeStream(support::ReferenceStream(samples, 20000, volume)))
      played.push_back(static_cast<std::int16_t>(std::lround(std::clamp(value, -1023, 1023) * 32767 / 1023.0)));
    played.erase(played.begin(), std::find_if(played.begin(), played.end(), [](int sample) { return sample != 0; }));
    return played;
  }
  [[nodiscard]] double Volume() const {
    return window.Value(window.Await("slider", "Volume of the selected sound, in percent"));
  }
};

TEST_F(Level, TheVolumesAreLevelledSavedAndHeardAsOnTheBoard) {
  const support::PrivateSoundService service;
  const std::vector<std::int16_t> full = Tone("full.lsu", 20000);
  Tone("half.lsu", 10000);
  // Both slots have the same balance.
  support::WriteBytes(m_folder / "my saber.lscfg",
                      "BOOT\r\n" + (m_folder / "full.lsu").string() + "\r\n 100\r\nPWRON\r\n" +
                          (m_folder / "half.lsu").string() +
                          "\r\n 90\r\nPWROFF\r\n\r\n 100\r\nIDLE\r\n\r\n 100\r\nMOTION-0\r\nIMPACT-0\r\nLOCKUP-0\r\n");
  Start(m_folder / "my saber.lscfg");
  window.Await("label", "my saber");
  window.ClickItem("Boot sound", "Boot: full.lsu, 0.5 s");
  {
    SCOPED_TRACE("page");
    EXPECT_THAT(Controls(kMain), IsSupersetOf(std::vector<Said>{{"push button", "Level the volumes ..."},
                                                                {"check box", "As on the board"}}));
  }

  window.Press({"Control_L", "l"});
  window.Await("push button", "Level");
  {
    SCOPED_TRACE("sheet");
    EXPECT_THAT(Controls(kMain), IsSupersetOf(std::vector<Said>{{"spin box", "Balance of Boot, in loudness units"},
                                                                {"spin box", "Balance of Power On, in loudness units"},
                                                                {"spin box", "Balance of Power Off, in loudness units"},
                                                                {"spin box", "Balance of Idle, in loudness units"},
                                                                {"spin box", "Balance of Motion, in loudness units"},
                                                                {"spin box", "Balance of Impact, in loudness units"},
                                                                {"spin box", "Balance of Lock-up, in loudness units"},
                                                                {"push button", "Cancel"},
                                                                {"push button", "Level"}}));
  }
  window.Press({"space"});
  window.Await("label", "The volumes are level: 2 of 2 have changed.");
  EXPECT_EQ(Volume(), 50);
  window.Press({"Control_L", "s"});
  window.Await("push button", "Undo: Level the volumes");
  window.Await("label", "my saber");
  EXPECT_THAT(support::ReadBytes(m_folder / "my saber.lscfg"), HasSubstr("half.lsu\r\n 100\r\n"));

  window.Click("check box", "As on the board");
  window.Await("filler", "Waveform of the selected sound as on the board");
  {
    const std::vector<std::int16_t> expected = OnBoard(full, 50);
    support::PrivateSoundService::Recorder recorder;
    window.Click("push button", "Play");
    EXPECT_EQ(recorder.Hear(expected.size()), expected);
    window.Await("push button", "Play");
  }
  EXPECT_EQ(window.Close().code, 0);
}

}  // namespace
}  // namespace kestrin::rig
