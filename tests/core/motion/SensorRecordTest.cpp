// SPDX-License-Identifier: MIT
#include "core/motion/SensorRecord.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrin::core::motion {
namespace {

using namespace std::chrono_literals;

class SensorRecordTest : public ::testing::Test {
 protected:
  /// The next readings, 40 ms apart, of an axis on which nothing else pulls; z feels gravity.
  void Feel(const std::vector<std::int32_t>& x) {
    for (const std::int32_t value : x) {
      m_record.Add({m_at, value, 0, 21, 7});
      m_at += 40ms;
    }
  }
  void Rest(int readings) { Feel(std::vector<std::int32_t>(static_cast<std::size_t>(readings))); }
  void Swing() { Feel({2, 5, 8, 5, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0}); }
  void Tap() { Feel({17, 0, 0, 0}); }

  SensorRecord m_record;
  std::chrono::milliseconds m_at{};
};

TEST_F(SensorRecordTest, KeepsTheLastTenSeconds) {
  // From 0 to 10,000 ms are 251 readings.
  Rest(251);
  EXPECT_EQ(m_record.Samples().size(), 251U);
  EXPECT_EQ(m_record.Samples().front().reading.at, 0ms);
  Rest(1);
  EXPECT_EQ(m_record.Samples().size(), 251U);
  EXPECT_EQ(m_record.Samples().front().reading.at, 40ms);
  EXPECT_EQ(m_record.Samples().back().reading, (SensorReading{10040ms, 0, 0, 21, 7}));
}

TEST_F(SensorRecordTest, LeavesGravityOut) {
  Rest(10);
  Feel({6});
  EXPECT_EQ(m_record.Samples().back().change, (SensorChange{6, 0, 0}));
}

TEST_F(SensorRecordTest, FindsMovementsAndNumbersThoseThatCount) {
  Rest(10);
  for (int i = 0; i < 5; ++i) Swing();
  Tap();
  EXPECT_EQ(m_record.Trial().Swings(), (std::vector<std::int32_t>{8, 8, 8, 8, 8}));
  EXPECT_EQ(m_record.Trial().Taps(), std::vector<std::int32_t>{17});
  ASSERT_EQ(m_record.Marks().size(), 6U);
  EXPECT_EQ(m_record.Marks()[0].number, 1U);
  // Ten readings of rest, then the third of the swing.
  EXPECT_EQ(m_record.Marks()[0].movement, (Movement{Movement::Kind::Swing, 8, 480ms}));
  EXPECT_EQ(m_record.Marks()[4].number, 5U);
  EXPECT_EQ(m_record.Marks()[5].number, 1U);
  // And 5 * 14 of the swings.
  EXPECT_EQ(m_record.Marks()[5].movement, (Movement{Movement::Kind::Tap, 17, 3200ms}));
  Swing();
  EXPECT_EQ(m_record.Marks().size(), 6U) << "out of turn";
  EXPECT_EQ(m_record.Trial().Ignored(), Movement::Kind::Swing);
}

TEST_F(SensorRecordTest, MarksGoWithTheirTime) {
  Rest(10);
  Swing();
  // The peak was at 480 ms, 24 readings have been taken.
  Rest(238);
  EXPECT_EQ(m_record.Samples().back().reading.at, 10440ms);
  EXPECT_EQ(m_record.Marks().size(), 1U);
  Rest(2);
  EXPECT_TRUE(m_record.Marks().empty());
  EXPECT_EQ(m_record.Trial().Swings().size(), 1U);
}

TEST_F(SensorRecordTest, LooksForNothingBeforeTheSaberWasHeldStill) {
  EXPECT_FALSE(m_record.KnowsRest());
  Feel({2, 5, 8, 5, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  EXPECT_TRUE(m_record.KnowsRest());
  EXPECT_TRUE(m_record.Trial().Swings().empty());
  Swing();
  EXPECT_EQ(m_record.Trial().Swings().size(), 1U);
}

TEST_F(SensorRecordTest, NothingIsKnownOfAPause) {
  Rest(10);
  Feel({2, 5, 8});
  m_at += 461ms;
  Feel({2});
  EXPECT_TRUE(m_record.Samples().back().isAfterPause) << "501 ms behind the one before";
  EXPECT_FALSE(m_record.KnowsRest());
  Rest(20);
  EXPECT_TRUE(m_record.Trial().Swings().empty()) << "what was under way is not known";
  m_at += 460ms;
  Rest(1);
  EXPECT_FALSE(m_record.Samples().back().isAfterPause);
  EXPECT_TRUE(m_record.KnowsRest());
}

TEST_F(SensorRecordTest, TheTrialCanBeginOnceMore) {
  Rest(10);
  for (int i = 0; i < 5; ++i) Swing();
  Tap();
  const std::size_t samples = m_record.Samples().size();
  m_record.RestartTrial();
  EXPECT_TRUE(m_record.Trial().Swings().empty());
  EXPECT_TRUE(m_record.Trial().Taps().empty());
  EXPECT_TRUE(m_record.Marks().empty());
  EXPECT_EQ(m_record.Samples().size(), samples);
  EXPECT_TRUE(m_record.KnowsRest());
  Swing();
  EXPECT_EQ(m_record.Marks().size(), 1U);
  EXPECT_EQ(m_record.Marks()[0].number, 1U);
}

}  // namespace
}  // namespace kestrin::core::motion
