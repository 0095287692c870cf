// SPDX-License-Identifier: MIT
#include "core/base/TakeName.h"

#include <gtest/gtest.h>

#include <fstream>
#include <numeric>
#include <vector>

#include "support/TestFiles.h"

// Only Windows leaves a file alone that a program has open.

namespace kestrin::core::base {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

class TakeNameOnWindows : public testing::Test {
 protected:
  support::TemporaryFolder folder;
  fs::path made = support::WriteBytes(folder / "made", "new");
  fs::path name = support::WriteBytes(folder / "name", "old");
  std::vector<std::chrono::milliseconds> waits;
};

TEST_F(TakeNameOnWindows, OutlastsWhoHasTheOldFileOpenForAMoment) {
  std::ifstream scanner(name);
  const Result<> taken = TakeName(made, name, [&](std::chrono::milliseconds wait) {
    waits.push_back(wait);
    if (waits.size() == 3) scanner.close();
  });
  EXPECT_TRUE(taken) << taken.Text();
  EXPECT_EQ(waits.size(), 3U);
  EXPECT_EQ(support::ReadBytes(name), "new");
  EXPECT_FALSE(fs::exists(made));
}

TEST_F(TakeNameOnWindows, OutlastsWhoHasTheNewFileOpenForAMoment) {
  std::ifstream scanner(made);
  const Result<> taken = TakeName(made, name, [&](std::chrono::milliseconds) { scanner.close(); });
  EXPECT_TRUE(taken) << taken.Text();
  EXPECT_EQ(support::ReadBytes(name), "new");
}

TEST_F(TakeNameOnWindows, GivesUpBeforeThePersonWonders) {
  const std::ifstream program(name);
  const Result<> taken = TakeName(made, name, [&](std::chrono::milliseconds wait) { waits.push_back(wait); });
  ASSERT_FALSE(taken);
  EXPECT_EQ(taken.Why().kind, FailureKind::InUse);
  EXPECT_EQ(std::accumulate(waits.begin(), waits.end(), 0ms), 250ms);
  EXPECT_EQ(support::ReadBytes(name), "old");
}

TEST_F(TakeNameOnWindows, WaitsForNothingElse) {
  const Result<> taken =
      TakeName(folder / "absent", name, [&](std::chrono::milliseconds wait) { waits.push_back(wait); });
  EXPECT_FALSE(taken);
  EXPECT_TRUE(waits.empty());
}

}  // namespace
}  // namespace kestrin::core::base
