// SPDX-License-Identifier: MIT
#include "platform/files/RegularFile.h"

#include <gtest/gtest.h>

#include "support/TestFiles.h"

namespace kestrin::platform::files {
namespace {

using core::base::FailureKind;
using core::base::Result;

TEST(RegularFile, IsReadAtAnyPlace) {
  const support::TemporaryFolder folder;
  const Result<RegularFile> file = RegularFile::Open(support::WriteBytes(folder / "a", "0123456789"));
  ASSERT_TRUE(file);
  EXPECT_EQ(file->Size(), 10U);
  std::string bytes(4, '?');
  EXPECT_EQ(*file->ReadAt(3, bytes), 4U);
  EXPECT_EQ(bytes, "3456");
  EXPECT_EQ(*file->ReadAt(8, bytes), 2U);
  EXPECT_EQ(bytes, "8956");
  EXPECT_EQ(*file->ReadAt(10, bytes), 0U);
  EXPECT_EQ(*file->ReadAt(std::uint64_t{1} << 40, bytes), 0U);
}

TEST(RegularFile, IsThereAndNoFolder) {
  const support::TemporaryFolder folder;
  EXPECT_EQ(RegularFile::Open(folder / "none").Why().kind, FailureKind::NotFound);
  EXPECT_EQ(RegularFile::Open(folder.Path()).Text(), "it is a folder");
}

TEST(RegularFile, TellsThatSomebodyHasWrittenToIt) {
  const support::TemporaryFolder folder;
  const Result<RegularFile> file = RegularFile::Open(support::WriteBytes(folder / "a", "0123"));
  ASSERT_TRUE(file);
  EXPECT_FALSE(file->HasChanged());
  support::WriteBytes(folder / "a", "01234");
  EXPECT_TRUE(file->HasChanged());
}

}  // namespace
}  // namespace kestrin::platform::files
