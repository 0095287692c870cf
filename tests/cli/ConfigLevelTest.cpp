// SPDX-License-Identifier: MIT
#include <chrono>
#include <cmath>
#include <numbers>

#include "support/KestrinctlTest.h"

namespace kestrin::support {
namespace {

class ConfigLevelTest : public KestrinctlTest {
 protected:
  /// Two seconds of a tone that the board's format lifts until its one loudest sample, 20,000, has its full height: of
  /// two such sounds the one with half the amplitude is 6.02 LU below the other.
  std::string Tone(const std::string& name, double amplitude) {
    std::vector<std::int16_t> samples(96000);
    for (std::size_t i = 0; i < samples.size(); ++i)
      samples[i] = static_cast<std::int16_t>(
          std::lround(amplitude * std::sin(2 * std::numbers::pi * 997 * static_cast<double>(i) / 48000)));
    samples[50001] = 20000;
    return WriteSoundFile(m_folder / name, samples).string();
  }

  void Make(const Arguments& sounds) {
    Arguments arguments{"config", "make", m_set};
    arguments.insert(arguments.end(), sounds.begin(), sounds.end());
    ASSERT_EQ(Run(arguments).code, 0);
  }

  static Json Change(const char* slot, int position, int from, int to) {
    return {{"slot", slot}, {"position", position}, {"from", from}, {"to", to}};
  }

  std::string m_set = (m_folder / "my set.lscfg").string();
  std::string m_out = (m_folder / "level.lscfg").string();
};

TEST_F(ConfigLevelTest, TheQuietestStaysAndTheOthersComeDown) {
  const std::string full = Tone("full.lsu", 20000);
  const std::string half = Tone("half.lsu", 10000);
  const std::string quarter = Tone("quarter.lsu", 5000);
  Make({"--motion", full + ":100", "--motion", half + ":150", "--motion", quarter + ":70"});
  const std::string sound = ReadBytes(full);
  const Json document = RunJson(0, {"config", "level", m_set});
  EXPECT_EQ(document["changed"],
            Json::array({Change("motion", 1, 100, 25), Change("motion", 2, 150, 50), Change("motion", 3, 70, 100)}))
      << document.dump(1);
  Json shown = document;
  shown.erase("changed");
  EXPECT_EQ(RunJson(0, {"config", "show", m_set}), shown);
  EXPECT_EQ(ReadBytes(full), sound);
}

TEST_F(ConfigLevelTest, EverySlotHasItsBalance) {
  const std::string tone = Tone("tone.lsu", 20000);
  Make({"--boot", tone, "--pwron", tone, "--pwroff", tone, "--idle", tone, "--motion", tone, "--impact", tone,
        "--lockup", tone});
  // 2, 3 and 6 LU below the hits: 79.4, 70.8 and 50.1 %.
  EXPECT_EQ(RunJson(0, {"config", "level", m_set, "--output", m_out})["changed"],
            Json::array({Change("boot", 1, 100, 79), Change("pwron", 1, 100, 79), Change("pwroff", 1, 100, 79),
                         Change("idle", 1, 100, 50), Change("motion", 1, 100, 71), Change("lockup", 1, 100, 79)}));
  // The hits 6 LU below boot, which then has the whole of it: 50.1 %; the others as before, 2 LU lower.
  EXPECT_EQ(RunJson(0, {"config", "level", m_set, "--balance", "impact=-8", "--balance", "idle=-22",
                        "--balance=lockup=-4.5", "--output", m_out})["changed"],
            Json::array({Change("idle", 1, 100, 10), Change("motion", 1, 100, 89), Change("impact", 1, 100, 50),
                         Change("lockup", 1, 100, 75)}));
}

TEST_F(ConfigLevelTest, WithAnOutputTheFileStaysAsItIs) {
  Make({"--boot", Tone("full.lsu", 20000), "--pwron", Tone("half.lsu", 10000)});
  const std::string before = ReadBytes(m_set);
  EXPECT_EQ(RunJson(0, {"config", "level", m_set, "--output", m_out})["slots"]["boot"]["volume"], 50);
  EXPECT_EQ(ReadBytes(m_set), before);
  EXPECT_EQ(RunJson(0, {"config", "show", m_out})["slots"]["boot"]["volume"], 50);
  // What is level already is written there all the same.
  std::filesystem::remove(m_set);
  EXPECT_EQ(RunJson(0, {"config", "level", m_out, "--output", m_set})["changed"], Json::array());
  EXPECT_EQ(ReadBytes(m_set), ReadBytes(m_out));
}

TEST_F(ConfigLevelTest, ASetThatIsLevelAlreadyIsNotWrittenAgain) {
  Make({"--boot", Tone("full.lsu", 20000), "--pwron", Tone("half.lsu", 10000)});
  ASSERT_EQ(Run({"config", "level", m_set}).code, 0);
  const auto before = std::filesystem::last_write_time(m_set) - std::chrono::hours(1);
  std::filesystem::last_write_time(m_set, before);
  const Finished finished = Run({"config", "level", m_set});
  EXPECT_EQ(finished.code, 0);
  EXPECT_NE(finished.out.find("\nThe volumes are level already.\n"), std::string::npos) << finished.out;
  EXPECT_EQ(std::filesystem::last_write_time(m_set), before);
}

TEST_F(ConfigLevelTest, PeopleReadATable) {
  Make({"--boot", Tone("full.lsu", 20000), "--pwron", Tone("half.lsu", 10000) + ":90"});
  const Finished finished = Run({"config", "level", m_set});
  EXPECT_EQ(finished.code, 0);
  EXPECT_NE(finished.out.find("\nThe volumes are level: 2 of 2 have changed.\n"
                              "slot      #   from     to\n"
                              "Boot      1  100 %   50 %\n"
                              "Power On  1   90 %  100 %\n"),
            std::string::npos)
      << finished.out;
  EXPECT_EQ(finished.errors, "");
}

TEST_F(ConfigLevelTest, SoundsThatAreMissingKeepTheirPlacesAndAreTold) {
  const std::string gone = Tone("gone.lsu", 20000);
  Make({"--motion", Tone("full.lsu", 20000), "--motion", gone + ":40", "--motion", Tone("half.lsu", 10000) + ":80"});
  std::filesystem::remove(gone);
  const Json document = RunJson(0, {"config", "level", m_set});
  EXPECT_EQ(document["failed"], Json::array({gone}));
  EXPECT_EQ(document["changed"], Json::array({Change("motion", 1, 100, 50), Change("motion", 2, 80, 100)}));
  ASSERT_EQ(document["slots"]["motion"].size(), 2U);
  EXPECT_EQ(document["slots"]["motion"][1]["volume"], 100);
  EXPECT_NE(ReadBytes(m_set).find("MOTION-3\r\n"), std::string::npos);
  EXPECT_NE(ReadBytes(m_set).find(gone + "\r\n 40\r\n"), std::string::npos) << ReadBytes(m_set);
  EXPECT_EQ(Run({"config", "level", m_set}).errors,
            "kestrinctl: The following files could not be found or are not valid:\n" + gone + "\n");
}

TEST_F(ConfigLevelTest, WhatCannotBeReachedIsTold) {
  // A hundredth of the loudest: 40 LU below, but for the noise of so few steps.
  Make({"--boot", Tone("full.lsu", 20000), "--pwron", Tone("faint.lsu", 200)});
  const Finished finished = Run({"--json", "config", "level", m_set});
  EXPECT_EQ(finished.code, 0);
  EXPECT_NE(finished.errors.find("\"faint.lsu\" (Power On) is much quieter than the others"), std::string::npos)
      << finished.errors;
  EXPECT_TRUE(Json::accept(finished.out)) << finished.out;
}

TEST_F(ConfigLevelTest, ABalanceThatIsNoneIsWrongUsageAndNamesTheSlots) {
  Make({"--boot", Tone("full.lsu", 20000), "--pwron", Tone("half.lsu", 10000)});
  const std::string before = ReadBytes(m_set);
  for (const char* balance : {"", "idle", "idle=", "idle=x", "idle=-9x", "idle=-24.1", "idle=24.1", "idle=nan",
                              "idle=inf", "idle=1e1", "hum=-9", "=-9", "Idle=-9", "idle=-9,5", "idle =-9", "idle= 9"}) {
    const Finished finished = Run({"config", "level", m_set, "--output", m_out, "--balance", balance});
    EXPECT_EQ(finished.code, 2) << balance;
    EXPECT_NE(finished.errors.find("boot, pwron, pwroff, idle, motion, impact, lockup"), std::string::npos)
        << balance << ": " << finished.errors;
  }
  EXPECT_EQ(ReadBytes(m_set), before);
  EXPECT_FALSE(std::filesystem::exists(m_out));
}

TEST_F(ConfigLevelTest, WhatCannotBeWrittenLeavesEverythingAsItWas) {
  const std::string full = Tone("full.lsu", 20000);
  Make({"--boot", full, "--pwron", Tone("half.lsu", 10000)});
  const std::string before = ReadBytes(m_set);
  EXPECT_EQ(Run({"config", "level", m_set, "--output", (m_folder / "none" / "set.lscfg").string()}).code, 1);
  const std::string sound = ReadBytes(full);
  const Finished finished = Run({"config", "level", m_set, "--output", full});
  EXPECT_EQ(finished.code, 2);
  EXPECT_NE(finished.errors.find("is one of the sounds"), std::string::npos) << finished.errors;
  EXPECT_EQ(ReadBytes(full), sound);
  EXPECT_EQ(ReadBytes(m_set), before);
}

TEST_F(ConfigLevelTest, WhatIsNoConfigurationFileFails) {
  const std::string file = WriteBytes(m_folder / "bad.lscfg", "BOOT\r\n\r\n 100\r\nPWR\r\n").string();
  const std::string error = RunJson(1, {"config", "level", file})["error"];
  EXPECT_EQ(error.rfind("Not a valid configuration file", 0), 0U) << error;
  EXPECT_EQ(ReadBytes(file), "BOOT\r\n\r\n 100\r\nPWR\r\n");
  EXPECT_EQ(Run({"config", "level", (m_folder / "none.lscfg").string()}).code, 1);
  EXPECT_EQ(Run({"config", "level"}).code, 2);
}

TEST_F(ConfigLevelTest, AnEmptySetHasNothingToLevel) {
  Make({});
  const Finished finished = Run({"config", "level", m_set});
  EXPECT_EQ(finished.code, 0);
  EXPECT_NE(finished.out.find("There are no sounds to level. Add some first."), std::string::npos) << finished.out;
}

}  // namespace
}  // namespace kestrin::support
