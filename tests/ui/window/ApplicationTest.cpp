// SPDX-License-Identifier: MIT
#include "ui/window/Application.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

namespace kestrin::ui::window {
namespace {

/// The application itself is what is tested, so each test has its own.
class ApplicationMishap : public testing::Test {
 protected:
  ApplicationMishap() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    application = std::make_unique<Application>(m_count, m_arguments.data());
    QObject::connect(&ticking, &QTimer::timeout, [this] {
      ++ticks;
      onTick();
    });
  }

  /// Lets events be handled until `condition` holds; false when that takes too long.
  static bool Until(const std::function<bool()>& condition) {
    constexpr int kTooLong = 10000;
    QElapsedTimer time;
    time.start();
    while (!condition() && time.elapsed() < kTooLong)
      QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
    return condition();
  }

  std::unique_ptr<Application> application;
  QTimer ticking;
  std::function<void()> onTick;
  int ticks = 0;

 private:
  std::string m_name = "application";
  std::array<char*, 2> m_arguments{m_name.data(), nullptr};
  int m_count = 1;
};

TEST_F(ApplicationMishap, IsToldBehindTheEventSoThatItsTimerGoesOn) {
  onTick = [this] {
    if (ticks == 1) throw std::runtime_error("the board fell down");
  };
  QString told;
  bool wentOn = false;
  QObject::connect(application.get(), &Application::mishap, [&](const QString& text) {
    told = text;
    wentOn = Until([this] { return ticks > 1; });
  });
  ticking.start(1);
  ASSERT_TRUE(Until([&] { return !told.isEmpty(); }));
  EXPECT_TRUE(told.contains("the board fell down")) << told.toStdString();
  EXPECT_TRUE(wentOn);
}

TEST_F(ApplicationMishap, IsToldOnceAtATime) {
  onTick = [] { throw std::runtime_error("again"); };
  int standing = 0;
  int most = 0;
  int told = 0;
  QObject::connect(application.get(), &Application::mishap, [&] {
    most = std::max(most, ++standing);
    ++told;
    const int before = ticks;
    EXPECT_TRUE(Until([&] { return ticks > before + 2; }));
    --standing;
  });
  ticking.start(1);
  EXPECT_TRUE(Until([&] { return told == 2 && standing == 0; })) << "the next one is told when the first is over";
  EXPECT_EQ(most, 1);
}

}  // namespace
}  // namespace kestrin::ui::window
