// SPDX-License-Identifier: MIT
// Sounds of other kinds come into the set, by keyboard, by mouse, and as a screen reader tells it.

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <numbers>

#include "rig/window/AccessibleNames.h"
#include "support/TestFiles.h"

namespace kestrin::rig {
namespace {

using testing::Contains;
using testing::IsSupersetOf;
using testing::StartsWith;

class Import : public AccessibleNames {
 protected:
  /// A WAV file of half a second: one channel of 16 bits at 24,000 samples a second.
  std::string Wav(const std::string& name) const {
    constexpr std::uint32_t kFrames = 12000;
    std::string bytes = "RIFF";
    const auto put = [&bytes](std::uint32_t value, int size) {
      for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> 8 * i & 0xFF);
    };
    put(36 + 2 * kFrames, 4);
    bytes += "WAVEfmt ";
    put(16, 4);
    put(1, 2);
    put(1, 2);
    put(24000, 4);
    put(48000, 4);
    put(2, 2);
    put(16, 2);
    bytes += "data";
    put(2 * kFrames, 4);
    for (std::uint32_t i = 0; i < kFrames; ++i)
      put(static_cast<std::uint16_t>(std::lround(8000 * std::sin(2 * std::numbers::pi * 440 * i / 24000.0))), 2);
    std::filesystem::create_directories(m_folder / "heron");
    return support::WriteBytes(m_folder / "heron" / name, bytes).string();
  }
  void StartOnline() {
    std::filesystem::create_directories(m_folder / "Documents");
    Start(std::vector<std::string>{});
    window.Await("label", "Kestrin USB Serial Number: 4B535401");
  }
  [[nodiscard]] std::filesystem::path Imported(const std::string& name) const {
    return m_folder / "Documents" / "Kestrin sounds" / "heron" / name;
  }
};

TEST_F(Import, ByKeyboard) {
  const std::string path = Wav("swing 1.wav");
  StartOnline();
  window.Press({"Control_L", "i"});
  window.ChooseFile("Choose sounds to import", path);
  window.AwaitItem("Sounds to import", "swing 1.wav, Motion, ticked, 0.5 s, ");
  // Another slot, out and in again.
  window.Press({"6"});
  window.AwaitItem("Sounds to import", "swing 1.wav, Impact, ticked, ");
  window.Press({"space"});
  window.AwaitItem("Sounds to import", "swing 1.wav, Impact, not ticked, ");
  window.Press({"space"});
  window.AwaitItem("Sounds to import", "swing 1.wav, Impact, ticked, ");
  window.Press({"Control_L", "Return"});
  window.AwaitItem("Impact sounds", "Impact 1: swing 1.lsu, 0.5 s");
  EXPECT_TRUE(std::filesystem::exists(Imported("swing 1.lsu")));
  window.Press({"Control_L", "z"});
  window.AwaitGone("list item", "Impact 1: swing 1.lsu, 0.5 s");
  EXPECT_TRUE(std::filesystem::exists(Imported("swing 1.lsu")));
}

TEST_F(Import, ByMouse) {
  const std::string path = Wav("clash.wav");
  StartOnline();
  window.Click("button menu", "Import");
  window.ChooseFile("Choose sounds to import", path);
  window.AwaitItem("Sounds to import", "clash.wav, Impact, ticked, 0.5 s, ");
  window.Click("check box", "Level loudness");
  window.Click("push button", "Import 1 sound");
  window.AwaitItem("Impact sounds", "Impact 1: clash.lsu, 0.5 s");
  EXPECT_TRUE(std::filesystem::exists(Imported("clash.lsu")));
}

TEST_F(Import, AsAScreenReaderTellsIt) {
  const std::string path = Wav("blaster.wav");
  StartOnline();
  window.Press({"Control_L", "i"});
  window.ChooseFile("Choose sounds to import", path);
  window.AwaitItem("Sounds to import", "blaster.wav, Impact, a guess, ticked, 0.5 s, ");
  EXPECT_THAT(Controls(kMain), IsSupersetOf(std::vector<Said>{{"push button", "Add files ..."},
                                                              {"check box", "All sounds"},
                                                              {"list", "Sounds to import"},
                                                              {"check box", "Trim silence"},
                                                              {"check box", "Level loudness"},
                                                              {"check box", "Loop the hum"},
                                                              {"push button", "Change the folder for the new sounds"},
                                                              {"push button", "Cancel"},
                                                              {"push button", "Import 1 sound"}}));
  EXPECT_THAT(window.ItemsOf("Sounds to import"), Contains(StartsWith("blaster.wav, ")));
  window.Press({"Escape"});
  window.AwaitGone("push button", "Add files ...");
  EXPECT_FALSE(std::filesystem::exists(m_folder / "Documents" / "Kestrin sounds"));
}

}  // namespace
}  // namespace kestrin::rig
