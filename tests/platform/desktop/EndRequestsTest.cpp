// SPDX-License-Identifier: MIT
#include "platform/desktop/EndRequests.h"

#include <gtest/gtest.h>

#include <csignal>

#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

class EndRequests : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Signals, EndRequests, testing::Values(SIGTERM, SIGHUP, SIGINT));

TEST_P(EndRequests, ComeFromTheEventLoopOnceAndGiveTheExitCode) {
  platform::desktop::EndRequests ends;
  int arrived = 0;
  QObject::connect(&ends, &platform::desktop::EndRequests::arrived, [&arrived] { ++arrived; });
  EXPECT_EQ(ends.ExitCode(7), 7);
  ASSERT_EQ(std::raise(GetParam()), 0);
  EXPECT_EQ(arrived, 0) << "nothing happens in a signal's handler";
  ASSERT_TRUE(Until([&arrived] { return arrived > 0; }));
  EXPECT_EQ(ends.ExitCode(7), 128 + GetParam());
  // Impatience changes nothing, and the first one counts.
  for (const int signal : {SIGHUP, SIGTERM, SIGINT}) std::raise(signal);
  QApplication::processEvents();
  EXPECT_EQ(arrived, 1);
  EXPECT_EQ(ends.Signal(), GetParam());
}

TEST_P(EndRequests, EndTheProgramAgainAfterwards) {
  { const platform::desktop::EndRequests ends; }
  struct sigaction now {};
  ::sigaction(GetParam(), nullptr, &now);
  EXPECT_TRUE(now.sa_handler == SIG_DFL);
}

TEST(EndRequestsOfAll, BeingHungUpStaysIgnoredWhereItWas) {
  std::signal(SIGHUP, SIG_IGN);
  {
    const platform::desktop::EndRequests ends;
    std::raise(SIGHUP);
    QApplication::processEvents();
    EXPECT_FALSE(ends.Signal());
  }
  std::signal(SIGHUP, SIG_DFL);
}

}  // namespace
}  // namespace kestrin::support
