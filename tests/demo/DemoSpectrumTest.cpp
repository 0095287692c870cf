// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "demo/DemoSet.h"
#include "demo/Measures.h"

namespace kestrin::demo {
namespace {

using demo_test::Between;
using demo_test::Line;
using demo_test::Pitch;
using demo_test::Rms;

std::vector<std::int16_t> Make(const std::string& fileName) {
  const std::vector<DemoSound> sounds = DemoSounds();
  const auto found = std::find_if(sounds.begin(), sounds.end(),
                                  [&fileName](const DemoSound& demo) { return demo.fileName == fileName; });
  return found == sounds.end() ? std::vector<std::int16_t>{} : found->make();
}

TEST(DemoSpectrum, TheHumStandsOnItsPitchAndFallsOffAboveIt) {
  const std::vector<std::int16_t> hum = Make("idle.lsu");
  const double root = Line(hum, 92.0);
  EXPECT_GT(root, 3000.0);
  // Between the harmonics there is only a breath of air, and above the last harmonic (32 * 183.7 Hz) as well.
  for (const double hz : {71.0, 115.0, 161.0, 251.0, 6100.0, 9000.0, 15000.0, 21000.0}) {
    EXPECT_LT(Line(hum, hz), root / 100.0) << hz;
  }
}

TEST(DemoSpectrum, TheHumHasNothingToFoldBackFromAboveTheHighestPitch) {
  // What folds back would come in lines; noise alone is spread evenly.
  const std::vector<std::int16_t> hum = Make("idle.lsu");
  for (double hz = 16000.0; hz < 23900.0; hz += 97.0 / 3.0) EXPECT_LT(Line(hum, hz), 3.0) << hz;
}

TEST(DemoSpectrum, TheVoiceOfASwingFallsWhileItPasses) {
  for (int n = 1; n <= 6; ++n) {
    const std::vector<std::int16_t> swing = Make("swing" + std::to_string(n) + ".lsu");
    ASSERT_FALSE(swing.empty());
    const double length = static_cast<double>(swing.size()) / demo_test::kRate;
    const double before = Pitch(Between(swing, 0.02 * length, 0.22 * length), 70.0, 150.0);
    const double after = Pitch(Between(swing, 0.78 * length, 0.98 * length), 70.0, 150.0);
    EXPECT_GT(before, 1.15 * after) << n;
  }
}

TEST(DemoSpectrum, PowerOnClimbsAndPowerOffFalls) {
  const std::vector<std::int16_t> on = Make("power on.lsu");
  EXPECT_LT(Pitch(Between(on, 0.12, 0.24), 25.0, 150.0), 75.0);
  EXPECT_NEAR(Pitch(Between(on, 1.0, 1.2), 25.0, 150.0), 92.0, 4.0);
  const std::vector<std::int16_t> off = Make("power off.lsu");
  EXPECT_NEAR(Pitch(Between(off, 0.02, 0.12), 25.0, 150.0), 96.0, 8.0);
  EXPECT_LT(Pitch(Between(off, 0.95, 1.15), 20.0, 150.0), 45.0);
}

TEST(DemoSpectrum, AClashIsBrighterThanTheHum) {
  // Share of the loudness that lies in the steps between samples: it grows with the pitch of what sounds.
  const auto brightness = [](const std::vector<std::int16_t>& samples) {
    std::vector<std::int16_t> steps;
    for (std::size_t i = 1; i < samples.size(); ++i) {
      steps.push_back(static_cast<std::int16_t>((samples[i] - samples[i - 1]) / 2));
    }
    return Rms(steps) / Rms(samples);
  };
  const double hum = brightness(Make("idle.lsu"));
  for (int n = 1; n <= 5; ++n) {
    EXPECT_GT(brightness(Make("clash" + std::to_string(n) + ".lsu")), 5.0 * hum) << n;
  }
}

}  // namespace
}  // namespace kestrin::demo
