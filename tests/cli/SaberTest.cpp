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

TEST_F(SaberTest, ASoundOfTheSetIsNotOverwritten) {
  for (const SoundSet::Sound& sound : m_set.sounds) {
    const std::string before = ReadBytes(sound.path);
    const Finished finished =
        Run({"saber", "render", m_set.configuration.string(), "--script", "on", "--output", sound.path.string()});
    EXPECT_EQ(finished.code, 2);
    EXPECT_NE(finished.errors.find("is one of the sounds. Choose another"), std::string::npos) << finished.errors;
    EXPECT_EQ(ReadBytes(sound.path), before);
  }
}

#ifndef _WIN32
TEST_F(SaberTest, WhatIsThereAlreadyIsReplacedAsAWholeOrStays) {
  WriteBytes(m_wav, "my own");
  Surroundings full;
  full.largestFile = 1000;
  const Finished finished = Run(
      {"saber", "render", m_set.configuration.string(), "--script", "boot; on; off", "--output", m_wav.string()}, full);
  EXPECT_EQ(finished.code, 1);
  EXPECT_NE(finished.errors.find("What was there before is unchanged."), std::string::npos) << finished.errors;
  EXPECT_EQ(ReadBytes(m_wav), "my own");
  EXPECT_GT(Render("boot")["samples"], 0);
  EXPECT_EQ(ReadBytes(m_wav).substr(0, 4), "RIFF");
}
#endif

TEST_F(SaberTest, AFolderThatIsNotThereIsNamed) {
  const std::string wav = (m_folder / "nowhere" / "saber.wav").string();
  const Finished finished = Run({"saber", "render", m_set.configuration.string(), "--script", "on", "--output", wav});
  EXPECT_EQ(finished.code, 1);
  EXPECT_NE(finished.errors.find(wav), std::string::npos) << finished.errors;
  EXPECT_NE(finished.errors.find("Check that the folder is there"), std::string::npos) << finished.errors;
}

// A WAV file tells its sizes in 32 bits: 2^31 samples of two bytes are more than it can hold. 75 times ten minutes are
// 2,160,000,000 samples.
TEST_F(SaberTest, AScriptThatIsTooLongIsRefused) {
  std::string script;
  for (int i = 0; i < 75; ++i) script += "wait 600;";
  const Finished finished =
      Run({"saber", "render", m_set.configuration.string(), "--script", script, "--output", m_wav.string()});
  EXPECT_EQ(finished.code, 1);
  EXPECT_NE(finished.errors.find("longer than a WAV file can be. Write a shorter script."), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(m_wav));
}

TEST_F(SaberTest, EmptySlotsAreSilent) {
  static_cast<void>(
      RunJson(0, {"config", "make", m_set.configuration.string(), "--pwron", m_set.sounds[1].path.string()}));
  const Json document = Render("boot; on; swing; hit; lockup 0.5; wait 0.25; off");
  EXPECT_EQ(document["events"].size(), 1U);
  EXPECT_EQ(document["events"][0]["slot"], "pwron");
  EXPECT_EQ(document["samples"], Played(1) + 36000);
}

TEST_F(SaberTest, ASetWithoutAnySoundIsAnEmptyFile) {
  static_cast<void>(RunJson(0, {"config", "make", m_set.configuration.string()}));
  const Json document = Render("boot; on; swing; off");
  EXPECT_EQ(document["samples"], 0);
  EXPECT_EQ(document["clipped"], 0);
  EXPECT_EQ(document["events"], Json::array());
  EXPECT_EQ(ReadBytes(m_wav).size(), 44U);
}

TEST_F(SaberTest, ALockUpIsHeldForItsTime) {
  const Json none = Render("on; lockup 0; off");
  const Json held = Render("on; lockup 600; off");
  EXPECT_EQ(held["samples"].get<std::int64_t>() - none["samples"].get<std::int64_t>(), 600 * 48000);
}

// A sound that is all as loud as it can be is coded as 999 of 1,023, but for the first two samples that the board
// plays, which are always silent. Two of them together are cut off at every other sample.
TEST_F(SaberTest, WhatIsTooLoudTogetherIsCountedAndTold) {
  const std::vector<std::int16_t> loud(1000, 32767);
  const std::vector<std::int16_t> longer(2000, 32767);
  for (const std::size_t sound : {1U, 2U, 6U}) WriteSoundFile(m_set.sounds[sound].path, loud);
  WriteSoundFile(m_set.sounds[3].path, longer);
  static_cast<void>(RunJson(0, {"config", "make", m_set.configuration.string(), "--idle", m_set.sounds[3].path.string(),
                                "--impact", m_set.sounds[6].path.string()}));
  EXPECT_EQ(Render("on; hit")["clipped"], 998);
  const Finished finished =
      Run({"saber", "render", m_set.configuration.string(), "--script", "on; hit", "--output", m_wav.string()});
  EXPECT_NE(finished.out.find("Cut off at full scale  998"), std::string::npos) << finished.out;
  EXPECT_EQ(Render("on; wait 0.02; off")["clipped"], 0);
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
