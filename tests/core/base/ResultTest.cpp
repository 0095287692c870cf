// SPDX-License-Identifier: MIT
#include "core/base/Result.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>

namespace kestrin::core::base {
namespace {

Result<int> Half(int number) {
  if (number % 2 != 0) return Failure{FailureKind::NotValid, "odd"};
  return number / 2;
}

TEST(ResultTest, HoldsWhatWasMade) {
  const Result<int> result = Half(8);
  ASSERT_TRUE(result);
  EXPECT_EQ(*result, 4);
  EXPECT_EQ(result.Text(), "");
  EXPECT_THROW(static_cast<void>(result.Why()), std::bad_variant_access);
}

TEST(ResultTest, HoldsWhyItFailed) {
  const Result<int> result = Half(7);
  ASSERT_FALSE(result);
  EXPECT_EQ(result.Why(), (Failure{FailureKind::NotValid, "odd"}));
  EXPECT_EQ(result.Text(), "odd");
  EXPECT_THROW(static_cast<void>(*result), std::bad_variant_access);
}

// A text that was made and a failure's text are two things.
TEST(ResultTest, TellsATextFromAFailure) {
  const Result<std::string> made = std::string("odd");
  ASSERT_TRUE(made);
  EXPECT_EQ(*made, "odd");
  EXPECT_EQ(made.Text(), "");
}

TEST(ResultTest, HandsOverWhatCannotBeCopied) {
  Result<std::unique_ptr<int>> result = std::make_unique<int>(3);
  const std::unique_ptr<int> taken = *std::move(result);
  EXPECT_EQ(*taken, 3);
}

TEST(ResultTest, SaysThatSomethingWasDone) {
  const Result<> done;
  EXPECT_TRUE(done);
  EXPECT_EQ(done.Text(), "");
  EXPECT_THROW(static_cast<void>(done.Why()), std::bad_optional_access);
  const Result<> failed = Failure{FailureKind::DiskFull, "no room"};
  EXPECT_FALSE(failed);
  EXPECT_EQ(failed.Why().kind, FailureKind::DiskFull);
  // A failure without words is one all the same.
  EXPECT_FALSE(Result<>(Failure{}));
}

struct SystemError {
  int error;
  FailureKind kind;
};
constexpr SystemError kSystemErrors[] = {
    {ENOENT, FailureKind::NotFound},     {ENODEV, FailureKind::NotFound},    {ENXIO, FailureKind::NotFound},
    {EACCES, FailureKind::NotPermitted}, {EPERM, FailureKind::NotPermitted}, {EROFS, FailureKind::NotPermitted},
    {ENOSPC, FailureKind::DiskFull},
#ifdef EDQUOT
    {EDQUOT, FailureKind::DiskFull},
#endif
    {EEXIST, FailureKind::InTheWay},     {EISDIR, FailureKind::InTheWay},    {EIO, FailureKind::Failed}};

TEST(KindOf, IsTheOneThatSomebodyActsOn) {
  for (const SystemError& row : kSystemErrors) {
    EXPECT_EQ(KindOf(std::error_code(row.error, std::generic_category())), row.kind) << row.error;
    EXPECT_EQ(KindOf(std::error_code(row.error, std::system_category())), row.kind) << row.error;
  }
}

}  // namespace
}  // namespace kestrin::core::base
