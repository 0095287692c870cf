// SPDX-License-Identifier: MIT
#include <cstring>

#include "support/KestrinctlTest.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

/// A set of eight sounds, two of which are swings.
class SaberTest : public KestrinctlTest {
 protected:
  [[nodiscard]] Json Render(const std::string& script, const std::string& seed = "1") const {
    return RunJson(0, {"saber", "render", m_set.configuration.string(), "--script", script, "--seed", seed, "--output",
                       m_wav.string()});
  }
  /// What the board plays of a sound: as many samples, an odd count getting one more.
  [[nodiscard]] std::int64_t Played(std::size_t sound) const { return m_set.sounds[sound].CodedBytes() / 3 * 2; }
  [[nodiscard]] std::vector<std::int16_t> Samples() const {
    const std::string bytes = ReadBytes(m_wav).substr(44);
    std::vector<std::int16_t> samples(bytes.size() / 2);
    std::memcpy(samples.data(), bytes.data(), samples.size() * 2);
    return samples;
  }

  SoundSet m_set = WriteSoundSet(m_folder.Path());
  std::filesystem::path m_wav = m_folder / "saber.wav";
};

TEST_F(SaberTest, EverySoundBeginsWhereTheOneBeforeHasEnded) {
  const Json document = Render("boot; on; hit; off");
  EXPECT_EQ(Keys(document), (std::vector<std::string>{"samples", "clipped", "events"}));
  const std::int64_t on = Played(0);
  const std::int64_t hum = on + Played(1);
  const std::int64_t off = hum + Played(6);
  const Json expected = {{{"sample", 0}, {"slot", "boot"}, {"position", 1}},
                         {{"sample", on}, {"slot", "pwron"}, {"position", 1}},
                         {{"sample", hum}, {"slot", "idle"}, {"position", 1}},
                         {{"sample", hum}, {"slot", "impact"}, {"position", 1}},
                         {{"sample", off}, {"slot", "pwroff"}, {"position", 1}}};
  EXPECT_EQ(document["events"], expected) << document.dump(1);
  EXPECT_EQ(document["samples"], off + Played(2));
  EXPECT_EQ(ReadBytes(m_wav).size(), 44 + 2 * document["samples"].get<std::size_t>());
}

// Of 20,000 the loudest sample is coded as 999 at 100 %; of 1,023 that would be full scale. What has its own volume is
// that much quieter.
TEST_F(SaberTest, SoundsAsTheBoardPlaysThem) {
  static_cast<void>(Render("boot"));
  const std::vector<std::int16_t> samples = Samples();
  const SoundSet::Sound& boot = m_set.sounds[0];
  ASSERT_EQ(samples.size(), static_cast<std::size_t>(Played(0)));
  const double toBoard = 999.0 / boot.Peak() * boot.volume / 100;
  for (std::size_t i = 2; i < boot.samples.size(); ++i)
    EXPECT_NEAR(samples[i] * 1023.0 / 32767, boot.samples[i - 1] * toBoard, 4) << i;
}

TEST_F(SaberTest, TheSameSeedMakesTheSameSound) {
  static_cast<void>(Render("on; swing; swing; swing", "5"));
  const std::string first = ReadBytes(m_wav);
  static_cast<void>(Render("on; swing; swing; swing", "5"));
  EXPECT_EQ(ReadBytes(m_wav), first);
}

TEST_F(SaberTest, AWrongScriptWritesNothing) {
  const Finished finished =
      Run({"saber", "render", m_set.configuration.string(), "--script", "on; jump", "--output", m_wav.string()});
  EXPECT_EQ(finished.code, 2);
  EXPECT_EQ(finished.errors.find("kestrinctl: \"jump\" is no step."), 0U) << finished.errors;
  EXPECT_FALSE(std::filesystem::exists(m_wav));
}

TEST_F(SaberTest, TheSetItselfIsNotOverwritten) {
  const std::string set = ReadBytes(m_set.configuration);
  const Finished finished = Run(
      {"saber", "render", m_set.configuration.string(), "--script", "on", "--output", m_set.configuration.string()});
  EXPECT_EQ(finished.code, 2);
  EXPECT_NE(finished.errors.find("is the set itself: choose another"), std::string::npos) << finished.errors;
  EXPECT_EQ(ReadBytes(m_set.configuration), set);
}

TEST_F(SaberTest, ASoundThatIsMissingIsNamed) {
  std::filesystem::remove(m_set.sounds[4].path);
  const Json document =
      RunJson(1, {"saber", "render", m_set.configuration.string(), "--script", "on", "--output", m_wav.string()});
  EXPECT_NE(document["error"].get<std::string>().find(m_set.sounds[4].path.string()), std::string::npos) << document;
  EXPECT_FALSE(std::filesystem::exists(m_wav));
}

}  // namespace
}  // namespace kestrin::support
