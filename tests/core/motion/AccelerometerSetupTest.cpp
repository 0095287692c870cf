// SPDX-License-Identifier: MIT
#include "core/motion/AccelerometerSetup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "support/MemoryKeptParameters.h"
#include "support/ScriptedAgent.h"

namespace kestrin::core::motion {
namespace {

using Bytes = std::vector<std::uint8_t>;

const DetectionParameter* const kMotionTh = &kDetectionParameters[0];
const DetectionParameter* const kFOCTime = &kDetectionParameters[5];
constexpr device::AccParam kErased{255, 255, 255, 255, 255, 255};

class AccelerometerSetupTest : public ::testing::Test {
 protected:
  AccelerometerSetupTest() {
    m_agent.Open(support::ScriptedAgent::BoardInterface(1));
    EXPECT_EQ(m_board.BindVars(m_agent), 0);
    m_agent.onWrite = [this](const Bytes& report) { Answer(report); };
  }

  /// A board that holds `m_held`; it ignores commands that it does not know.
  void Answer(const Bytes& report) {
    if (report[0] == 41) {
      const auto byte = [](std::int32_t value) { return static_cast<std::uint8_t>(value); };
      m_agent.Answers({{byte(m_held.MotionTh), byte(m_held.MotionDeb)},
                       {byte(m_held.ImpactTh), byte(m_held.ImpactDeb)},
                       {byte(m_held.ImpactTm), byte(m_held.FOCTime)}});
    }
    if (report[0] == 42) {
      if (m_accepts) m_held = {report[1], report[2], report[3], report[4], report[5], report[6]};
      if (m_accepts && m_makesOfIt) m_held = m_makesOfIt(m_held);
      m_agent.Answers({{10, m_accepts ? std::uint8_t{10} : std::uint8_t{0}}});
    }
  }

  Bytes Codes() const {
    Bytes codes;
    for (const Bytes& report : m_agent.written) codes.push_back(report[0]);
    return codes;
  }

  support::ScriptedAgent m_agent;
  device::TLS m_board;
  support::MemoryKeptParameters m_kept;
  AccelerometerSetup m_setup{m_board, "S", kFlashPeriodRevision, m_kept};
  device::AccParam m_held{180, 2, 10, 50, 125, 13};
  bool m_accepts = true;
  /// What the board makes of the values that it has accepted.
  std::function<device::AccParam(device::AccParam)> m_makesOfIt;
};

TEST_F(AccelerometerSetupTest, ReadsWhatTheBoardHolds) {
  EXPECT_EQ(m_setup.Read(), m_held);
  m_agent.onWrite = nullptr;
  EXPECT_EQ(m_setup.Read(), std::nullopt);
}

TEST_F(AccelerometerSetupTest, ChangesTheNamedValuesAndRestartsTheBoard) {
  EXPECT_EQ(m_setup.Change({{kMotionTh, 99}, {kFOCTime, 54}}), (device::AccParam{99, 2, 10, 50, 125, 14}));
  EXPECT_EQ(Codes(), (Bytes{41, 42, 0, 41}));
}

TEST_F(AccelerometerSetupTest, ARefusedChangeRestartsNothing) {
  m_accepts = false;
  EXPECT_EQ(m_setup.Change({{kMotionTh, 99}}), std::nullopt);
  EXPECT_EQ(Codes(), (Bytes{41, 42}));
}

TEST_F(AccelerometerSetupTest, AChangeOfABoardThatDoesNotAnswerSendsNoValues) {
  m_agent.onWrite = nullptr;
  EXPECT_EQ(m_setup.Change({{kMotionTh, 99}}), std::nullopt);
  EXPECT_EQ(Codes(), (Bytes{41}));
}

TEST_F(AccelerometerSetupTest, FactoryValuesNeedNoReadingBefore) {
  m_held = kErased;
  EXPECT_EQ(m_setup.RestoreDefaults(), (device::AccParam{180, 2, 10, 50, 125, 13}));
  EXPECT_EQ(Codes(), (Bytes{42, 0, 41}));
}

TEST_F(AccelerometerSetupTest, KeptValuesComeBackAndAreForgottenOnceConfirmed) {
  m_held = kErased;
  m_kept.kept["S"] = {1, 2, 3, 4, 5, 6};
  m_kept.kept["other"] = {9, 9, 9, 9, 9, 9};
  EXPECT_EQ(m_setup.RestoreKept(), (device::AccParam{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(m_setup.Kept(), std::nullopt);
  EXPECT_EQ(m_kept.kept.size(), 1u);
  EXPECT_EQ(m_setup.RestoreKept(), std::nullopt) << "nothing is kept any more";
}

TEST_F(AccelerometerSetupTest, KeptValuesStayWhenTheBoardRefusesThem) {
  m_kept.kept["S"] = {1, 2, 3, 4, 5, 6};
  m_accepts = false;
  EXPECT_EQ(m_setup.RestoreKept(), std::nullopt);
  EXPECT_TRUE(m_setup.Kept().has_value());
}

TEST_F(AccelerometerSetupTest, KeptValuesStayUntilTheBoardHasToldThatItHoldsThem) {
  m_kept.kept["S"] = {1, 2, 3, 4, 5, 6};
  bool restarted = false;
  m_agent.onWrite = [&](const Bytes& report) {
    restarted = restarted || report[0] == 0;
    if (!restarted) Answer(report);
  };
  EXPECT_EQ(m_setup.Change({{kMotionTh, 99}}), (device::AccParam{99, 2, 10, 50, 125, 13})) << "as it was accepted";
  EXPECT_EQ(m_setup.Kept(), (device::AccParam{1, 2, 3, 4, 5, 6}));
  restarted = false;
  EXPECT_EQ(m_setup.RestoreKept(), (device::AccParam{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(m_setup.Kept(), (device::AccParam{1, 2, 3, 4, 5, 6}));
  restarted = false;
  const AccelerometerSetup::Sent sent = m_setup.Send({1, 2, 3, 4, 5, 6});
  EXPECT_TRUE(sent.accepted);
  EXPECT_EQ(sent.held, std::nullopt);
  EXPECT_TRUE(m_setup.Kept().has_value());
  restarted = false;
  EXPECT_EQ(m_setup.ReadBack({1, 2, 3, 4, 5, 6}), (device::AccParam{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(m_setup.Kept(), std::nullopt) << "now it has told";
}

TEST_F(AccelerometerSetupTest, AnAcknowledgementOfValuesThatTheBoardDoesNotHoldForgetsNothing) {
  m_held = kErased;
  m_kept.kept["S"] = {1, 2, 3, 4, 5, 6};
  // The acknowledgement was that of an erase, which came late: the board is as the erase has left it.
  m_makesOfIt = [](const device::AccParam&) { return kErased; };
  EXPECT_EQ(m_setup.RestoreKept(), kErased);
  EXPECT_TRUE(m_setup.Kept().has_value());
  EXPECT_EQ(m_setup.RestoreDefaults(), kErased);
  EXPECT_EQ(m_setup.Change({{kMotionTh, 99}}), kErased);
  EXPECT_EQ(m_setup.ReadBack({1, 2, 3, 4, 5, 6}), kErased);
  EXPECT_EQ(m_setup.Kept(), (device::AccParam{1, 2, 3, 4, 5, 6}));
  m_makesOfIt = nullptr;
  EXPECT_EQ(m_setup.RestoreKept(), (device::AccParam{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(m_setup.Kept(), std::nullopt);
}

TEST_F(AccelerometerSetupTest, KeptValuesThatTheBoardClipsIntoTheirRangeAreConfirmed) {
  // 25 is the largest integration time, 31 the largest threshold, 250 units are the longest flash period.
  m_kept.kept["S"] = {0, 40, 200, 4, 5, 255};
  m_makesOfIt = [](const device::AccParam&) { return device::AccParam{1, 25, 31, 4, 5, 250}; };
  EXPECT_EQ(m_setup.RestoreKept(), (device::AccParam{1, 25, 31, 4, 5, 250}));
  EXPECT_EQ(m_setup.Kept(), std::nullopt);
}

TEST_F(AccelerometerSetupTest, KeptValuesOfWhichTheBoardMadeSomethingElseStayUntilThePersonTakesThat) {
  m_kept.kept["S"] = {99, 2, 3, 4, 5, 6};
  m_makesOfIt = [](device::AccParam values) {
    values.MotionTh = std::min(values.MotionTh, 40);
    return values;
  };
  EXPECT_EQ(m_setup.RestoreKept(), (device::AccParam{40, 2, 3, 4, 5, 6}));
  EXPECT_TRUE(m_setup.Kept().has_value());
  EXPECT_EQ(m_setup.Send({40, 2, 3, 4, 5, 6}).held, (device::AccParam{40, 2, 3, 4, 5, 6}));
  EXPECT_EQ(m_setup.Kept(), std::nullopt);
}

TEST_F(AccelerometerSetupTest, TheFlashPeriodOfABoardWithoutOneConfirmsNothingAndHindersNothing) {
  AccelerometerSetup setup{m_board, "S", kFlashPeriodRevision - 1, m_kept};
  m_kept.kept["S"] = {1, 2, 3, 4, 5, 6};
  m_makesOfIt = [](device::AccParam values) {
    values.FOCTime = 255;
    return values;
  };
  EXPECT_EQ(setup.RestoreKept(), (device::AccParam{1, 2, 3, 4, 5, 255}));
  EXPECT_EQ(setup.Kept(), std::nullopt);
}

TEST_F(AccelerometerSetupTest, AChangeReplacesTheKeptValueOfTheSameParameter) {
  m_held = kErased;
  m_kept.kept["S"] = {1, 2, 3, 4, 5, 6};
  EXPECT_EQ(m_setup.Change({{kMotionTh, 99}}), (device::AccParam{99, 255, 255, 255, 255, 255}));
  EXPECT_EQ(m_setup.Kept(), (device::AccParam{99, 2, 3, 4, 5, 6}));
  m_held = {255, 2, 3, 4, 5, 6};
  EXPECT_EQ(m_setup.Change({{kMotionTh, 98}}), (device::AccParam{98, 2, 3, 4, 5, 6}));
  EXPECT_EQ(m_setup.Kept(), std::nullopt) << "with that the board holds everything";
}

TEST_F(AccelerometerSetupTest, AChangeOfAllValuesLeavesNothingToKeep) {
  m_held = kErased;
  m_kept.kept["S"] = {1, 2, 3, 4, 5, 6};
  ASSERT_TRUE(m_setup.RestoreDefaults().has_value());
  EXPECT_EQ(m_setup.Kept(), std::nullopt);
}

}  // namespace
}  // namespace kestrin::core::motion
