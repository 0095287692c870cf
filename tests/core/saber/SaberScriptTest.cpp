// SPDX-License-Identifier: MIT
#include "core/saber/SaberScript.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrin::core::saber {
namespace {

using sound::SlotKind;

class SaberScriptTest : public ::testing::Test {
 protected:
  SaberScriptTest() {
    const auto add = [this](SlotKind kind, std::size_t count) {
      m_sounds.Add(kind, std::vector<std::int16_t>(count, 1));
    };
    add(SlotKind::Boot, 500);
    add(SlotKind::PwrOn, 48000);
    add(SlotKind::PwrOff, 20000);
    add(SlotKind::Idle, 9000);
    add(SlotKind::Motion, 10000);
    add(SlotKind::Impact, 7000);
    add(SlotKind::Lockup, 3000);
  }

  /// Which sounds began when: "0 pwron, 48000 idle"; at the end how many samples there were.
  std::string Perform(const std::string& text) {
    const base::Result<SaberScript> script = SaberScript::Read(text);
    EXPECT_TRUE(script) << script.Text();
    if (!script) return {};
    std::string log;
    Saber saber(m_sounds, 1, [&log](std::int64_t sample, const sound::SoundPlace& place) {
      log += std::to_string(sample) + " " + std::string(sound::SlotOf(place.kind).name) + ", ";
    });
    std::int64_t samples = 0;
    script->Perform(saber, [&samples](std::span<const std::int16_t> part) {
      samples += static_cast<std::int64_t>(part.size());
      return true;
    });
    EXPECT_EQ(samples, saber.Now());
    return log + std::to_string(samples);
  }

  SaberSounds m_sounds;
};

TEST_F(SaberScriptTest, AStepLastsUntilItsSoundHasEnded) {
  EXPECT_EQ(Perform("boot; on; swing; swing; hit; off"),
            "0 boot, 500 pwron, 48500 idle, 48500 motion, 58500 motion, 68500 impact, 75500 pwroff, 95500");
}

TEST_F(SaberScriptTest, AWaitSaysHowLongAfterTheBeginningTheNextStepComes) {
  EXPECT_EQ(Perform("on; wait 1.5; swing; wait 0.1; hit; wait 0.5; off"),
            "0 pwron, 48000 idle, 72000 motion, 76800 impact, 100800 pwroff, 120800");
}

TEST_F(SaberScriptTest, OneThingFollowsTheOther) {
  EXPECT_EQ(Perform("on; wait 1.5; swing; swing; hit; lockup 1.2; off"),
            "0 pwron, 48000 idle, 72000 motion, 82000 motion, 92000 impact, 99000 lockup, 156600 pwroff, 176600");
}

TEST_F(SaberScriptTest, FurtherWaitsAreAdded) {
  EXPECT_EQ(Perform("wait 0.5; wait 1; boot; wait 1; wait 1"), "72000 boot, 168000");
}

TEST_F(SaberScriptTest, ALockUpIsHeldForItsTime) {
  EXPECT_EQ(Perform("on; lockup 1.2; off"), "0 pwron, 48000 idle, 48000 lockup, 105600 pwroff, 125600");
}

TEST_F(SaberScriptTest, WhatIsHeardAtTheEndComesToItsEnd) {
  EXPECT_EQ(Perform("on; swing; wait 0"), "0 pwron, 48000 idle, 48000 motion, 58000");
}

TEST_F(SaberScriptTest, WhatFadesAtTheEndIsHeardToo) {
  EXPECT_EQ(Perform("on; lockup 1"), "0 pwron, 48000 idle, 48000 lockup, 96240") << "240 samples of fading";
}

TEST_F(SaberScriptTest, BlanksAndEmptyStepsAreNothing) {
  EXPECT_EQ(Perform(" ;;\n on ;\twait   1.5;"), Perform("on; wait 1.5"));
  EXPECT_EQ(Perform(""), "0");
}

TEST_F(SaberScriptTest, WhoTakesNoMoreEndsIt) {
  const base::Result<SaberScript> script = SaberScript::Read("on; swing");
  ASSERT_TRUE(script);
  Saber saber(m_sounds, 1);
  int blocks = 0;
  script->Perform(saber, [&blocks](std::span<const std::int16_t>) { return ++blocks < 3; });
  EXPECT_EQ(blocks, 3);
}

TEST_F(SaberScriptTest, TellsHowLongItIsAtLeast) {
  const auto least = [](const char* text) { return SaberScript::Read(text)->LeastSamples(); };
  EXPECT_EQ(least("on; hit"), 0);
  EXPECT_EQ(least("wait 0.5; on; wait 1.5; hit; lockup 2; wait 1; off"), 5 * 48000);
}

// A million hits at one and the same sample: each but the last was never heard, so nothing of it is there to fade.
TEST_F(SaberScriptTest, AsManyStepsAsAnybodyWritesAreTaken) {
  constexpr int kMany = 1'000'000;
  std::string text = "on";
  for (int i = 0; i < kMany; ++i) text += ";hit;wait 0";
  const base::Result<SaberScript> script = SaberScript::Read(text);
  ASSERT_TRUE(script) << script.Text();
  int began = 0;
  std::vector<std::int16_t> heard;
  Saber saber(m_sounds, 1, [&began](std::int64_t, const sound::SoundPlace&) { ++began; });
  script->Perform(saber, [&heard](std::span<const std::int16_t> part) {
    heard.insert(heard.end(), part.begin(), part.end());
    return true;
  });
  EXPECT_EQ(began, kMany + 2) << "power on, the hum, hits";
  EXPECT_EQ(saber.Clipped(), 0);
  EXPECT_EQ(heard.size(), 55000U) << "48,000 of power on, 7,000 of the last hit";
}

TEST_F(SaberScriptTest, AStepThatIsNoneIsNamed) {
  for (const char* const step : {"jump", "On", "on 2", "wait", "wait x", "wait -1", "wait 601", "wait nan", "wait inf",
                                 "wait 1 2", "lockup", "lockup 1s", "swing swing"}) {
    const base::Result<SaberScript> script = SaberScript::Read(std::string("on; ") + step + "; off");
    ASSERT_FALSE(script) << step;
    EXPECT_EQ(script.Text().find("\"" + std::string(step) + "\" is no step. Write boot, on, off, swing, hit, "), 0U)
        << script.Text();
  }
  EXPECT_TRUE(SaberScript::Read("wait 600; lockup 0"));
}

}  // namespace
}  // namespace kestrin::core::saber
