#include "core/update/DiskAdvice.h"

#include <gtest/gtest.h>

#include <string>
#include <system_error>

namespace kestrin::core::update {
namespace {

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
    const std::string problem = "\"/a/tmp\" could not be written: " + std::make_error_code(row.reason).message();
    EXPECT_EQ(DiskAdvice(problem), row.advice) << problem;
    EXPECT_EQ(IsDiskFull(problem), row.reason == std::errc::no_space_on_device) << problem;
  }
}

TEST(DiskAdviceTest, WhatIsInTheWayIsToBeMovedAway) {
  EXPECT_EQ(DiskAdvice("\"x\" could not be written: a folder of that name is in the way"),
            "Move it away and update again.");
  EXPECT_EQ(DiskAdvice("\"x\" is a link to another place, into which nothing is written"),
            "Move it away and update again.");
  EXPECT_EQ(DiskAdvice("\"x\" has become another folder meanwhile"), "Update again.");
  EXPECT_EQ(DiskAdvice(""), "Check that disk and update again.");
}

}  // namespace
}  // namespace kestrin::core::update
