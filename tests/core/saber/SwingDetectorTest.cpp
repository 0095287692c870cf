// SPDX-License-Identifier: MIT
#include "core/saber/SwingDetector.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrin::core::saber {
namespace {

/// Turns a blade in steps of 4 ms, and writes down what is found: 's' for a swing, 'h' for a hit.
class Turned {
 public:
  explicit Turned(const SwingDetector::Sensitivity& sensitivity = {}) { m_detector.SetSensitivity(sensitivity); }

  /// For so long with that speed, in degrees a second.
  Turned& At(double speed, double seconds) {
    constexpr double kStep = 0.004;
    for (int step = 0; step < static_cast<int>(seconds / kStep + 0.5); ++step) {
      m_now += kStep;
      m_degrees += speed * kStep;
      if (const auto event = m_detector.Turn(m_now, m_degrees)) found += *event == Event::Swing ? 's' : 'h';
    }
    return *this;
  }
  Turned& Forget() {
    m_detector.Forget();
    return *this;
  }
  Turned& Jump(double degrees) {
    m_degrees += degrees;
    return *this;
  }

  std::string found;

 private:
  SwingDetector m_detector;
  double m_now = 100;
  double m_degrees = 20;
};

TEST(SwingDetector, FindsWhatIsFasterThanTheThreshold) {
  EXPECT_EQ(Turned().At(0, 0.1).At(170, 0.5).found, "");
  EXPECT_EQ(Turned().At(0, 0.1).At(190, 0.5).found, "s");
  EXPECT_EQ(Turned().At(0, 0.1).At(-190, 0.5).found, "s");
  EXPECT_EQ(Turned({60, 2}).At(0, 0.1).At(70, 0.5).found, "s");
  EXPECT_EQ(Turned({255, 2}).At(0, 0.1).At(250, 0.5).found, "");
}

TEST(SwingDetector, WantsItForTheIntegrationTime) {
  // 25 units are a quarter of a second.
  EXPECT_EQ(Turned({180, 25}).At(0, 0.3).At(190, 0.2).At(0, 0.3).found, "");
  EXPECT_EQ(Turned({180, 25}).At(0, 0.3).At(190, 0.26).At(0, 0.3).found, "s");
  EXPECT_EQ(Turned({180, 2}).At(0, 0.3).At(190, 0.04).At(0, 0.3).found, "s");
  EXPECT_EQ(Turned({180, 25}).At(300, 0.1).found, "") << "not watched for so long";
}

TEST(SwingDetector, FindsTheNextSwingAfterARestOrTheOtherWay) {
  EXPECT_EQ(Turned().At(0, 0.1).At(250, 0.3).At(120, 0.2).At(250, 0.3).found, "s") << "more than half the threshold";
  EXPECT_EQ(Turned().At(0, 0.1).At(250, 0.3).At(60, 0.2).At(250, 0.3).found, "ss");
  EXPECT_EQ(Turned().At(0, 0.1).At(250, 0.3).At(-250, 0.3).At(250, 0.3).found, "sss");
}

TEST(SwingDetector, TakesAStopOutOfAQuickTurnForAHit) {
  // Two and a half times the threshold is 450 degrees a second.
  EXPECT_EQ(Turned().At(0, 0.1).At(470, 0.2).At(0, 0.5).found, "sh");
  EXPECT_EQ(Turned().At(0, 0.1).At(430, 0.2).At(0, 0.5).found, "s");
  EXPECT_EQ(Turned().At(0, 0.1).At(470, 0.2).At(300, 0.1).At(0, 0.5).found, "s") << "it was braked before";
  EXPECT_EQ(Turned().At(0, 0.1).At(470, 0.2).At(0, 0.3).At(470, 0.2).At(0, 0.3).found, "shsh");
}

TEST(SwingDetector, ForgetsWhatWasBefore) {
  EXPECT_EQ(Turned().At(0, 0.1).Jump(40).At(0, 0.1).found, "sh") << "a jump is quick and stops dead";
  EXPECT_EQ(Turned().At(0, 0.1).Forget().Jump(40).At(0, 0.1).found, "");
}

}  // namespace
}  // namespace kestrin::core::saber
