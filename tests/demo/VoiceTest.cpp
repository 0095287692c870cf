// SPDX-License-Identifier: MIT
#include "demo/Voice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "core/sound/ConfigurationFile.h"
#include "demo/DemoSet.h"
#include "demo/Measures.h"
#include "demo/Synth.h"
#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::demo {
namespace {

using demo_test::Peak;
using demo_test::Rms;

class NoView : public core::sound::ConfigurationView {
 public:
  void EmptySlot(core::sound::SlotKind /*kind*/) override {}
  void ShowFile(core::sound::SlotKind /*kind*/, int /*position*/, const std::string& /*name*/) override {}
  void UpdateMemoryStatus() override {}
};

/// A second of a tone of 480 Hz, quiet.
std::vector<std::int16_t> Tone() {
  std::vector<std::int16_t> samples(48000);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] =
        static_cast<std::int16_t>(std::lround(10000.0 * std::sin(kTurn * 480.0 * static_cast<double>(i) / 48000.0)));
  return samples;
}

/// How often a sound comes up through zero.
int Turns(const std::vector<std::int16_t>& samples) {
  int turns = 0;
  for (std::size_t i = 0; i < samples.size(); ++i)
    if (samples[i == 0 ? samples.size() - 1 : i - 1] < 0 && samples[i] >= 0) ++turns;
  return turns;
}

TEST(Voice, ALowerVoiceIsSlowerAndALoopStillCloses) {
  const std::vector<std::int16_t> low = InVoice(Tone(), true, {0.75, 0.0});
  EXPECT_EQ(low.size(), 64000U);
  EXPECT_EQ(Turns(low), 480);
  EXPECT_EQ(Peak(low), 29204);
  // A tone of 360 Hz at this peak goes at most 29204 * 2 pi * 360 / 48000 = 1376 from sample to sample.
  EXPECT_LE(std::abs(low.front() - low.back()), 1380);
}

TEST(Voice, AHigherVoiceIsQuickerAndItsLengthIsEven) {
  const std::vector<std::int16_t> high = InVoice(Tone(), false, {1.25, 0.0});
  EXPECT_EQ(high.size(), 38400U);
  EXPECT_EQ(InVoice(std::vector<std::int16_t>(1001, 5), false, {1.0, 0.0}).size(), 1000U);
}

TEST(Voice, AGrowlIsFullerAtTheSamePeak) {
  const std::vector<std::int16_t> clear = InVoice(Tone(), true, {1.0, 0.0});
  const std::vector<std::int16_t> rough = InVoice(Tone(), true, {1.0, 1.0});
  EXPECT_EQ(Peak(rough), Peak(clear));
  EXPECT_GT(Rms(rough), 1.1 * Rms(clear));
  EXPECT_EQ(Turns(rough), 480);
}

TEST(Voice, TheDemoFontsAreWholeSetsThatFitTheSmallestBoard) {
  const support::TemporaryFolder folder;
  ASSERT_EQ(WriteDemoFonts(folder.Path(), support::AnyDisk()).Text(), "");
  for (const DemoFont& font : kDemoFonts) {
    SCOPED_TRACE(font.name);
    const std::string name = font.name;
    core::sound::LSU_Configuration configuration;
    NoView view;
    const auto result = core::sound::ConfigurationFile::Load(folder / name / (name + ".lscfg"), configuration, view);
    EXPECT_TRUE(result.valid);
    EXPECT_THAT(result.failed, testing::IsEmpty());
    EXPECT_EQ(configuration.CheckIntegrity(), 0);
    EXPECT_LE(configuration.TotalNrOfSamples(), 2793120);
  }
}

}  // namespace
}  // namespace kestrin::demo
