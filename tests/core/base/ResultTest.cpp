// SPDX-License-Identifier: MIT
#include "core/base/Result.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <winerror.h>
#endif

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

#ifdef _WIN32
// The system's own numbers are other ones there.
constexpr SystemError kWindowsErrors[] = {{ERROR_FILE_NOT_FOUND, FailureKind::NotFound},
                                          {ERROR_PATH_NOT_FOUND, FailureKind::NotFound},
                                          {433 /* no such device */, FailureKind::NotFound},
                                          {ERROR_DEVICE_NOT_CONNECTED, FailureKind::NotFound},
                                          {ERROR_ACCESS_DENIED, FailureKind::NotPermitted},
                                          {ERROR_WRITE_PROTECT, FailureKind::NotPermitted},
                                          {ERROR_DISK_FULL, FailureKind::DiskFull},
                                          {ERROR_HANDLE_DISK_FULL, FailureKind::DiskFull},
                                          {1295 /* the quota is full */, FailureKind::DiskFull},
                                          {ERROR_FILE_EXISTS, FailureKind::InTheWay},
                                          {ERROR_ALREADY_EXISTS, FailureKind::InTheWay},
                                          {ERROR_SHARING_VIOLATION, FailureKind::InUse},
                                          {ERROR_LOCK_VIOLATION, FailureKind::InUse},
                                          {ERROR_USER_MAPPED_FILE, FailureKind::InUse},
                                          {ERROR_CRC, FailureKind::Failed}};
#endif

TEST(KindOf, IsTheOneThatSomebodyActsOn) {
  for (const SystemError& row : kSystemErrors) {
    EXPECT_EQ(KindOf(std::error_code(row.error, std::generic_category())), row.kind) << row.error;
#ifndef _WIN32
    EXPECT_EQ(KindOf(std::error_code(row.error, std::system_category())), row.kind) << row.error;
#endif
  }
#ifdef _WIN32
  for (const SystemError& row : kWindowsErrors)
    EXPECT_EQ(KindOf(std::error_code(row.error, std::system_category())), row.kind) << row.error;
#endif
}

#ifdef _WIN32
TEST(FailureOf, SaysWhatToDoAboutAFileThatIsOpen) {
  EXPECT_EQ(FailureOf({ERROR_SHARING_VIOLATION, std::system_category()}).text,
            "another program has it open; close it there first");
}
#endif

}  // namespace
}  // namespace kestrin::core::base
