// SPDX-License-Identifier: MIT
#include "core/update/DiskAdvice.h"

#include <gtest/gtest.h>

#include <string>
#include <system_error>

namespace kestrin::core::update {
namespace {

using base::FailureKind;

TEST(DiskAdviceTest, EachKindHasItsOwn) {
  struct Row {
    FailureKind kind;
    const char* advice;
  };
  const Row table[] = {
      {FailureKind::DiskFull, "Make room on the disk and update again."},
      {FailureKind::NotPermitted, "Permit writing there and update again."},
      {FailureKind::InTheWay, "Move it away and update again."},
      {FailureKind::InUse, "Then update again."},
      {FailureKind::Changed, "Update again."},
      {FailureKind::NotFound, "Check that disk and update again."},
      {FailureKind::Failed, "Check that disk and update again."},
  };
  for (const Row& row : table) EXPECT_EQ(DiskAdvice(row.kind), row.advice);
}

TEST(DiskAdviceTest, RoomIsAskedForWhenTheDiskIsFullAndNothingElse) {
  struct Row {
    std::errc reason;
    const char* advice;
  };
  const Row table[] = {
      {std::errc::no_space_on_device, "Make room on the disk and update again."},
      {std::errc::permission_denied, "Permit writing there and update again."},
      {std::errc::operation_not_permitted, "Permit writing there and update again."},
      {std::errc::read_only_file_system, "Permit writing there and update again."},
      {std::errc::io_error, "Check that disk and update again."},
      {std::errc::file_too_large, "Check that disk and update again."},
      {std::errc::no_such_file_or_directory, "Check that disk and update again."},
  };
  for (const Row& row : table) {
    const std::error_code error = std::make_error_code(row.reason);
    EXPECT_EQ(DiskAdvice(base::KindOf(error)), row.advice) << error.message();
  }
}

}  // namespace
}  // namespace kestrin::core::update
