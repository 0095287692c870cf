// SPDX-License-Identifier: MIT
#include "cli/ProgressLine.h"

#include <gtest/gtest.h>

#include "support/FakeClock.h"

namespace kestrin::cli {
namespace {

TEST(ProgressLine, ShowsNoControlCharacterOfAPhase) {
  const support::FakeClock clock;
  ::testing::internal::CaptureStdout();
  {
    ProgressLine line(GlobalOptions(), clock);
    line.Phase("Downloading: \x1B[2Jevil\n.lsu");
  }
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Downloading: ?[2Jevil?.lsu\n");
}

}  // namespace
}  // namespace kestrin::cli
